// Edits of a whole curve: moving a key, stretching, flipping, printing.
#include <kvAnimationCurve.h>

#include "keys/keyListFixture.h"
#include "keys/museum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace kv::test;

namespace {

void importUser(kvAnimationCurve& curve, float x, float y, float inX, float outX) {
    curve.importControlPoint(x, y, inX, y, outX, y, kvControlPoint::User);
}

void expectPoint(kvControlPoint::Point p, double x, double y) {
    EXPECT_EQ(p.x, x);
    EXPECT_EQ(p.y, y);
}

} // namespace

TEST(CurveMove, aRecomputedKeyTakesItsNeighboursAlong) {
    kvAnimationCurve curve;
    curve.setTangentLength(2);
    for (const float x : {0.0F, 10.0F, 20.0F, 30.0F})
        curve.importControlPoint(x, 0, x, 0, x, 0, kvControlPoint::Flat);
    curve.moveCPTo(curve.getControlPoint(2), 14, 3);
    expectPoint(keyAt(curve, 1).getPoint(), 14, 3);
    EXPECT_EQ(keyAt(curve, 0).getOutTangent().x, 7.0);
    // The middle key: half the way to the next, and a third of 20 in single precision before it.
    EXPECT_EQ(keyAt(curve, 1).getInTangent().x, 14.0 - 6.6666669845581055);
    EXPECT_EQ(keyAt(curve, 1).getOutTangent().x, 17.0);
    EXPECT_EQ(keyAt(curve, 2).getInTangent().x, 17.0);
    EXPECT_EQ(keyAt(curve, 3).getInTangent().x, 25.0);
}

TEST(CurveMove, theIncomingHandleOfAKeyThatIsNotRecomputedChangesSides) {
    for (const int type : {kvControlPoint::Collapsed, kvControlPoint::User}) {
        kvAnimationCurve curve;
        importUser(curve, 10, 5, 9, 12);
        State::keys(curve)[0].setTangentType(type);
        State::keys(curve)[0].setInTangent({9, 4});
        State::keys(curve)[0].setOutTangent({12, 8});
        curve.moveCPTo(&State::keys(curve)[0], 20, 50);
        expectPoint(keyAt(curve, 0).getPoint(), 20, 50);
        expectPoint(keyAt(curve, 0).getInTangent(), 21, 51);
        expectPoint(keyAt(curve, 0).getOutTangent(), 22, 53);
    }
}

TEST(CurveMove, handlesMoveInSinglePrecision) {
    kvAnimationCurve curve;
    importUser(curve, 10, 5, 9, 12);
    State::keys(curve)[0].setInTangent({10.0 - 0.1, 5});
    curve.moveCPTo(&State::keys(curve)[0], 1000.25F, 0);
    const float delta = static_cast<float>(10.0 - (10.0 - 0.1));
    EXPECT_EQ(keyAt(curve, 0).getInTangent().x, static_cast<double>(delta + 1000.25F));
    EXPECT_NE(keyAt(curve, 0).getInTangent().x, 1000.25 + (10.0 - (10.0 - 0.1)));
}

TEST(CurveMove, aKeyMovedPastANeighbourLeavesItsPlaceToIt) {
    kvAnimationCurve curve;
    importUser(curve, 0, 0, -1, 2);
    importUser(curve, 10, 1, 7, 11);
    importUser(curve, 20, 2, 19, 21);
    kvControlPoint* const place = &State::keys(curve)[0];
    curve.moveCPTo(place, 15, 7);
    EXPECT_EQ(framesOf(curve), (std::vector<double>{10, 15, 20}));
    expectLinked(curve);
    // The key at the address is now the one at 10; it gets the moved key's handle distances.
    expectPoint(place->getPoint(), 10, 1);
    expectPoint(place->getInTangent(), 16, 7);
    expectPoint(place->getOutTangent(), 17, 7);
    expectPoint(keyAt(curve, 1).getInTangent(), -1, 0);
}

TEST(CurveMove, whatHappensIsDecidedByTheKeyThatComesToTheAddress) {
    kvAnimationCurve curve;
    curve.setTangentLength(1);
    importUser(curve, 0, 0, -1, 2);
    curve.importControlPoint(10, 1, 0, 0, 0, 0, kvControlPoint::Flat);
    importUser(curve, 20, 2, 19, 21);
    curve.moveCPTo(&State::keys(curve)[0], 15, 7);
    // The flat key now stands first and is recomputed; the moved key keeps its old handles.
    expectPoint(keyAt(curve, 0).getInTangent(), 8, 1);
    expectPoint(keyAt(curve, 1).getPoint(), 15, 7);
    expectPoint(keyAt(curve, 1).getOutTangent(), 2, 0);
}

TEST(CurveMove, amongEqualFramesTheKeyStopsBesideTheOthers) {
    kvAnimationCurve curve;
    for (const float x : {0.0F, 10.0F, 20.0F, 30.0F})
        importUser(curve, x, x, x, x);
    curve.moveCPTo(curve.getControlPoint(1), 20, 7);
    EXPECT_EQ(valuesOf(curve), (std::vector<double>{10, 7, 20, 30}));
    curve.moveCPTo(curve.getControlPoint(4), 20, 8);
    EXPECT_EQ(valuesOf(curve), (std::vector<double>{10, 7, 20, 8}));
    curve.moveCPTo(curve.getControlPoint(4), 10, 9);
    EXPECT_EQ(valuesOf(curve), (std::vector<double>{10, 9, 7, 20}));
    expectLinked(curve);
}

TEST(CurveMove, aNanFrameGoesToTheEnd) {
    kvAnimationCurve curve;
    for (const float x : {0.0F, 10.0F, 20.0F})
        importUser(curve, x, x, x, x);
    curve.moveCPTo(curve.getControlPoint(1), std::nanf(""), 7);
    EXPECT_EQ(valuesOf(curve), (std::vector<double>{10, 20, 7}));
    curve.moveCPTo(curve.getControlPoint(1), 15, 8);
    EXPECT_EQ(valuesOf(curve), (std::vector<double>{10, 8, 20}));
    expectLinked(curve);
}

TEST(CurveMove, aListThatIsNotInOrderIsSortedWithTheKeyAtItsNewPlace) {
    kvAnimationCurve curve;
    for (const float x : {0.0F, 10.0F, 20.0F, 30.0F})
        importUser(curve, x, x, x - 1, x + 2);
    curve.getCPs()[3].setPoint({-5, 30});
    kvControlPoint* const place = &State::keys(curve)[1];
    curve.moveCPTo(place, 25, 7);
    EXPECT_EQ(framesOf(curve), (std::vector<double>{-5, 0, 20, 25}));
    EXPECT_EQ(valuesOf(curve), (std::vector<double>{30, 0, 20, 7}));
    expectLinked(curve);
    expectPoint(place->getInTangent(), 26, 7);
    expectPoint(place->getOutTangent(), 27, 7);
    expectPoint(keyAt(curve, 3).getInTangent(), 9, 10);
}

TEST(CurveMove, aCopyIsLinkedToItself) {
    kvAnimationCurve source;
    for (const float x : {0.0F, 10.0F, 20.0F})
        source.importControlPoint(x, 0, x, 0, x, 0, kvControlPoint::Flat);
    kvAnimationCurve curve(source);
    curve.moveCPTo(curve.getControlPoint(2), 12, 5);
    EXPECT_EQ(framesOf(curve), (std::vector<double>{0, 12, 20}));
    expectLinked(curve);
    EXPECT_EQ(keyAt(curve, 0).getOutTangent().x, 6.0);
    EXPECT_EQ(keyAt(source, 0).getOutTangent().x, 5.0);
}

TEST(CurveMove, nullIsIgnoredAndAKeyOutsideTheCurveMovesAlone) {
    kvAnimationCurve curve;
    importUser(curve, 0, 0, -1, 1);
    importUser(curve, 10, 0, 9, 11);
    curve.moveCPTo(nullptr, 5, 5);
    kvControlPoint outside(1, 1, kvControlPoint::User);
    curve.moveCPTo(&outside, 5, 6);
    expectPoint(outside.getPoint(), 5, 6);
    EXPECT_EQ(framesOf(curve), (std::vector<double>{0, 10}));
}

TEST(CurveStretch, stretchingLeftKeepsTheEnd) {
    kvAnimationCurve curve;
    for (const float x : {10.0F, 15.0F, 20.0F})
        importUser(curve, x, x, x - 1, x + 1);
    curve.stretchLeft(0);
    EXPECT_EQ(framesOf(curve), (std::vector<double>{0, 10, 20}));
    expectPoint(keyAt(curve, 1).getInTangent(), 8, 15);
    expectPoint(keyAt(curve, 1).getOutTangent(), 12, 15);
    expectPoint(keyAt(curve, 0).getInTangent(), -2, 10);
    expectLinked(curve);
}

TEST(CurveStretch, stretchingRightKeepsTheStart) {
    kvAnimationCurve curve;
    for (const float x : {10.0F, 15.0F, 20.0F})
        importUser(curve, x, x, x - 1, x + 1);
    curve.stretchRight(40);
    EXPECT_EQ(framesOf(curve), (std::vector<double>{10, 25, 40}));
    expectPoint(keyAt(curve, 1).getInTangent(), 22, 15);
    expectPoint(keyAt(curve, 2).getOutTangent(), 43, 20);
}

TEST(CurveStretch, differencesToTheEndAreTakenInDoubleAndThenRounded) {
    kvAnimationCurve curve;
    curve.insertCP(0.9, 0.0);
    curve.insertCP(1.8, 0.0);
    curve.insertCP(3.39, 0.0);
    curve.stretchLeft(-2.0F);
    // From single-precision arithmetic done elsewhere. With an end that is rounded before either
    // difference, or before both, the digits from the sixth on are others.
    EXPECT_EQ(keyAt(curve, 1).getPoint().x, static_cast<double>(-0.051807284355163574F));
}

TEST(CurveStretch, framesPassThroughSinglePrecision) {
    kvAnimationCurve curve;
    curve.insertCP(0.1, 0.123456789012);
    curve.insertCP(0.7, 1.0);
    curve.insertCP(1.3, 2.0);
    curve.stretchRight(5.3F);
    const float s = static_cast<float>(0.1);
    const float span = static_cast<float>(1.3 - static_cast<double>(s));
    const float newSpan = 5.3F - s;
    const float middle = (static_cast<float>(0.7) - s) / span * newSpan + s;
    EXPECT_EQ(keyAt(curve, 1).getPoint().x, static_cast<double>(middle));
    EXPECT_EQ(keyAt(curve, 0).getPoint().x, static_cast<double>(s));
    EXPECT_EQ(keyAt(curve, 0).getPoint().y, 0.123456789012) << "values are not rounded";
}

TEST(CurveStretch, aCurveWithoutKeysOrWithoutARangeIsNoCaseOfItsOwn) {
    kvAnimationCurve empty;
    empty.stretchLeft(5);
    empty.stretchRight(5);
    EXPECT_TRUE(empty.getCPs().empty());
    kvAnimationCurve single;
    single.insertCP(5, 1);
    single.stretchLeft(0);
    EXPECT_TRUE(std::isnan(keyAt(single, 0).getPoint().x)) << "0 / 0";
}

TEST(CurveStretch, stretchingBeyondTheOtherEndTurnsTheOrderRoundWithoutSorting) {
    kvAnimationCurve curve;
    for (const float x : {10.0F, 15.0F, 20.0F})
        importUser(curve, x, x, x, x);
    curve.stretchLeft(30);
    EXPECT_EQ(framesOf(curve), (std::vector<double>{30, 25, 20}));
    EXPECT_FALSE(State::isKnownSorted(curve));
    curve.sortCPs();
    EXPECT_EQ(framesOf(curve), (std::vector<double>{20, 25, 30}));
}

TEST(CurveFlip, framesAndHandlesAreMirrored) {
    kvAnimationCurve curve;
    curve.importControlPoint(0, 1, -2, 10, 3, 11, kvControlPoint::User);
    curve.importControlPoint(10, 2, 9, 20, 14, 21, kvControlPoint::User);
    curve.flip();
    EXPECT_EQ(framesOf(curve), (std::vector<double>{0, 10}));
    EXPECT_EQ(valuesOf(curve), (std::vector<double>{2, 1}));
    expectPoint(keyAt(curve, 0).getInTangent(), -4, 21);
    expectPoint(keyAt(curve, 0).getOutTangent(), 1, 20);
    expectPoint(keyAt(curve, 1).getInTangent(), 7, 11);
    expectPoint(keyAt(curve, 1).getOutTangent(), 12, 10);
    expectLinked(curve);
}

TEST(CurveFlip, theMiddleIsRoundedAndTheMirroringIsNot) {
    kvAnimationCurve curve;
    curve.insertCP(0.1, 0);
    curve.insertCP(0.4, 0);
    curve.insertCP(0.9, 0);
    curve.flip();
    const float range = static_cast<float>(0.9) - static_cast<float>(0.1);
    const double middle =
        static_cast<double>(static_cast<float>(static_cast<double>(range) * 0.5 + 0.1));
    EXPECT_EQ(keyAt(curve, 1).getPoint().x, middle - 0.4 + middle);
    EXPECT_NE(keyAt(curve, 1).getPoint().x, 0.5 - 0.4 + 0.5);
}

TEST(CurveFlip, aCurveOfOneKeyStays) {
    kvAnimationCurve curve;
    importUser(curve, 7, 1, 5, 8);
    curve.flip();
    expectPoint(keyAt(curve, 0).getInTangent(), 5, 1);
    kvAnimationCurve empty;
    empty.flip();
    EXPECT_TRUE(empty.getCPs().empty());
}

TEST(CurvePrint, everyKeyTakesThreeLines) {
    kvAnimationCurve curve;
    curve.importControlPoint(0, 1.5, -1, 2.25, 3, 4, kvControlPoint::User);
    curve.importControlPoint(1234567, -0.5, 1, 2, 3, 4, kvControlPoint::User);
    ::testing::internal::CaptureStdout();
    curve.printInfo();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "# CurvePoint1: 0 1.5\n"
                                                        "# InTangent1: -1 2.25\n"
                                                        "# OutTangent1: 3 4\n"
                                                        "# CurvePoint2: 1.23457e+06 -0.5\n"
                                                        "# InTangent2: 1 2\n"
                                                        "# OutTangent2: 3 4\n");
}

TEST(CurvePrint, aCurveWithoutKeysPrintsNothing) {
    const kvAnimationCurve curve;
    ::testing::internal::CaptureStdout();
    curve.printInfo();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

TEST(CurveMuseum, wholeCurveEditsSurviveEveryPiece) {
    for (const MuseumCurve& piece : museum()) {
        kvAnimationCurve curve;
        hang(piece, curve);
        curve.selectAllCPs();
        for (int type = 0; type <= 7; ++type) {
            for (int mode = 0; mode <= 4; ++mode) {
                kvAnimationCurve edited(curve);
                edited.sortCPs();
                edited.setTangentLength(mode);
                edited.selectAllCPs();
                edited.computeTangents(type);
                edited.flip();
                edited.stretchLeft(-7.5F);
                edited.stretchRight(99.25F);
                if (!edited.getCPs().empty()) edited.moveCPTo(&edited.getCPs().back(), 3.5F, 1.0F);
                edited.insertCP(4.25, 1.0);
                edited.constantCurveInterval();
                edited.deleteAllSelectedCPs();
                EXPECT_LE(edited.getCPs().size(), 1U) << piece.name;
            }
        }
    }
}
