// Where handles go: the table of types and length modes, the roundings, and missing neighbours.
#include "keys/handlePlacement.h"

#include "keys/keyListFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using namespace kv::test;
using kv::detail::KeyRole;
using kv::detail::placeHandles;
using Point = kvControlPoint::Point;

namespace {

constexpr double kThird = 0.3333333432674408;

// Two lines of slope -3/4 and 3/4, so that a length of 2 along them is (1.6, 1.2): the middle key
// lies between them, the first and last keys are the ends of the second.
const Point kPrevious{-4, 3};
const Point kMiddle{0, 0};
const Point kNext{8, 6};

struct Cell {
    int type;
    int mode;
    KeyRole role;
    Point in;
    Point out;
};

std::vector<Cell> table() {
    using K = kvControlPoint;
    const double c = 2 * 4 / std::sqrt(17.0); // the chord rises by 1 in 4
    const double s = 2 * 1 / std::sqrt(17.0);
    const double l12 = kThird * 12;
    const double l8 = kThird * 8;
    const double r8 = 0.75 * l8;
    const KeyRole first = KeyRole::First;
    const KeyRole middle = KeyRole::Middle;
    const KeyRole last = KeyRole::Last;
    return {
        {K::Aimed, 1, first, {-2, 0}, {1.6, 1.2}},
        {K::Aimed, 1, middle, {-1.6, 1.2}, {1.6, 1.2}},
        {K::Aimed, 1, last, {6.4, 4.8}, {10, 6}},
        {K::Aimed, 2, first, {-4, 0}, {4, 3}},
        {K::Aimed, 2, middle, {-2, 1.5}, {4, 3}},
        {K::Aimed, 2, last, {4, 3}, {12, 6}},
        {K::Aimed, 3, first, {-l8, 0}, {l8, r8}},
        {K::Aimed, 3, middle, {-0.8 * l12, 0.6 * l12}, {0.8 * l12, 0.6 * l12}},
        {K::Aimed, 3, last, {8 - l8, 6 - r8}, {8 + l8, 6}},
        {K::Smooth, 1, first, {-1.6, -1.2}, {1.6, 1.2}},
        {K::Smooth, 1, middle, {-c, -s}, {c, s}},
        {K::Smooth, 1, last, {6.4, 4.8}, {9.6, 7.2}},
        {K::Smooth, 2, first, {-4, -3}, {4, 3}},
        {K::Smooth, 2, middle, {-2, -0.5}, {4, 1}},
        {K::Smooth, 2, last, {4, 3}, {12, 9}},
        {K::Smooth, 3, first, {-l8, -r8}, {l8, r8}},
        {K::Smooth, 3, middle, {-l12, -3 * kThird}, {l12, 3 * kThird}},
        {K::Smooth, 3, last, {8 - l8, 6 - r8}, {8 + l8, 6 + r8}},
        {K::Flat, 1, first, {-2, 0}, {2, 0}},
        {K::Flat, 1, middle, {-2, 0}, {2, 0}},
        {K::Flat, 1, last, {6, 6}, {10, 6}},
        {K::Flat, 2, first, {-4, 0}, {4, 0}},
        {K::Flat, 2, middle, {-2, 0}, {4, 0}},
        {K::Flat, 2, last, {4, 6}, {12, 6}},
        {K::Flat, 3, first, {-l8, 0}, {l8, 0}},
        {K::Flat, 3, middle, {-l12, 0}, {l12, 0}},
        {K::Flat, 3, last, {8 - l8, 6}, {8 + l8, 6}},
        {K::Auto, 1, first, {-1.6, -1.2}, {1.6, 1.2}},
        {K::Auto, 1, middle, {-1.6, -1.2}, {1.6, 1.2}},
        {K::Auto, 1, last, {6, 6}, {10, 6}},
        {K::Auto, 2, first, {-4, -3}, {4, 3}},
        {K::Auto, 2, middle, {-2, -1.5}, {4, 3}},
        {K::Auto, 2, last, {4, 6}, {12, 6}},
        {K::Auto, 3, first, {-l8, -r8}, {l8, r8}},
        {K::Auto, 3, middle, {-l12, -0.75 * l12}, {l12, 0.75 * l12}},
        {K::Auto, 3, last, {8 - l8, 6}, {8 + l8, 6}},
    };
}

kv::detail::KeySurroundings surroundings(KeyRole role) {
    switch (role) {
    case KeyRole::First:
        return {role, kMiddle, nullptr, &kNext};
    case KeyRole::Middle:
        return {role, kMiddle, &kPrevious, &kNext};
    default:
        return {role, kNext, &kMiddle, nullptr};
    }
}

// A list of three keys of one type, recomputed.
OpenKeyList threeKeys(int type, int mode) {
    OpenKeyList list;
    list.setTangentLength(mode);
    list.insertCP(0, 0);
    list.insertCP(10, 10);
    list.insertCP(20, 0);
    list.selectAllCPs();
    list.computeTangents(type);
    return list;
}

void expectHandles(const kvControlPoint& cp, Point in, Point out) {
    EXPECT_EQ(cp.getInTangent().x, in.x);
    EXPECT_EQ(cp.getInTangent().y, in.y);
    EXPECT_EQ(cp.getOutTangent().x, out.x);
    EXPECT_EQ(cp.getOutTangent().y, out.y);
}

} // namespace

TEST(Handles, everyTypeModeAndRoleHasItsPlacement) {
    for (const Cell& cell : table()) {
        const std::string where = "type " + std::to_string(cell.type) + " mode " +
                                  std::to_string(cell.mode) + " role " +
                                  std::to_string(static_cast<int>(cell.role));
        const auto placed = placeHandles(cell.type, cell.mode, surroundings(cell.role));
        ASSERT_TRUE(placed.has_value()) << where;
        // The one slope that is taken in single precision.
        const bool single = cell.type == 5 && cell.mode == 2 && cell.role == KeyRole::Middle;
        const double tolerance = single ? 1e-6 : 1e-12;
        EXPECT_NEAR(placed->in.x, cell.in.x, tolerance) << where;
        EXPECT_NEAR(placed->in.y, cell.in.y, tolerance) << where;
        EXPECT_NEAR(placed->out.x, cell.out.x, tolerance) << where;
        EXPECT_NEAR(placed->out.y, cell.out.y, tolerance) << where;
    }
}

TEST(Handles, autoInModeThirdGoesThroughTheArctangentAndBack) {
    const OpenKeyList list = threeKeys(kvControlPoint::Auto, kvControlPointManager::Third);
    expectHandles(keyAt(list, 1), {3.333333134651184, 16.666666865348816},
                  {16.666666865348816, 3.333333134651185});
}

TEST(Handles, flatInModeHalfStopsHalfwayToTheNeighbours) {
    const OpenKeyList list = threeKeys(kvControlPoint::Flat, kvControlPointManager::Half);
    expectHandles(keyAt(list, 1), {5, 10}, {15, 10});
}

TEST(Handles, theChordLimitsAHandleOnlyWhereItIsShorterThanHalfTheWay) {
    const Point previous{-12, 0};
    const Point next{3, 0};
    const auto placed =
        placeHandles(kvControlPoint::Flat, 2, {KeyRole::Middle, {0, 0}, &previous, &next});
    EXPECT_EQ(placed->in.x, -5.0) << "a third of 15, rounded to single precision";
    EXPECT_EQ(placed->out.x, 1.5);
    const Point distant{12, 0};
    const Point close{-3, 0};
    const auto mirrored =
        placeHandles(kvControlPoint::Flat, 2, {KeyRole::Middle, {0, 0}, &close, &distant});
    EXPECT_EQ(mirrored->in.x, -1.5);
    EXPECT_EQ(mirrored->out.x, 5.0);
}

TEST(Handles, theThirdOfTheChordIsRoundedToSinglePrecision) {
    // 0.3333333432674408 times 20 is 6.666666865348816; in single precision 6.6666669845581055.
    const Point previous{-18, 0};
    const Point next{2, 0};
    const auto placed =
        placeHandles(kvControlPoint::Flat, 2, {KeyRole::Middle, {0, 0}, &previous, &next});
    EXPECT_EQ(placed->in.x, -6.6666669845581055);
}

TEST(Handles, aDifferenceOfFramesIsTakenInDoubleAndThenRounded) {
    const Point previous{0.5, 0};
    const Point key{16777217, 0};
    const Point next{2e8, 0};
    const auto placed =
        placeHandles(kvControlPoint::Flat, 2, {KeyRole::Middle, key, &previous, &next});
    // 16777216.5 rounds to 16777216; the difference of the rounded frames would be 16777215.5.
    EXPECT_EQ(placed->in.x, 16777217.0 - 8388608.0);
}

TEST(Handles, autoInModeHalfTakesTheSlopeInSinglePrecision) {
    const Point previous{-30, 0};
    const Point next{3, 1};
    const auto placed =
        placeHandles(kvControlPoint::Auto, 2, {KeyRole::Middle, {0, 0}, &previous, &next});
    const double single = std::tan(static_cast<double>(std::atan(1.0F / 3.0F)));
    EXPECT_EQ(placed->out.y, single * 1.5);
    EXPECT_NE(placed->out.y, std::tan(std::atan(1.0 / 3.0)) * 1.5);
}

TEST(Handles, userKeysKeepHandlesThatLieAnywhere) {
    OpenKeyList list;
    list.insertCP(0, 0);
    list.insertCP(10, 10);
    list.insertCP(20, 0);
    kvControlPoint& cp = State::keys(list)[1];
    cp.setTangentType(kvControlPoint::User);
    cp.setInTangent({500, 1});
    cp.setOutTangent({-500, 2});
    for (const int mode : {1, 2, 3, 0, 4}) {
        list.setTangentLength(mode);
        list.computeTangents();
        expectHandles(keyAt(list, 1), {500, 1}, {-500, 2});
    }
}

TEST(Handles, typesZeroOneAndUnknownCollapse) {
    for (const int type : {0, 1, 7, 99, -1}) {
        const OpenKeyList list = threeKeys(type, kvControlPointManager::Half);
        for (const kvControlPoint& cp : keysOf(list)) {
            EXPECT_EQ(cp.getTangentType(), type);
            expectHandles(cp, cp.getPoint(), cp.getPoint());
        }
    }
}

TEST(Handles, unknownModesCollapseAllTypesButUser) {
    for (const int mode : {0, 4, -1}) {
        for (const int type : {2, 3, 4, 5}) {
            const OpenKeyList list = threeKeys(type, mode);
            for (const kvControlPoint& cp : keysOf(list))
                expectHandles(cp, cp.getPoint(), cp.getPoint());
        }
    }
}

TEST(Handles, aSingleKeyIsNeverRecomputed) {
    OpenKeyList list;
    list.insertCP(5, 5);
    State::keys(list)[0].setInTangent({1, 2});
    for (int type = 0; type <= 6; ++type) {
        list.selectAllCPs();
        list.computeTangents(type);
        list.computeTangents();
        list.computeTangents(State::keys(list)[0]);
        list.computeTangentsExtended(State::keys(list)[0]);
        EXPECT_EQ(keyAt(list, 0).getTangentType(), type);
        EXPECT_EQ(keyAt(list, 0).getInTangent().y, 2.0);
    }
}

TEST(Handles, aNeighbourThatIsNeededAndMissingLeavesBothHandles) {
    for (int type = 2; type <= 5; ++type) {
        for (int mode = 1; mode <= 3; ++mode) {
            const bool needsNone = mode == 1 && type == kvControlPoint::Flat;
            EXPECT_EQ(placeHandles(type, mode, {KeyRole::First, kMiddle, &kPrevious, nullptr})
                          .has_value(),
                      needsNone);
            const bool flatLast = mode == 1 && type == kvControlPoint::Auto;
            EXPECT_EQ(
                placeHandles(type, mode, {KeyRole::Last, kMiddle, nullptr, &kNext}).has_value(),
                needsNone || flatLast);
            EXPECT_EQ(placeHandles(type, mode, {KeyRole::Middle, kMiddle, &kPrevious, nullptr})
                          .has_value(),
                      needsNone);
            const bool onlyNext = mode == 1 && type == kvControlPoint::Auto;
            EXPECT_EQ(
                placeHandles(type, mode, {KeyRole::Middle, kMiddle, nullptr, &kNext}).has_value(),
                needsNone || onlyNext)
                << type << " " << mode;
        }
    }
}

TEST(Handles, theFirstKeyIsToldByItsIdBeforeTheLast) {
    OpenKeyList list;
    list.setTangentLength(1);
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, 0);
    for (kvControlPoint& cp : list.getCPs())
        cp.setId(7);
    list.selectAllCPs();
    list.computeTangents(kvControlPoint::Aimed);
    // All count as the first: their incoming handles are horizontal. The last key has no next one,
    // which a first key needs, and keeps its handles.
    expectHandles(keyAt(list, 1), {8, 0}, {12, 0});
    State::keys(list)[2].setInTangent({1, 1});
    list.computeTangents();
    EXPECT_EQ(keyAt(list, 2).getInTangent().x, 1.0);
}

TEST(Handles, aKeyOutsideTheListThatLinksIntoItIsAMiddleKey) {
    OpenKeyList list;
    list.setTangentLength(1);
    for (const double x : {0.0, 10.0})
        list.insertCP(x, 0);
    kvControlPoint outside(5, 5, kvControlPoint::Auto);
    outside.setId(-1);
    Links::next(outside) = &State::keys(list)[1];
    list.computeTangents(outside);
    EXPECT_NEAR(outside.getOutTangent().x, 5 + std::sqrt(2.0), 1e-12);
    EXPECT_NEAR(outside.getOutTangent().y, 5 - std::sqrt(2.0), 1e-12);
}

TEST(Handles, equalFramesFollowTheRulesOfIeee) {
    const Point above{0, 5};
    const auto up =
        placeHandles(kvControlPoint::Auto, 1, {KeyRole::First, {0, 0}, nullptr, &above});
    EXPECT_EQ(up->out.x, 2.0 * std::cos(std::atan(HUGE_VAL)));
    EXPECT_EQ(up->out.y, 2.0);
    const Point same{0, 0};
    const auto undefined =
        placeHandles(kvControlPoint::Auto, 1, {KeyRole::First, {0, 0}, nullptr, &same});
    EXPECT_TRUE(std::isnan(undefined->out.x));
    const auto half =
        placeHandles(kvControlPoint::Auto, 2, {KeyRole::First, {0, 0}, nullptr, &above});
    EXPECT_EQ(half->out.x, 0.0);
    EXPECT_EQ(half->out.y, std::tan(std::atan(HUGE_VAL)) * 0.0);
}

TEST(Handles, aNanFrameEndsOnTheSideThatItsComparisonLeaves) {
    const Point nan{kNaN, 0};
    const Point previous{-4, 0};
    const auto next =
        placeHandles(kvControlPoint::Flat, 2, {KeyRole::Middle, {0, 0}, &previous, &nan});
    EXPECT_EQ(next->in.x, -2.0) << "not less than: half the way to the previous key";
    EXPECT_TRUE(std::isnan(next->out.x));
    const Point after{4, 0};
    const auto before =
        placeHandles(kvControlPoint::Flat, 2, {KeyRole::Middle, {0, 0}, &nan, &after});
    EXPECT_TRUE(std::isnan(before->in.x));
    EXPECT_EQ(before->out.x, 2.0) << "not greater than: half the way to the next key";
}

TEST(Handles, recomputingOneKeyLeavesTheOthers) {
    OpenKeyList list = threeKeys(kvControlPoint::Flat, 1);
    list.setTangentLength(2);
    list.sortCPs();
    list.computeTangents(State::keys(list)[1]);
    expectHandles(keyAt(list, 0), {-2, 0}, {2, 0});
    expectHandles(keyAt(list, 1), {5, 10}, {15, 10});
    expectHandles(keyAt(list, 2), {18, 0}, {22, 0});
}

TEST(Handles, settingTheLengthRecomputesNothing) {
    OpenKeyList list = threeKeys(kvControlPoint::Flat, 1);
    list.setTangentLength(3);
    expectHandles(keyAt(list, 1), {8, 10}, {12, 10});
}

TEST(Handles, theTypeIsGivenToSelectedKeysOnly) {
    OpenKeyList list = threeKeys(kvControlPoint::Flat, 1);
    list.sortCPs();
    list.deselectAllCPs();
    list.selectCP(State::keys(list)[1]);
    list.computeTangents(kvControlPoint::Collapsed);
    EXPECT_EQ(keyAt(list, 0).getTangentType(), 4);
    expectHandles(keyAt(list, 0), {-2, 0}, {2, 0});
    EXPECT_EQ(keyAt(list, 1).getTangentType(), 0);
    expectHandles(keyAt(list, 1), {10, 10}, {10, 10});
}

TEST(Handles, theExtendedFormRecomputesTheNeighboursToo) {
    OpenKeyList list;
    list.setTangentLength(1);
    for (const double x : {0.0, 10.0, 20.0, 30.0})
        list.insertCP(x, 0);
    for (kvControlPoint& cp : State::keys(list))
        cp.setInTangent({-77, -77});
    list.computeTangentsExtended(State::keys(list)[2]);
    std::vector<bool> untouched;
    for (const kvControlPoint& cp : keysOf(list))
        untouched.push_back(cp.getInTangent().x == -77);
    EXPECT_EQ(untouched, (std::vector<bool>{true, false, false, false}));
    list.computeTangentsExtended(State::keys(list)[0]);
    EXPECT_NE(keyAt(list, 0).getInTangent().x, -77);
}

TEST(ConstantInterval, theInnerHandlesOfASelectedRunCollapse) {
    OpenKeyList list;
    list.setTangentLength(1);
    for (const double x : {0.0, 10.0, 20.0, 30.0})
        list.insertCP(x, 0);
    list.selectAllCPs();
    list.computeTangents(kvControlPoint::Flat);
    list.deselectCP(State::keys(list)[0]);
    list.deselectCP(State::keys(list)[3]);
    list.constantCurveInterval();
    expectHandles(keyAt(list, 0), {-2, 0}, {2, 0});
    expectHandles(keyAt(list, 1), {8, 0}, {10, 0});
    expectHandles(keyAt(list, 2), {20, 0}, {22, 0});
    expectHandles(keyAt(list, 3), {28, 0}, {32, 0});
    EXPECT_EQ(keyAt(list, 0).getTangentType(), 4);
    EXPECT_EQ(keyAt(list, 1).getTangentType(), 1);
    EXPECT_EQ(keyAt(list, 2).getTangentType(), 1);
    EXPECT_EQ(keyAt(list, 3).getTangentType(), 4);
}

TEST(ConstantInterval, aSelectedKeyBetweenUnselectedOnesStays) {
    OpenKeyList list;
    list.setTangentLength(1);
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, 0);
    list.selectAllCPs();
    list.computeTangents(kvControlPoint::Flat);
    list.deselectCP(State::keys(list)[0]);
    list.deselectCP(State::keys(list)[2]);
    list.constantCurveInterval();
    EXPECT_EQ(keyAt(list, 1).getTangentType(), 4);
    expectHandles(keyAt(list, 1), {8, 0}, {12, 0});
}
