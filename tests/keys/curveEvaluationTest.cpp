// The value of a curve at a frame: sentinel, ends, held segments, the branches of the cubic, and
// the agreement of the evaluator with its literal form.
#include "keys/curveEvaluation.h"

#include "keys/constants.h"
#include "keys/keyListFixture.h"
#include "keys/literalEvaluation.h"
#include "keys/museum.h"
#include "support/allocationCount.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

using namespace kv::test;
using kv::detail::evaluateCurve;
using kv::detail::evaluateCurveLiterally;
using kv::detail::kNoCurveValue;

namespace {

std::uint32_t bits(float v) {
    std::uint32_t result = 0;
    std::memcpy(&result, &v, sizeof result);
    return result;
}

// A curve of one segment with these four points.
OpenKeyList segment(double x0, double y0, double x1, double y1, double x2, double y2, double x3,
                    double y3) {
    OpenKeyList list;
    hang({"", "", {{x0, y0, x0, y0, x1, y1}, {x3, y3, x2, y2, x3, y3}}}, list);
    return list;
}

} // namespace

TEST(Evaluation, aCurveWithoutAnIntervalHasNoValue) {
    EXPECT_EQ(bits(evaluateCurve(nullptr, 0.0F)), 0xE5A96816U);
    OpenKeyList list;
    EXPECT_EQ(evaluateCurve(&list, 0.0F), kNoCurveValue);
    list.insertCP(0.0, 5.0);
    EXPECT_EQ(evaluateCurve(&list, 0.0F), kNoCurveValue);
}

TEST(Evaluation, outsideTheKeysTheEndsHoldWithoutSnapping) {
    OpenKeyList list;
    list.insertCP(0.0, 1e-7);
    list.insertCP(10.0, -1e-7);
    EXPECT_EQ(evaluateCurve(&list, -5.0F), 1e-7F);
    EXPECT_EQ(evaluateCurve(&list, 10.0F), -1e-7F);
    EXPECT_EQ(evaluateCurve(&list, 50.0F), -1e-7F);
}

TEST(Evaluation, onAnInnerKeyTheSegmentThatStartsThereAnswers) {
    OpenKeyList list;
    hang(museumCurve("half handles"), list);
    EXPECT_FLOAT_EQ(evaluateCurve(&list, 10.0F), 10.0F);
    OpenKeyList tiny;
    hang({"", "", {{0, 1, -5, 1, 5, 1}, {10, 1e-7, 5, 1e-7, 15, 1e-7}, {20, 1, 15, 1, 25, 1}}},
         tiny);
    EXPECT_EQ(evaluateCurve(&tiny, 10.0F), 0.0F) << "snapped, unlike at the ends";
}

TEST(Evaluation, aSegmentWithBothInnerHandlesCollapsedIsHeld) {
    const OpenKeyList list = segment(0, 0, 0, 0, 10, 5, 10, 5);
    for (const float frame : {0.0F, 0.001F, 5.0F, 9.999F})
        EXPECT_EQ(evaluateCurve(&list, frame), 0.0F);
    EXPECT_EQ(evaluateCurve(&list, 10.0F), 5.0F);
}

TEST(Evaluation, aHeldSegmentIsNotSnapped) {
    const OpenKeyList list = segment(0, 1e-7, 0, 1e-7, 10, 5, 10, 5);
    EXPECT_EQ(evaluateCurve(&list, 5.0F), 1e-7F);
}

TEST(Evaluation, collapsedOnOneSideOnlyIsNotHeld) {
    const OpenKeyList left = segment(0, 1, 0, 1, 5, 5, 10, 5);
    EXPECT_NEAR(evaluateCurve(&left, 1.0F), 1.720653414081013, 1e-6);
    EXPECT_NEAR(evaluateCurve(&left, 2.5F), 2.6543026114947152, 1e-6);
    EXPECT_NEAR(evaluateCurve(&left, 5.0F), 3.887735426874458, 1e-6);
    EXPECT_NEAR(evaluateCurve(&left, 9.0F), 4.948888785554891, 1e-6);
}

TEST(Evaluation, aConstantIntervalHoldsTheFirstKeysValue) {
    OpenKeyList list;
    list.insertCP(0, 3);
    list.insertCP(10, 7);
    list.selectAllCPs();
    list.constantCurveInterval();
    for (const float frame : {0.0F, 3.0F, 9.9F})
        EXPECT_EQ(evaluateCurve(&list, frame), 3.0F);
}

TEST(Evaluation, monotoneSegmentsMeetAnIndependentSolution) {
    // Values by bisection of x(t) in another program.
    const OpenKeyList half = segment(0, 0, 5, 0, 5, 10, 10, 10);
    EXPECT_NEAR(evaluateCurve(&half, 1.0F), 0.14621885963534934, 1e-6);
    EXPECT_NEAR(evaluateCurve(&half, 2.5F), 1.0589254302501772, 1e-6);
    EXPECT_NEAR(evaluateCurve(&half, 5.0F), 5.0, 1e-6);
    EXPECT_NEAR(evaluateCurve(&half, 9.0F), 9.853781140364651, 1e-5);
    const OpenKeyList threeRoots = segment(0, 1, 2, 4, 8, -4, 10, -1);
    EXPECT_NEAR(evaluateCurve(&threeRoots, 1.0F), 1.6663522034968143, 1e-5);
    EXPECT_NEAR(evaluateCurve(&threeRoots, 2.5F), 1.3936543193573454, 1e-5);
    EXPECT_NEAR(evaluateCurve(&threeRoots, 9.0F), -1.6663522034968148, 1e-5);
    const OpenKeyList uneven = segment(10, -1, 12, 2, 20, 3, 25, 3);
    EXPECT_NEAR(evaluateCurve(&uneven, 12.0F), 0.6503892525319559, 1e-5);
    EXPECT_NEAR(evaluateCurve(&uneven, 18.0F), 2.433832699165806, 1e-5);
    EXPECT_NEAR(evaluateCurve(&uneven, 24.0F), 2.9873137463951887, 1e-5);
    const OpenKeyList steep = segment(0, 0, 9, 3, 1, 7, 10, 10);
    EXPECT_NEAR(evaluateCurve(&steep, 1.0F), 0.36444168526517584, 1e-5);
    EXPECT_NEAR(evaluateCurve(&steep, 4.9F), 4.355597106865416, 1e-4);
}

TEST(Evaluation, aLeadingCoefficientOfZeroGivesNoValue) {
    const OpenKeyList line = segment(0, 0, 1, 1, 2, 2, 3, 3);
    for (const float frame : {0.0F, 0.5F, 1.0F, 1.5F, 2.9F})
        EXPECT_EQ(evaluateCurve(&line, frame), kNoCurveValue) << frame;
    EXPECT_EQ(evaluateCurve(&line, 3.0F), 3.0F) << "at the last key";
    // Quadratic in time: the term of second order does not vanish.
    const OpenKeyList quadratic = segment(0, 0, 1, 1, 4, 2, 9, 3);
    EXPECT_EQ(evaluateCurve(&quadratic, 2.0F), kNoCurveValue);
}

TEST(Evaluation, resultsBelowAMillionthAreZero) {
    const OpenKeyList small = segment(0, 5e-7, 5, 5e-7, 5, 5e-7, 10, 5e-7);
    EXPECT_EQ(evaluateCurve(&small, 5.0F), 0.0F);
    EXPECT_EQ(evaluateCurve(&small, 2.0F), 0.0F);
    // x(t) is t cubed, so at its first frame the root is exactly 0 and the value exactly the key's.
    const OpenKeyList edge = segment(0, -1e-6, 0, 5, 0, 5, 1, 5);
    EXPECT_EQ(evaluateCurve(&edge, 0.0F), -1e-6F);
    const OpenKeyList inside = segment(0, -0.999e-6, 0, 5, 0, 5, 1, 5);
    EXPECT_EQ(evaluateCurve(&inside, 0.0F), 0.0F);
    const OpenKeyList above = segment(0, 1e-6, 0, 5, 0, 5, 1, 5);
    EXPECT_EQ(evaluateCurve(&above, 0.0F), 1e-6F);
}

TEST(Evaluation, aRepeatedRootOfNegativeArgumentsGivesNoValue) {
    // p is small but not 0, q is negative, and the discriminant lies inside the band.
    const OpenKeyList list = segment(0, 0, 0.001, 0.2, 0, 0.5, 1, 1);
    EXPECT_EQ(evaluateCurve(&list, 0.0005F), kNoCurveValue);
    // p = 0 and q < 0.
    const OpenKeyList cube = segment(0, 1, 0, 5, 0, 5, 1, 5);
    EXPECT_EQ(evaluateCurve(&cube, 0.001F), kNoCurveValue);
}

TEST(Evaluation, aKeyWithAVerticalHandleMayHaveNoValueAtItsOwnFrame) {
    // The key itself is a double root with q < 0. There is no special case for it.
    const OpenKeyList list = segment(0, 0, 0, 4, 10, 6, 10, 10);
    EXPECT_EQ(evaluateCurve(&list, 0.0F), kNoCurveValue);
    EXPECT_NE(evaluateCurve(&list, 1.0F), kNoCurveValue);
}

TEST(Evaluation, aRepeatedRootOfPositiveArgumentsIsTaken) {
    // x(t) = 1 - (1 - t)^3, a little before its end: with w = 1 - t and f the rest of the way,
    // q = f > 0, t1 = 1 - pow(4 f, 1/3).
    const OpenKeyList list = segment(0, 0, 1, 0, 1, 10, 1, 10);
    const float frame = 0.99999F;
    const double rest = 1.0 - static_cast<double>(frame);
    const double t = 1.0 - std::pow(4.0 * rest, 1.0 / 3.0);
    const double y = 10 * 3 * t * t * (1 - t) + 10 * t * t * t;
    EXPECT_NEAR(evaluateCurve(&list, frame), y, 1e-5);
}

TEST(Evaluation, aRepeatedRootOfExactlyZeroIsInside) {
    // x(t) = t^3 - 3 t^2 + 2.25 t: the first candidate is 0 at the first frame.
    const OpenKeyList first = segment(0, 5, 0.75, 7, 0.5, 9, 0.25, 1);
    EXPECT_EQ(evaluateCurve(&first, 0.0F), 5.0F);
    // x(t) = t^3 + 3 t^2: the first candidate is -3 there, the second 0.
    const OpenKeyList second = segment(0, 5, 0, 7, 1, 9, 4, 1);
    EXPECT_EQ(evaluateCurve(&second, 0.0F), 5.0F);
}

TEST(Evaluation, oneRealRootTakesSignedCubeRoots) {
    // x(t) = t^3: one root, whose second radicand is 0.
    const OpenKeyList cube = segment(0, 0, 0, 0, 0, 0, 8, 8);
    EXPECT_NEAR(evaluateCurve(&cube, 1.0F), 1.0, 1e-6);
    // x(t) = 1 - (1 - t)^3 in eight frames: both arguments negative.
    const OpenKeyList mirrored = segment(0, 0, 8, 8, 8, 8, 8, 8.0000001);
    EXPECT_NEAR(evaluateCurve(&mirrored, 7.0F), 7.0, 1e-5);
}

TEST(Evaluation, ofSeveralParametersTheFirstCandidateInsideCounts) {
    // The overshooting handles make x(t) turn back twice: frame 5 is met at three parameters. The
    // first candidate is the greatest of them.
    const OpenKeyList list = segment(0, 0, 20, 5, -10, 5, 10, 10);
    double best = -1.0;
    for (int i = 0; i <= 1000000; ++i) {
        const double t = i / 1e6;
        const double x = 3 * 20 * t * (1 - t) * (1 - t) - 3 * 10 * t * t * (1 - t) + 10 * t * t * t;
        if (std::fabs(x - 5.0) < 1e-4) best = t;
    }
    ASSERT_GT(best, 0.5);
    const double y = 3 * 5 * best * (1 - best) * (1 - best) + 3 * 5 * best * best * (1 - best) +
                     10 * std::pow(best, 3.0);
    EXPECT_NEAR(evaluateCurve(&list, 5.0F), y, 1e-3);
}

TEST(Evaluation, aRootThatRoundingPutsJustBelowZeroStillCounts) {
    // Three real roots, one of them 0 but for the rounding, at every start of these segments.
    for (int start = -50; start <= 50; ++start) {
        const double x = start;
        const OpenKeyList list = segment(x, 1, x + 2.1, 4, x + 8.3, -4, x + 10, -1);
        EXPECT_NEAR(evaluateCurve(&list, static_cast<float>(start)), 1.0, 1e-5) << start;
    }
}

TEST(Evaluation, aNanValueIsReturnedAsNan) {
    const OpenKeyList list = segment(0, 0, 5, kNaN, 5, 1, 10, 1);
    EXPECT_TRUE(std::isnan(evaluateCurve(&list, 3.0F)));
}

TEST(Evaluation, aNanFrameLiesBehindAllKeys) {
    const OpenKeyList list = segment(0, 0, 5, 0, 5, 1, 10, 1);
    EXPECT_EQ(evaluateCurve(&list, std::numeric_limits<float>::quiet_NaN()), 1.0F);
}

TEST(Evaluation, aNanHandleFrameGivesNoValue) {
    const OpenKeyList list = segment(0, 0, kNaN, 0, 5, 1, 10, 1);
    EXPECT_EQ(evaluateCurve(&list, 5.0F), kNoCurveValue);
}

TEST(Evaluation, theEvaluatorEqualsItsLiteralFormOnTheMuseum) {
    for (const MuseumCurve& piece : museum()) {
        OpenKeyList list;
        hang(piece, list);
        for (const float frame : interestingFrames(piece))
            EXPECT_EQ(bits(evaluateCurve(&list, frame)), bits(evaluateCurveLiterally(&list, frame)))
                << piece.name << " at " << frame;
    }
}

TEST(Evaluation, theEvaluatorEqualsItsLiteralFormOnEditedCurves) {
    std::mt19937 random(4242);
    std::uniform_real_distribution<double> anywhere(-50.0, 50.0);
    OpenKeyList list;
    for (int round = 0; round < 400; ++round) {
        list.insertCP(std::round(anywhere(random)), anywhere(random));
        if (round % 7 == 3) list.deleteExistingKey(list.getStartFrame());
        if (round % 11 == 5)
            list.getCPs()[list.getCPs().size() / 2].setPoint({anywhere(random), 1});
        if (round % 13 == 5) list.insertCP(kNaN, 1.0);
        for (int i = 0; i < 20; ++i) {
            const float frame = static_cast<float>(anywhere(random) * 1.2);
            ASSERT_EQ(bits(evaluateCurve(&list, frame)), bits(evaluateCurveLiterally(&list, frame)))
                << "round " << round << " at " << frame;
        }
    }
}

TEST(Evaluation, findsItsIntervalWithoutAllocating) {
    OpenKeyList list;
    for (int i = 0; i < 200; ++i)
        list.insertCP(i, i % 7);
    OpenKeyList unsorted(list);
    unsorted.getCPs()[50].setPoint({3.5, 0});
    // The first evaluation of a curve makes the memory that it keeps.
    float sum = evaluateCurve(&list, 0.5F) + evaluateCurve(&unsorted, 0.5F);
    EXPECT_EQ(kvtest::allocationsOf([&] {
                  for (float frame = -1.0F; frame < 202.0F; frame += 0.375F)
                      sum += evaluateCurve(&list, frame) + evaluateCurve(&unsorted, frame);
              }),
              0U);
    EXPECT_NE(sum, 0.0F);
}

TEST(Evaluation, theCurveIsLeftAsItIs) {
    OpenKeyList list;
    hang(museumCurve("three roots"), list);
    const kvControlPoint before = keyAt(list, 1);
    ASSERT_TRUE(State::isKnownLinked(list));
    evaluateCurve(&list, 5.0F);
    EXPECT_TRUE(State::isKnownLinked(list));
    EXPECT_EQ(keyAt(list, 1).getOutTangent().y, before.getOutTangent().y);
}
