// Editing with the mouse: snapping, constraints, distances, the hit test.
#include <kvControlPointManager.h>

#include "keys/keyListFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace kv::test;

TEST(KeyListMouse, snappingAKeyDoesNotSort) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, x);
    list.snap2Integer(State::keys(list)[0], 12.5, -0.5, true, true);
    EXPECT_EQ(framesOf(list), (std::vector<double>{13, 10, 20}));
    EXPECT_EQ(keyAt(list, 0).getPoint().y, -1.0);
    list.snap2Integer(State::keys(list)[0], 12.5, -0.5, false, false);
    EXPECT_EQ(keyAt(list, 0).getPoint().x, 12.5);
    EXPECT_EQ(keyAt(list, 0).getPoint().y, -0.5);
    list.insertCP(11.0, 0.0);
    EXPECT_EQ(framesOf(list), (std::vector<double>{10, 11, 12.5, 20}));
}

TEST(KeyListMouse, snappingInAnEmptyListDoesNothing) {
    OpenKeyList list;
    kvControlPoint stranger(1.5, 1.5, 5);
    list.snap2Integer(stranger, 7.0, 7.0, true, true);
    EXPECT_EQ(stranger.getPoint().x, 1.5);
    list.insertCP(0.0, 0.0);
    list.snap2Integer(stranger, 7.2, 7.2, true, false);
    EXPECT_EQ(stranger.getPoint().x, 7.0);
    EXPECT_EQ(stranger.getPoint().y, 7.2);
}

TEST(KeyListMouse, aListRemainsKnownAsSortedWhileADraggedKeyStaysBetweenItsNeighbours) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, x);
    list.snap2Integer(State::keys(list)[1], 20.0, 0.0, false, false);
    EXPECT_TRUE(State::isKnownSorted(list));
    list.snap2Integer(State::keys(list)[0], -7.0, 0.0, false, false);
    list.snap2Integer(State::keys(list)[2], 70.0, 0.0, false, false);
    EXPECT_TRUE(State::isKnownSorted(list)) << "the ends have a neighbour on one side only";
    list.snap2Integer(State::keys(list)[1], 70.5, 0.0, false, false);
    EXPECT_FALSE(State::isKnownSorted(list));
}

namespace {

// Keys at 0, 10 and 20 whose handles reach 3 frames to either side.
OpenKeyList constrainedList() {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0}) {
        kvControlPoint cp(x, 0.0, 6);
        cp.setInTangent({x - 3, 0});
        cp.setOutTangent({x + 3, 0});
        list.insertCP(cp);
    }
    return list;
}

} // namespace

TEST(KeyListMouse, constraintsHoldTheIncomingHandleInFrontOfTheKey) {
    OpenKeyList list = constrainedList();
    list.sortCPs();
    const kvControlPoint& cp = keyAt(list, 1);
    EXPECT_TRUE(list.checkConstraints(cp, 10, 10, 12));
    EXPECT_FALSE(list.checkConstraints(cp, 10, std::nextafter(10.0F, 11.0F), 12));
}

TEST(KeyListMouse, constraintsLetTheOutgoingHandleLieInFrontOfTheKey) {
    OpenKeyList list = constrainedList();
    list.sortCPs();
    EXPECT_TRUE(list.checkConstraints(keyAt(list, 1), 10, 8, 4));
}

TEST(KeyListMouse, constraintsStopAtTheNeighboursHandlesAndFrames) {
    OpenKeyList list = constrainedList();
    list.sortCPs();
    const kvControlPoint& cp = keyAt(list, 1);
    EXPECT_TRUE(list.checkConstraints(cp, 3, 0, 5));
    EXPECT_FALSE(list.checkConstraints(cp, std::nextafter(3.0F, 0.0F), 0, 5));
    EXPECT_FALSE(list.checkConstraints(cp, 3, std::nextafter(0.0F, -1.0F), 5));
    EXPECT_TRUE(list.checkConstraints(cp, 17, 8, 20));
    EXPECT_FALSE(list.checkConstraints(cp, std::nextafter(17.0F, 18.0F), 8, 20));
    EXPECT_FALSE(list.checkConstraints(cp, 17, 8, std::nextafter(20.0F, 21.0F)));
}

TEST(KeyListMouse, constraintsOfTheFirstAndLastKeyHaveOneSide) {
    OpenKeyList list = constrainedList();
    list.sortCPs();
    EXPECT_TRUE(list.checkConstraints(keyAt(list, 0), -1000, -2000, -900));
    EXPECT_TRUE(list.checkConstraints(keyAt(list, 2), 1000, 900, 2000));
}

TEST(KeyListMouse, distancesAreSignedAndStoredInEveryKey) {
    OpenKeyList list;
    list.insertCP(3.0, -4.0);
    list.insertCP(9.0, -20.0);
    list.computeDistances2Mouse(5.0, -10.0);
    double dx = 0.0;
    double dy = 0.0;
    keyAt(list, 0).getDistance2Mouse(dx, dy);
    EXPECT_EQ(dx, -2.0);
    EXPECT_EQ(dy, 6.0);
    keyAt(list, 1).getDistance2Mouse(dx, dy);
    EXPECT_EQ(dx, 4.0);
    EXPECT_EQ(dy, -10.0);
}

TEST(KeyListMouse, aKeyIsHitWithinSixPixelsAndNotAtSix) {
    OpenKeyList list;
    list.insertCP(0.0, 0.0);
    EXPECT_TRUE(list.hasHitCPOrTangent(5.9, 0.0, 1.0, 1.0));
    EXPECT_FALSE(list.hasHitCPOrTangent(6.0, 0.0, 1.0, 1.0));
    EXPECT_TRUE(list.hasHitCPOrTangent(0.0, -5.9, 1.0, 1.0));
    EXPECT_FALSE(list.hasHitCPOrTangent(0.0, -6.0, 1.0, 1.0));
}

TEST(KeyListMouse, theEdgeOfTheReachIsNoHitOnAnySide) {
    OpenKeyList list;
    kvControlPoint cp(0.0, 0.0, 6);
    cp.setInTangent({-100, 50});
    cp.setOutTangent({100, 50});
    list.insertCP(cp);
    struct Target {
        double x;
        double y;
        double reach;
    };
    for (const Target t : {Target{0, 0, 6}, Target{-100, 50, 4}, Target{100, 50, 4}}) {
        const double inside = t.reach - 0.125;
        for (const double side : {-1.0, 1.0}) {
            EXPECT_FALSE(list.hasHitCPOrTangent(t.x + side * t.reach, t.y, 1.0, 1.0)) << t.x;
            EXPECT_FALSE(list.hasHitCPOrTangent(t.x, t.y + side * t.reach, 1.0, 1.0)) << t.x;
            EXPECT_TRUE(list.hasHitCPOrTangent(t.x + side * inside, t.y, 1.0, 1.0)) << t.x;
            EXPECT_TRUE(list.hasHitCPOrTangent(t.x, t.y + side * inside, 1.0, 1.0)) << t.x;
        }
    }
}

TEST(KeyListMouse, theReachShrinksWithTheScaleOfItsAxis) {
    OpenKeyList list;
    list.insertCP(0.0, 0.0);
    EXPECT_TRUE(list.hasHitCPOrTangent(0.59, 2.9, 10.0, 2.0));
    EXPECT_FALSE(list.hasHitCPOrTangent(0.61, 2.9, 10.0, 2.0));
    EXPECT_FALSE(list.hasHitCPOrTangent(0.59, 3.1, 10.0, 2.0));
}

TEST(KeyListMouse, theReachOfHandlesShrinksWithTheScaleOfItsAxis) {
    OpenKeyList list;
    kvControlPoint cp(0.0, 0.0, 6);
    cp.setInTangent({-100, 0});
    cp.setOutTangent({100, 0});
    list.insertCP(cp);
    for (const double x : {-100.0, 100.0}) {
        EXPECT_TRUE(list.hasHitCPOrTangent(x + 0.39, 1.9, 10.0, 2.0));
        EXPECT_FALSE(list.hasHitCPOrTangent(x + 0.41, 1.9, 10.0, 2.0));
        EXPECT_FALSE(list.hasHitCPOrTangent(x + 0.39, 2.1, 10.0, 2.0));
    }
}

TEST(KeyListMouse, handlesAreHitWithinFourPixels) {
    OpenKeyList list;
    kvControlPoint cp(0.0, 0.0, 6);
    cp.setInTangent({-100, 0});
    cp.setOutTangent({100, 0});
    list.insertCP(cp);
    EXPECT_TRUE(list.hasHitCPOrTangent(-96.1, 0.0, 1.0, 1.0));
    EXPECT_EQ(list.getHitType(), kvControlPointManager::HitInTangent);
    EXPECT_FALSE(list.hasHitCPOrTangent(-96.0, 0.0, 1.0, 1.0));
    EXPECT_TRUE(list.hasHitCPOrTangent(103.9, 0.0, 1.0, 1.0));
    EXPECT_EQ(list.getHitType(), kvControlPointManager::HitOutTangent);
    EXPECT_FALSE(list.hasHitCPOrTangent(104.0, 0.0, 1.0, 1.0));
    EXPECT_TRUE(list.hasHitCPOrTangent(0.0, 0.0, 1.0, 1.0));
    EXPECT_EQ(list.getHitType(), kvControlPointManager::HitPoint) << "no longer the handle";
}

TEST(KeyListMouse, theKeyWinsOverItsHandlesAndAnEarlierKeyOverALater) {
    OpenKeyList list;
    for (const double x : {0.0, 5.0}) {
        kvControlPoint cp(x, 0.0, 6);
        list.insertCP(cp);
    }
    EXPECT_TRUE(list.hasHitCPOrTangent(2.0, 0.0, 1.0, 1.0));
    EXPECT_EQ(list.getHitType(), kvControlPointManager::HitPoint);
    EXPECT_EQ(list.getHitCP(), &keyAt(list, 0));
    EXPECT_TRUE(list.hasHitCPOrTangent(7.0, 0.0, 1.0, 1.0));
    EXPECT_EQ(list.getHitCP(), &keyAt(list, 1));
}

TEST(KeyListMouse, withoutAHitTheLastOneIsRemembered) {
    OpenKeyList list;
    kvControlPoint cp(0.0, 0.0, 6);
    cp.setInTangent({-100, 0});
    list.insertCP(cp);
    list.hasHitCPOrTangent(-100.0, 0.0, 1.0, 1.0);
    EXPECT_FALSE(list.hasHitCPOrTangent(500.0, 0.0, 1.0, 1.0));
    EXPECT_EQ(list.getHitType(), kvControlPointManager::HitInTangent);
    EXPECT_EQ(list.getHitCP(), &keyAt(list, 0));
    OpenKeyList empty;
    EXPECT_FALSE(empty.hasHitCPOrTangent(0.0, 0.0, 1.0, 1.0));
}
