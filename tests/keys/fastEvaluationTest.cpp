// The evaluator against its literal form, bit by bit, over random segments of all families: more
// than a hundred million evaluations in a release build. How often the quick way was not certain
// and the literal code was asked is recorded for each family.
#include "keys/curveEvaluation.h"
#include "keys/literalEvaluation.h"

#include "keys/keyListFixture.h"

#include "support/kernels.h"
#include "support/segmentFamilies.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

using namespace kv::test;
using kv::detail::BoundedNumber;
using kv::detail::KernelParts;
using kv::detail::Segment;
using kv::detail::SegmentConstants;

namespace {

// Set by the build: fewer where the sanitizers or a missing optimisation make each one slow.
constexpr std::uint64_t kEvaluations = KV_EVALUATIONS_PER_FAMILY;
constexpr int kFramesPerSegment = 16;

std::uint32_t bits(float v) {
    std::uint32_t result = 0;
    std::memcpy(&result, &v, sizeof result);
    return result;
}

// A curve of two keys that becomes any segment. The list does not know that it is sorted then, and
// walks, so that the interval is found as the literal code finds it.
class AnySegment {
  public:
    AnySegment() {
        _list.insertCP(0.0, 0.0);
        _list.insertCP(1.0, 0.0);
    }

    const kvControlPointManager* with(const Segment& s) {
        std::vector<kvControlPoint>& keys = _list.getCPs();
        keys[0].setPoint({s.x0, s.y0});
        keys[0].setOutTangent({s.x1, s.y1});
        keys[1].setInTangent({s.x2, s.y2});
        keys[1].setPoint({s.x3, s.y3});
        return &_list;
    }

  private:
    OpenKeyList _list;
};

std::string described(const Segment& s, float frame) {
    char text[400];
    std::snprintf(text, sizeof text, "(%a, %a) (%a, %a) (%a, %a) (%a, %a) at %a", s.x0, s.y0, s.x1,
                  s.y1, s.x2, s.y2, s.x3, s.y3, static_cast<double>(frame));
    return text;
}

// How much of its bounds one form has ever used.
struct Used {
    double root = 0.0, quickRoot = 0.0, value = 0.0;
};

// Compares root and value with the literal ones as doubles.
void expectWithinBounds(const KernelParts& parts, const Segment& s, double frame, bool exact,
                        Used& used) {
    const kv::detail::LiteralRoot literal =
        kv::detail::rootLiterally(s.x0, s.x1, s.x2, s.x3, frame);
    const BoundedNumber root = parts.rootOf(s, exact, frame);
    const BoundedNumber value = parts.valueOf(s, root);
    if (std::isnan(value.error) || kv::detail::parts::coefficients(s).a3 == 0) return;
    ASSERT_TRUE(literal.found);
    double& most = exact ? used.root : used.quickRoot;
    most = std::max(most, std::fabs(root.value - literal.t) / root.error);
    ASSERT_LE(std::fabs(root.value - literal.t), root.error)
        << described(s, static_cast<float>(frame)) << (exact ? " exact" : " quick");
    // The second part of the bound alone: as if the root were the literal one.
    const BoundedNumber there = parts.valueOf(s, {literal.t, 0.0});
    if (!(there.error < 1e280 && there.error > 1e-300)) return;
    const double expected = kv::detail::valueLiterally(s.y0, s.y1, s.y2, s.y3, literal.t);
    used.value = std::max(used.value, std::fabs(there.value - expected) / there.error);
    ASSERT_LE(std::fabs(there.value - expected), there.error);
    ASSERT_LE(std::fabs(value.value - expected), value.error);
}

class FastEvaluation : public ::testing::TestWithParam<std::size_t> {};

} // namespace

TEST_P(FastEvaluation, hasTheBitsOfTheLiteralOne) {
    const SegmentFamily& family = segmentFamilies()[GetParam()];
    QuickRandom random(GetParam() + 1);
    AnySegment curve;
    for (std::uint64_t done = 0; done < kEvaluations; done += kFramesPerSegment) {
        const Segment segment = family.make(random);
        const kvControlPointManager* const list = curve.with(segment);
        for (int i = 0; i < kFramesPerSegment; ++i) {
            const float frame = frameOn(random, segment);
            const float fast = kv::detail::evaluateCurve(list, frame);
            const float literal = kv::detail::evaluateCurveLiterally(list, frame);
            ASSERT_EQ(bits(fast), bits(literal)) << described(segment, frame);
        }
    }
    RecordProperty("evaluations", std::to_string(kEvaluations));
}

TEST_P(FastEvaluation, rarelyFallsBack) {
    const SegmentFamily& family = segmentFamilies()[GetParam()];
    const KernelParts parts = kernelParts().back();
    QuickRandom random(GetParam() + 101);
    std::uint64_t asked = 0, again = 0, fallbacks = 0;
    for (std::uint64_t i = 0; i < kEvaluations / 100; ++i) {
        const Segment s = family.make(random);
        const double frame = static_cast<double>(static_cast<float>(random.between(s.x0, s.x3)));
        if (!(s.x0 <= frame && frame < s.x3)) continue;
        ++asked;
        if (parts.isCertain(s, false, frame)) continue;
        ++again;
        if (!parts.isCertain(s, true, frame)) ++fallbacks;
    }
    const double total = static_cast<double>(asked);
    RecordProperty("exact constants needed, of a million",
                   std::to_string(static_cast<double>(again) / total * 1e6));
    RecordProperty("fallbacks, of a million",
                   std::to_string(static_cast<double>(fallbacks) / total * 1e6));
    EXPECT_LE(static_cast<double>(fallbacks), family.fallbacksAtMost * total);
}

// The bounds themselves, which the comparison of floats can only see where they are far too small.
// How much of a bound was ever used is recorded.
TEST_P(FastEvaluation, staysWithinItsBounds) {
    const SegmentFamily& family = segmentFamilies()[GetParam()];
    const std::vector<KernelParts> forms = kernelParts();
    std::vector<Used> used(forms.size());
    QuickRandom random(GetParam() + 201);
    for (std::uint64_t i = 0; i < kEvaluations / 20; ++i) {
        const Segment s = family.make(random);
        const double frame = static_cast<double>(frameOn(random, s));
        for (std::size_t form = 0; form < forms.size(); ++form)
            for (const bool exact : {false, true})
                expectWithinBounds(forms[form], s, frame, exact, used[form]);
        if (HasFatalFailure()) return;
    }
    for (std::size_t form = 0; form < forms.size(); ++form) {
        const std::string last = ", form " + std::to_string(form);
        RecordProperty("used of the root's bound" + last, std::to_string(used[form].root));
        RecordProperty("used of the root's bound, multiplied constants" + last,
                       std::to_string(used[form].quickRoot));
        RecordProperty("used of the value's bound" + last, std::to_string(used[form].value));
    }
}

TEST(FastConstants, multiplyingStaysWithinItsError) {
    QuickRandom random(5);
    for (int i = 0; i < 100000; ++i) {
        const Segment s = segmentFamilies()[random.next() % 12].make(random);
        const auto a = kv::detail::parts::coefficients(s);
        const SegmentConstants quick = kv::detail::parts::segmentConstants<false>(a);
        const SegmentConstants exact = kv::detail::parts::segmentConstants<true>(a);
        if (!std::isfinite(exact.pCubed)) continue;
        ASSERT_TRUE(exact.isExact());
        ASSERT_LE(std::fabs(quick.pCubed - exact.pCubed), quick.pCubedError);
        ASSERT_EQ(quick.a3, exact.a3);
        ASSERT_EQ(quick.qStart, exact.qStart);
        ASSERT_EQ(quick.shift, exact.shift);
        ASSERT_EQ(quick.m, exact.m);
    }
}

TEST(FastRoot, theCubeRootIsThePowerWithTheShortExponent) {
    for (const KernelParts& parts : kernelParts()) {
        QuickRandom random(6);
        double worst = 0.0;
        for (int i = 0; i < 200000; ++i) {
            const double z = std::ldexp(random.between(1.0, 2.0), static_cast<int>(i % 1412) - 900);
            const double power = std::pow(z, 0.3333333333333333);
            worst = std::max(worst, std::fabs(parts.cubeRootOf(z) - power) / power);
            ASSERT_EQ(parts.cubeRootOf(-z), -parts.cubeRootOf(z));
            const double inverse = 1.0 / (power * power);
            ASSERT_NEAR(parts.inverseSquareOf(z) / inverse, 1.0, 1e-4);
        }
        RecordProperty("largest difference, roundings",
                       std::to_string(worst / kv::detail::kRounding));
        EXPECT_LE(worst, 7 * kv::detail::kRounding);
        for (const double z : {0.0, -0.0, 5e-324, -1e-310})
            EXPECT_LE(std::fabs(parts.cubeRootOf(z)), 1e-102) << z;
    }
}

TEST(FastRoot, thePolynomialIsTheCosineOfTwoThirdsOfTheAngle) {
    for (const KernelParts& parts : kernelParts()) {
        double worst = 0.0;
        for (int i = 0; i <= 100000; ++i) {
            // The square of z is what the caller knows exactly.
            const double square = i / 100000.0;
            const long double exact =
                std::cos(2.0L / 3.0L * std::acos(std::sqrt(static_cast<long double>(square))));
            const double cosine = parts.cosineOfTwoThirds(std::sqrt(square));
            worst = std::max(
                worst, std::fabs(static_cast<double>(static_cast<long double>(cosine) - exact)));
        }
        RecordProperty("largest difference, roundings",
                       std::to_string(worst / kv::detail::kRounding));
        EXPECT_LE(worst, 5 * kv::detail::kRounding);
    }
}

INSTANTIATE_TEST_SUITE_P(Families, FastEvaluation,
                         ::testing::Range<std::size_t>(0, segmentFamilies().size()),
                         [](const ::testing::TestParamInfo<std::size_t>& info) {
                             return std::string(segmentFamilies()[info.param].name);
                         });
