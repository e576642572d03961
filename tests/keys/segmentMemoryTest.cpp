// What a curve remembers of its last segment: used again for the very same numbers only, by any
// number of threads, and by no copy of the curve.
#include "keys/segmentMemory.h"

#include "keys/curveEvaluation.h"
#include "keys/keyListFixture.h"
#include "keys/literalEvaluation.h"

#include "support/allocationCount.h"
#include "support/segmentFamilies.h"

#include <kvAnimationCurve.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

using namespace kv::test;
using kv::detail::evaluateCurve;
using kv::detail::evaluateCurveLiterally;
using kv::detail::SegmentConstants;
using kv::detail::SegmentMemory;
using kv::detail::SegmentWords;

namespace {

std::uint32_t bits(float v) {
    std::uint32_t result = 0;
    std::memcpy(&result, &v, sizeof result);
    return result;
}

using CoefficientsOfTime = kv::detail::Coefficients<double>;

constexpr CoefficientsOfTime kCoefficients{1.0, 0.5, 9.0};
constexpr SegmentConstants kConstants{1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 0.0}; // exact

bool recalls(const SegmentMemory& memory, const CoefficientsOfTime& a) {
    SegmentConstants found{};
    return memory.recall(a, found);
}

/// Keys ten frames apart with handles that make every branch of the evaluation occur.
std::unique_ptr<OpenKeyList> variedCurve(int keys) {
    auto list = std::make_unique<OpenKeyList>();
    QuickRandom random(7);
    for (int i = 0; i < keys; ++i)
        list->insertCP(10.0 * i, random.between(-5.0, 5.0));
    for (kvControlPoint& key : State::keys(*list)) {
        const kvControlPoint::Point at = key.getPoint();
        key.setInTangent({at.x - random.between(0.0, 15.0), random.between(-5.0, 5.0)});
        key.setOutTangent({at.x + random.between(0.0, 15.0), random.between(-5.0, 5.0)});
    }
    return list;
}

} // namespace

TEST(SegmentMemory, recallsWhatItWasGiven) {
    SegmentWords words;
    const SegmentMemory memory(words);
    EXPECT_FALSE(recalls(memory, kCoefficients));
    memory.remember(kCoefficients, kConstants);
    SegmentConstants found{};
    ASSERT_TRUE(memory.recall(kCoefficients, found));
    EXPECT_EQ(std::memcmp(&found, &kConstants, sizeof found), 0);
}

TEST(SegmentMemory, anyOtherBitIsAnotherCubic) {
    SegmentWords words;
    const SegmentMemory memory(words);
    memory.remember(kCoefficients, kConstants);
    for (double CoefficientsOfTime::*const one :
         {&CoefficientsOfTime::a3, &CoefficientsOfTime::a2, &CoefficientsOfTime::a1}) {
        CoefficientsOfTime next = kCoefficients;
        next.*one = std::nextafter(next.*one, 100.0);
        EXPECT_FALSE(recalls(memory, next));
    }
    memory.remember({1.0, 0.0, 9.0}, kConstants);
    EXPECT_TRUE(recalls(memory, {1.0, 0.0, 9.0}));
    EXPECT_FALSE(recalls(memory, {1.0, -0.0, 9.0})) << "equal, but not the same bytes";
}

TEST(SegmentMemory, aNotANumberIsRecalledByItsBytes) {
    SegmentWords words;
    const SegmentMemory memory(words);
    memory.remember({1.0, kNaN, 9.0}, kConstants);
    EXPECT_TRUE(recalls(memory, {1.0, kNaN, 9.0}));
}

TEST(SegmentMemory, theLatestReplacesTheOneBefore) {
    SegmentWords words;
    const SegmentMemory memory(words);
    memory.remember(kCoefficients, kConstants);
    memory.remember({1.0, 0.5, 11.0}, kConstants);
    EXPECT_FALSE(recalls(memory, kCoefficients));
    EXPECT_TRUE(recalls(memory, {1.0, 0.5, 11.0}));
}

TEST(SegmentMemory, tellsWhenTheSameIsAskedAgain) {
    SegmentWords words;
    const SegmentMemory memory(words);
    EXPECT_FALSE(memory.isAskedAgain(kCoefficients));
    EXPECT_TRUE(memory.isAskedAgain(kCoefficients));
    EXPECT_FALSE(memory.isAskedAgain({1.0, 0.5, 11.0}));
    EXPECT_FALSE(memory.isAskedAgain(kCoefficients));
}

TEST(SegmentMemory, readersNeverSeeHalfAnEntry) {
    // Every number of an entry is the same, so that a mixture of two shows.
    const auto entry = [](double v) {
        return std::make_pair(CoefficientsOfTime{v, v, v}, SegmentConstants{v, v, v, v, v, v, 0.0});
    };
    SegmentWords words;
    const SegmentMemory memory(words);
    std::atomic<int> mixtures{0};
    std::atomic<int> found{0};
    const auto work = [&](int thread) {
        // Goes on until enough was found: with bad luck, threads only disturb each other for long.
        for (int i = 0; i < 20000 || (i < 5000000 && found.load() < 1000); ++i) {
            const auto mine = entry(1.0 + (i + thread) % 3);
            if (i % 4 == 0) memory.remember(mine.first, mine.second);
            SegmentConstants seen{};
            const CoefficientsOfTime asked = entry(1.0 + i % 3).first;
            if (!memory.recall(asked, seen)) continue;
            found.fetch_add(1, std::memory_order_relaxed);
            for (const double v : {seen.a3, seen.qStart, seen.shift, seen.m, seen.k, seen.pCubed})
                if (v != asked.a3) mixtures.fetch_add(1, std::memory_order_relaxed);
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work, i);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(mixtures.load(), 0);
    EXPECT_GE(found.load(), 1000);
}

TEST(RememberedSegment, severalThreadsEvaluateOneCurve) {
    const std::unique_ptr<OpenKeyList> list = variedCurve(8);
    std::atomic<int> different{0};
    const auto work = [&](std::uint64_t thread) {
        QuickRandom random(thread);
        float frame = 0.0F;
        for (int i = 0; i < 20000; ++i) {
            // Some stay on a segment for a while, some jump.
            frame = i % 8 < 4 ? frame + 0.25F : static_cast<float>(random.between(-5.0, 75.0));
            if (bits(evaluateCurve(list.get(), frame)) !=
                bits(evaluateCurveLiterally(list.get(), frame)))
                different.fetch_add(1, std::memory_order_relaxed);
        }
    };
    std::vector<std::thread> threads;
    for (std::uint64_t i = 1; i <= 4; ++i)
        threads.emplace_back(work, i);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(different.load(), 0);
}

TEST(RememberedSegment, editsThatNobodyCountsAreSeen) {
    const std::unique_ptr<OpenKeyList> list = variedCurve(3);
    std::vector<kvControlPoint>& keys = State::keys(*list);
    for (int i = 0; i < 3; ++i)
        evaluateCurve(list.get(), 4.0F);
    // Handles belong to no order, so the list is still known as sorted.
    const float before = evaluateCurve(list.get(), 4.0F);
    keys[0].setOutTangent({3.0, 40.0});
    ASSERT_TRUE(State::isKnownSorted(*list));
    const float after = evaluateCurve(list.get(), 4.0F);
    EXPECT_EQ(bits(after), bits(evaluateCurveLiterally(list.get(), 4.0F)));
    EXPECT_NE(after, before);
}

// Keys at an even pace have the same cubic in time everywhere: what is remembered of one segment
// does for all, whatever their values are.
TEST(RememberedSegment, servesAllSegmentsOfTheSameShape) {
    kvAnimationCurve curve;
    for (int i = 0; i < 50; ++i) {
        const float x = 10.0F * static_cast<float>(i);
        const float y = static_cast<float>(i * i % 17);
        curve.importControlPoint(x, y, x - 4.0F, y + 1.0F, x + 3.0F, y - 1.0F, 6);
    }
    QuickRandom random(3);
    const auto evaluateAnywhere = [&] {
        const auto frame = static_cast<float>(random.between(0.0, 490.0));
        ASSERT_EQ(bits(evaluateCurve(&curve, frame)), bits(evaluateCurveLiterally(&curve, frame)));
    };
    evaluateAnywhere();
    EXPECT_FALSE(State::remembersSegment(curve)) << "may never be needed again";
    evaluateAnywhere();
    EXPECT_TRUE(State::remembersSegment(curve));
    const std::uint64_t written = State::rememberedSegments(curve);
    for (int i = 0; i < 1000; ++i)
        evaluateAnywhere();
    EXPECT_EQ(State::rememberedSegments(curve), written);
}

TEST(RememberedSegment, copiesRememberForThemselves) {
    std::unique_ptr<OpenKeyList> source = variedCurve(3);
    for (int i = 0; i < 3; ++i)
        evaluateCurve(source.get(), 4.0F);
    ASSERT_TRUE(State::remembersSegment(*source));
    OpenKeyList copy(*source);
    EXPECT_FALSE(State::remembersSegment(copy));
    OpenKeyList assigned;
    assigned = *source;
    EXPECT_FALSE(State::remembersSegment(assigned));
    source.reset();
    for (OpenKeyList* list : {&copy, &assigned})
        for (float frame = 0.0F; frame < 20.0F; frame += 0.5F)
            ASSERT_EQ(bits(evaluateCurve(list, frame)), bits(evaluateCurveLiterally(list, frame)));
}

TEST(RememberedSegment, allocatesNothing) {
    const std::unique_ptr<OpenKeyList> list = variedCurve(8);
    const auto play = [&list] {
        for (float frame = -5.0F; frame < 80.0F; frame += 0.5F)
            evaluateCurve(list.get(), frame);
    };
    EXPECT_EQ(kvtest::allocationsOf(play), 0U);
}
