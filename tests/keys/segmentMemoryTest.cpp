// What a curve remembers of its last segment: used again for the very same numbers only, by any
// number of threads, and by no copy of the curve.
#include "keys/segmentMemory.h"

#include "keys/curveEvaluation.h"
#include "keys/keyListFixture.h"
#include "keys/literalEvaluation.h"

#include "support/allocationCount.h"
#include "support/segmentFamilies.h"

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
using kv::detail::Segment;
using kv::detail::SegmentConstants;
using kv::detail::SegmentMemory;
using kv::detail::SegmentWords;

namespace {

std::uint32_t bits(float v) {
    std::uint32_t result = 0;
    std::memcpy(&result, &v, sizeof result);
    return result;
}

constexpr Segment kSegment{0.0, 1.0, 3.0, 2.0, 6.0, 3.0, 10.0, 4.0};
constexpr SegmentConstants kConstants{1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 0.0}; // exact

double& numberOf(Segment& s, std::size_t i) {
    double* const all[] = {&s.x0, &s.y0, &s.x1, &s.y1, &s.x2, &s.y2, &s.x3, &s.y3};
    return *all[i];
}

bool recalls(const SegmentMemory& memory, const Segment& segment) {
    SegmentConstants found{};
    return memory.recall(segment, found);
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
    EXPECT_FALSE(recalls(memory, kSegment));
    memory.remember(kSegment, kConstants);
    SegmentConstants found{};
    ASSERT_TRUE(memory.recall(kSegment, found));
    EXPECT_EQ(std::memcmp(&found, &kConstants, sizeof found), 0);
}

TEST(SegmentMemory, anyOtherBitIsAnotherSegment) {
    SegmentWords words;
    const SegmentMemory memory(words);
    memory.remember(kSegment, kConstants);
    for (std::size_t i = 0; i < 8; ++i) {
        Segment next = kSegment;
        numberOf(next, i) = std::nextafter(numberOf(next, i), 100.0);
        EXPECT_FALSE(recalls(memory, next)) << i;
    }
    Segment negativeZero = kSegment;
    negativeZero.x0 = -0.0;
    EXPECT_FALSE(recalls(memory, negativeZero)) << "equal, but not the same bytes";
    EXPECT_TRUE(recalls(memory, kSegment));
}

TEST(SegmentMemory, aNotANumberIsRecalledByItsBytes) {
    SegmentWords words;
    const SegmentMemory memory(words);
    Segment segment = kSegment;
    segment.y1 = kNaN;
    memory.remember(segment, kConstants);
    EXPECT_TRUE(recalls(memory, segment));
}

TEST(SegmentMemory, theLatestSegmentReplacesTheOneBefore) {
    SegmentWords words;
    const SegmentMemory memory(words);
    memory.remember(kSegment, kConstants);
    Segment other = kSegment;
    other.x3 = 11.0;
    memory.remember(other, kConstants);
    EXPECT_FALSE(recalls(memory, kSegment));
    EXPECT_TRUE(recalls(memory, other));
}

TEST(SegmentMemory, readersNeverSeeHalfAnEntry) {
    // Every number of an entry is the same, so that a mixture of two shows.
    const auto entry = [](double v) {
        return std::make_pair(Segment{v, v, v, v, v, v, v, v},
                              SegmentConstants{v, v, v, v, v, v, 0.0});
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
            const Segment asked = entry(1.0 + i % 3).first;
            if (!memory.recall(asked, seen)) continue;
            found.fetch_add(1, std::memory_order_relaxed);
            for (const double v : {seen.a3, seen.qStart, seen.shift, seen.m, seen.k, seen.pCubed})
                if (v != asked.x0) mixtures.fetch_add(1, std::memory_order_relaxed);
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
