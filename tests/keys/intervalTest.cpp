// The two look-ups by frame: the interval that an evaluation needs, and the neighbours of a drag.
#include <kvControlPointManager.h>

#include "keys/keyListFixture.h"
#include "keys/keyListReader.h"
#include "keys/museum.h"

#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <vector>

using namespace kv::test;

namespace {

using Pair = std::vector<kvControlPoint*>;

// The interval by the plain walk.
Pair walkedInterval(std::vector<kvControlPoint>& keys, double frame) {
    if (keys.size() < 2) return {};
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (keys[i].getPoint().x > frame) return {i == 0 ? nullptr : &keys[i - 1], &keys[i]};
    return {&keys.back(), nullptr};
}

// The neighbours by the plain walk.
Pair walkedNeighbours(std::vector<kvControlPoint>& keys, double x) {
    if (keys.size() < 2) return {};
    for (std::size_t i = 0; i < keys.size(); ++i) {
        kvControlPoint* const before = i == 0 ? nullptr : &keys[i - 1];
        if (keys[i].getPoint().x > x) return {before, &keys[i]};
        if (keys[i].getPoint().x == x)
            return {before, i + 1 == keys.size() ? nullptr : &keys[i + 1]};
    }
    return {&keys.back(), nullptr};
}

} // namespace

TEST(Interval, fewerThanTwoKeysHaveNone) {
    OpenKeyList list;
    EXPECT_TRUE(list.getBezierIntervalCPs(0.0F).empty());
    EXPECT_TRUE(list.getPrevAndNextCP(0.0).empty());
    list.insertCP(0.0, 0.0);
    EXPECT_TRUE(list.getBezierIntervalCPs(0.0F).empty());
    EXPECT_TRUE(list.getPrevAndNextCP(0.0).empty());
}

TEST(Interval, aFrameOnAKeyStartsTheIntervalThere) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, x);
    std::vector<kvControlPoint>& keys = State::keys(list);
    EXPECT_EQ(list.getBezierIntervalCPs(-0.5F), (Pair{nullptr, &keys[0]}));
    EXPECT_EQ(list.getBezierIntervalCPs(0.0F), (Pair{&keys[0], &keys[1]}));
    EXPECT_EQ(list.getBezierIntervalCPs(9.5F), (Pair{&keys[0], &keys[1]}));
    EXPECT_EQ(list.getBezierIntervalCPs(10.0F), (Pair{&keys[1], &keys[2]}));
    EXPECT_EQ(list.getBezierIntervalCPs(20.0F), (Pair{&keys[2], nullptr}));
    EXPECT_EQ(list.getBezierIntervalCPs(20.5F), (Pair{&keys[2], nullptr}));
}

TEST(Interval, framesAreComparedInDoublePrecision) {
    OpenKeyList list;
    // Rounded to single precision, this key would lie at the frame asked for.
    const double justAfter = static_cast<double>(0.1F) + 1e-12;
    list.insertCP(justAfter, 0.0);
    list.insertCP(5.0, 0.0);
    EXPECT_EQ(list.getBezierIntervalCPs(0.1F), (Pair{nullptr, &State::keys(list)[0]}));
}

TEST(Interval, theNeighboursOfAPositionLeaveOutAKeyThere) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, x);
    std::vector<kvControlPoint>& keys = State::keys(list);
    EXPECT_EQ(list.getPrevAndNextCP(-1.0), (Pair{nullptr, &keys[0]}));
    EXPECT_EQ(list.getPrevAndNextCP(0.0), (Pair{nullptr, &keys[1]}));
    EXPECT_EQ(list.getPrevAndNextCP(5.0), (Pair{&keys[0], &keys[1]}));
    EXPECT_EQ(list.getPrevAndNextCP(10.0), (Pair{&keys[0], &keys[2]}));
    EXPECT_EQ(list.getPrevAndNextCP(20.0), (Pair{&keys[1], nullptr}));
    EXPECT_EQ(list.getPrevAndNextCP(21.0), (Pair{&keys[2], nullptr}));
}

TEST(Interval, searchingEqualsWalkingOnEveryPieceOfTheMuseum) {
    for (const MuseumCurve& piece : museum()) {
        OpenKeyList list;
        hang(piece, list);
        for (const float frame : interestingFrames(piece)) {
            std::vector<kvControlPoint>& keys = State::keys(list);
            const double x = static_cast<double>(frame);
            ASSERT_TRUE(State::isKnownSorted(list));
            EXPECT_EQ(list.getBezierIntervalCPs(frame), walkedInterval(keys, x))
                << piece.name << " at " << frame;
            EXPECT_EQ(list.getPrevAndNextCP(x), walkedNeighbours(keys, x))
                << piece.name << " at " << frame;
        }
    }
}

TEST(Interval, anUnsortedListIsWalked) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0, 30.0})
        list.insertCP(x, x);
    list.getCPs()[1].setPoint({100.0, 0.0});
    std::vector<kvControlPoint>& keys = State::keys(list);
    for (const double x : {-5.0, 0.0, 5.0, 10.0, 20.0, 25.0, 30.0, 100.0, 200.0, kNaN}) {
        EXPECT_EQ(list.getBezierIntervalCPs(static_cast<float>(x)), walkedInterval(keys, x)) << x;
        EXPECT_EQ(list.getPrevAndNextCP(x), walkedNeighbours(keys, x)) << x;
    }
    EXPECT_EQ(list.getBezierIntervalCPs(25.0F), (Pair{&keys[0], &keys[1]}));
}

namespace {

// The position of the first greater frame by the plain walk.
std::size_t walkedAfter(const kvControlPointManager& list, double frame) {
    std::size_t i = 0;
    while (i < keysOf(list).size() && !(keyAt(list, i).getPoint().x > frame))
        ++i;
    return i;
}

// Every hint, right or wrong, gives what the walk gives.
void expectTheWalk(const kvControlPointManager& list, double frame, std::mt19937& random) {
    const std::size_t walked = walkedAfter(list, frame);
    const std::size_t count = keysOf(list).size();
    for (const std::size_t hint :
         {walked, walked - 1, walked + 1, std::size_t{0}, count, count + 1,
          std::numeric_limits<std::size_t>::max(), std::size_t{random() % (count + 1)}})
        ASSERT_EQ(kv::detail::KeyListReader::firstAfter(list, frame, hint), walked)
            << "frame " << frame << ", hint " << hint << ", " << count << " keys";
}

} // namespace

TEST(Interval, aRememberedPlaceEqualsWalkingOnRandomEdits) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> anywhere(-50.0, 50.0);
    OpenKeyList list;
    list.insertCP(0.0, 0.0);
    list.insertCP(1.0, 0.0);
    int known = 0;
    for (int round = 0; round < 600; ++round) {
        // Uneven: most keys crowd in the middle.
        const double x = anywhere(random);
        list.insertCP(round % 3 == 0 ? std::round(x) : x * x * x / 2500.0, 0.0);
        if (round % 5 == 2) list.deleteExistingKey(list.getStartFrame());
        if (round % 11 == 5) list.getCPs()[list.getCPs().size() / 2].setPoint({x, 1.0});
        if (round % 17 == 9) list.getCPs().push_back(kvControlPoint(x, 0.0, 0));
        if (round == 300) list.insertCP(-std::numeric_limits<double>::infinity(), 0.0);
        if (round == 350) list.insertCP(std::numeric_limits<double>::infinity(), 0.0);
        if (round == 400) list.insertCP(kNaN, 0.0);
        known += State::isKnownSorted(list) ? 1 : 0;
        for (int i = 0; i < 5; ++i) {
            expectTheWalk(list, anywhere(random), random);
            expectTheWalk(list, keyAt(list, random() % keysOf(list).size()).getPoint().x, random);
        }
        expectTheWalk(list, kNaN, random);
        expectTheWalk(list, std::numeric_limits<double>::infinity(), random);
    }
    EXPECT_GT(known, 100);
    EXPECT_LT(known, 600);
}

// A NaN is not greater than anything, so a search that looks at the end first finds nothing.
TEST(Interval, aListWhoseLastFramesBecomeNaNsIsWalked) {
    kvAnimationManager2& manager = kvAnimationManager2::_the;
    const auto select = [](kvAnimationCurve& curve, std::size_t first) {
        for (std::size_t i = first; i < keysOf(curve).size(); ++i)
            State::keys(curve)[i].setSelected(true);
    };
    const std::function<void(kvAnimationCurve&)> edits[] = {
        [](kvAnimationCurve& curve) { curve.insertCP(kNaN, 1.0); },
        [](kvAnimationCurve& curve) {
            curve.moveCPTo(&State::keys(curve)[3], std::numeric_limits<float>::quiet_NaN(), 1.0F);
        },
        [](kvAnimationCurve& curve) {
            curve.snap2Integer(State::keys(curve).back(), kNaN, 1.0, false, false);
        },
        [&](kvAnimationCurve& curve) { // all of the last half at once
            select(curve, 10);
            manager.setSelectedCurves({&curve});
            manager.changeFrameOfSelectedCPs(std::numeric_limits<float>::quiet_NaN());
            manager.setSelectedCurves({});
        }};
    std::mt19937 random(13);
    for (const auto& edit : edits) {
        kvAnimationCurve curve;
        for (int i = 0; i < 20; ++i)
            curve.insertCP(10.0 * i, 0.0);
        edit(curve);
        ASSERT_TRUE(std::isnan(keysOf(curve).back().getPoint().x));
        ASSERT_TRUE(State::isKnownSorted(curve));
        for (const double frame : {-5.0, 0.0, 5.0, 55.0, 95.0, 105.0, 300.0})
            expectTheWalk(curve, frame, random);
    }
}

TEST(Interval, searchingEqualsWalkingAtEveryPace) {
    std::mt19937 random(12);
    for (const double growth : {0.5, 0.9, 1.0, 1.1, 2.0}) {
        OpenKeyList list;
        double step = 1.0;
        double x = 0.0;
        for (int i = 0; i < 300; ++i, step *= growth, x += step)
            list.insertCP(x, 0.0);
        ASSERT_TRUE(State::isKnownSorted(list));
        for (const kvControlPoint& key : keysOf(list))
            for (const double from : {-1e-9, 0.0, 1e-9, 0.3})
                expectTheWalk(list, key.getPoint().x + from, random);
    }
}
