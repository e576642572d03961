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
using kv::detail::Segment;
using kv::detail::SegmentConstants;
using kv::detail::parts::FastValue;
using kv::detail::parts::fastValue;
using kv::detail::parts::segmentConstants;

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

kv::detail::parts::BoundedValue<double>
boundedValueOf(const Segment& s, const kv::detail::parts::BoundedRoot<double>& root) {
    return kv::detail::parts::boundedValue(s.y0, s.y1, s.y2, s.y3, root);
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
    QuickRandom random(GetParam() + 101);
    std::uint64_t asked = 0, again = 0, fallbacks = 0;
    for (std::uint64_t i = 0; i < kEvaluations / 100; ++i) {
        const Segment s = family.make(random);
        const double frame = static_cast<double>(static_cast<float>(random.between(s.x0, s.x3)));
        if (!(s.x0 <= frame && frame < s.x3)) continue;
        ++asked;
        if (fastValue(s, segmentConstants<false>(s), frame).certain) continue;
        ++again;
        if (!fastValue(s, segmentConstants<true>(s), frame).certain) ++fallbacks;
    }
    const double total = static_cast<double>(asked);
    RecordProperty("exact constants needed, of a million",
                   std::to_string(static_cast<double>(again) / total * 1e6));
    RecordProperty("fallbacks, of a million",
                   std::to_string(static_cast<double>(fallbacks) / total * 1e6));
    EXPECT_LE(static_cast<double>(fallbacks), family.fallbacksAtMost * total);
}

// The bounds themselves, which the comparison of floats can only see where they are far too small:
// root and value are compared with the literal ones as doubles. How much of a bound was ever used
// is recorded.
TEST_P(FastEvaluation, staysWithinItsBounds) {
    const SegmentFamily& family = segmentFamilies()[GetParam()];
    QuickRandom random(GetParam() + 201);
    double ofRootError = 0.0, ofQuickRootError = 0.0, ofValueError = 0.0;
    for (std::uint64_t i = 0; i < kEvaluations / 20; ++i) {
        const Segment s = family.make(random);
        const double frame = static_cast<double>(frameOn(random, s));
        const kv::detail::LiteralRoot literal =
            kv::detail::rootLiterally(s.x0, s.x1, s.x2, s.x3, frame);
        for (const bool exact : {false, true}) {
            const SegmentConstants c =
                exact ? segmentConstants<true>(s) : segmentConstants<false>(s);
            const kv::detail::parts::BoundedRoot<double> root =
                kv::detail::parts::boundedRoot(s, c, frame);
            const kv::detail::parts::BoundedValue<double> value = boundedValueOf(s, root);
            if (std::isnan(value.error) || c.a3 == 0) continue;
            ASSERT_TRUE(literal.found);
            double& used = exact ? ofRootError : ofQuickRootError;
            used = std::max(used, std::fabs(root.t - literal.t) / root.error);
            ASSERT_LE(std::fabs(root.t - literal.t), root.error)
                << described(s, static_cast<float>(frame)) << (exact ? " exact" : " quick");
            // The second part of the bound alone: as if the root were the literal one.
            const kv::detail::parts::BoundedValue<double> there =
                boundedValueOf(s, {literal.t, 0.0});
            if (!(there.error < 1e280 && there.error > 1e-300)) continue;
            const double expected = kv::detail::valueLiterally(s.y0, s.y1, s.y2, s.y3, literal.t);
            ofValueError = std::max(ofValueError, std::fabs(there.y - expected) / there.error);
            ASSERT_LE(std::fabs(there.y - expected), there.error);
            ASSERT_LE(std::fabs(value.y - expected), value.error);
        }
    }
    RecordProperty("used of the root's bound", std::to_string(ofRootError));
    RecordProperty("used of the root's bound, multiplied constants",
                   std::to_string(ofQuickRootError));
    RecordProperty("used of the value's bound", std::to_string(ofValueError));
}

TEST(FastConstants, multiplyingStaysWithinItsError) {
    QuickRandom random(5);
    for (int i = 0; i < 100000; ++i) {
        const Segment s = segmentFamilies()[random.next() % 12].make(random);
        const SegmentConstants quick = segmentConstants<false>(s);
        const SegmentConstants exact = segmentConstants<true>(s);
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
    QuickRandom random(6);
    double worst = 0.0;
    for (int i = 0; i < 200000; ++i) {
        const double z = std::ldexp(random.between(1.0, 2.0), static_cast<int>(i % 1412) - 900);
        const double power = std::pow(z, 0.3333333333333333);
        worst = std::max(worst, std::fabs(kv::detail::parts::cubeRoot(z).root - power) / power);
        ASSERT_EQ(kv::detail::parts::cubeRoot(-z).root, -kv::detail::parts::cubeRoot(z).root);
        const double inverse = 1.0 / (power * power);
        ASSERT_NEAR(kv::detail::parts::cubeRoot(z).inverseSquare / inverse, 1.0, 1e-4);
    }
    RecordProperty("largest difference, roundings", std::to_string(worst / kv::detail::kRounding));
    EXPECT_LE(worst, 7 * kv::detail::kRounding);
    for (const double z : {0.0, -0.0, 5e-324, -1e-310})
        EXPECT_LE(std::fabs(kv::detail::parts::cubeRoot(z).root), 1e-102) << z;
}

TEST(FastRoot, thePolynomialIsTheCosineOfTwoThirdsOfTheAngle) {
    double worst = 0.0;
    for (int i = 0; i <= 100000; ++i) {
        // The square of z is what the caller knows exactly.
        const double square = i / 100000.0;
        const long double exact =
            std::cos(2.0L / 3.0L * std::acos(std::sqrt(static_cast<long double>(square))));
        const double cosine = kv::detail::parts::cosOfTwoThirds(std::sqrt(square));
        worst = std::max(worst,
                         std::fabs(static_cast<double>(static_cast<long double>(cosine) - exact)));
    }
    RecordProperty("largest difference, roundings", std::to_string(worst / kv::detail::kRounding));
    EXPECT_LE(worst, 5 * kv::detail::kRounding);
}

INSTANTIATE_TEST_SUITE_P(Families, FastEvaluation,
                         ::testing::Range<std::size_t>(0, segmentFamilies().size()),
                         [](const ::testing::TestParamInfo<std::size_t>& info) {
                             return std::string(segmentFamilies()[info.param].name);
                         });
