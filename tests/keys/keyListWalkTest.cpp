// How many keys an edit of a long list goes through. The limits are a few keys, or a few times the
// number of keys, where a step that has become quadratic would need thousands of times as many.
#include "keys/walkCount.h"

#include "keys/keyImport.h"
#include "keys/keyListFixture.h"

#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <gtest/gtest.h>

#include <cstdint>

using namespace kv::test;

namespace {

constexpr std::size_t kKeys = 10000;
constexpr std::uint64_t kAllKeys = kKeys;

template <class Work>
std::uint64_t walkedBy(Work work) {
    const std::uint64_t before = kv::detail::walkedKeys;
    work();
    return kv::detail::walkedKeys - before;
}

class LongList : public ::testing::Test {
  protected:
    LongList() : curve("x") {
        fill(curve);
        kvAnimationManager2::_the.setSelectedCurves({&curve});
    }
    ~LongList() override { kvAnimationManager2::_the.setSelectedCurves({}); }

    static void fill(kvAnimationCurve& list) {
        for (std::size_t i = 0; i < kKeys; ++i)
            list.insertCP(static_cast<double>(i), static_cast<double>(i % 17));
    }

    kvControlPoint* key(std::size_t place) { return &State::keys(curve)[place]; }

    void selectEverySecond() {
        for (std::size_t i = 0; i < kKeys; i += 2)
            curve.selectCP(*key(i));
    }

    kvAnimationCurve curve;
};

} // namespace

TEST_F(LongList, countsWhatAWalkGoesThrough) {
    curve.getCPs();
    EXPECT_GE(walkedBy([&] { curve.sortCPs(); }), kAllKeys);
    EXPECT_EQ(walkedBy([&] { curve.sortCPs(); }), 0U);
}

TEST_F(LongList, ascendingKeysAreInsertedInLinearTime) {
    kvAnimationCurve other("x");
    EXPECT_LE(walkedBy([&] { fill(other); }), 12 * kAllKeys);
}

TEST_F(LongList, ascendingKeysAreImportedInLinearTime) {
    kvAnimationCurve other("x");
    const auto import = [&] {
        kv::detail::KeyImport keys(other, kKeys);
        for (std::size_t i = 0; i < kKeys; ++i) {
            const kvControlPoint::Point p{static_cast<double>(i), 1.0};
            keys.add(p, p, p, kvControlPoint::Auto);
        }
    };
    // Once for the order, once for the links, once for the handles.
    EXPECT_LE(walkedBy(import), 3 * kAllKeys);
}

// The keys that move, and one walk to see whether another key has the id that was drawn.
TEST_F(LongList, aKeyInsertedBetweenOthersMovesOnlyTheKeysBehindIt) {
    curve.insertCP(0.25, 1.0); // so that the next one finds room
    const double frame = static_cast<double>(kKeys - 10) + 0.5;
    EXPECT_LE(walkedBy([&] { curve.insertCP(frame, 1.0); }), kAllKeys + 20);
}

TEST_F(LongList, aReplacedKeyMovesNoOther) {
    EXPECT_LE(walkedBy([&] { curve.insertCP(5000.0, 1.0); }), kAllKeys + 10);
}

TEST_F(LongList, movingAKeyBetweenItsNeighboursTouchesNoOthers) {
    const auto moves = [&] {
        for (int i = 0; i < 100; ++i)
            curve.moveCPTo(key(5000), 5000.0F + static_cast<float>(i) * 0.001F, 1.0F);
    };
    EXPECT_LE(walkedBy(moves), 100 * 3U);
}

TEST_F(LongList, movingAKeyPastOthersTouchesOnlyThose) {
    EXPECT_LE(walkedBy([&] { curve.moveCPTo(key(5000), 5020.5F, 1.0F); }), 40U);
}

TEST_F(LongList, changingTheValueOfManyKeysIsLinear) {
    selectEverySecond();
    const auto change = [] { kvAnimationManager2::_the.changeValueOfSelectedCPs(4.0F); };
    EXPECT_LE(walkedBy(change), 2 * kAllKeys);
}

TEST_F(LongList, changingTheFrameOfManyKeysIsLinear) {
    selectEverySecond();
    const auto change = [] { kvAnimationManager2::_the.changeFrameOfSelectedCPs(5000.0F); };
    EXPECT_LE(walkedBy(change), 5 * kAllKeys);
}

TEST_F(LongList, removingManyKeysIsLinear) {
    selectEverySecond();
    EXPECT_LE(walkedBy([] { kvAnimationManager2::_the.deleteSelectedCPs(); }), 4 * kAllKeys);
    EXPECT_EQ(keysOf(curve).size(), kKeys / 2);
}

TEST_F(LongList, retangentingManyKeysIsLinear) {
    selectEverySecond();
    const auto retangent = [] {
        kvAnimationManager2::_the.computeTangentsOfSelectedCPs(kvControlPoint::Smooth);
    };
    EXPECT_LE(walkedBy(retangent), kAllKeys);
    EXPECT_LE(walkedBy([] { kvAnimationManager2::_the.computeTangents(); }), kAllKeys);
}

TEST_F(LongList, shapingTheWholeCurveIsLinear) {
    EXPECT_LE(walkedBy([&] { curve.stretchRight(5000.0F); }), 4 * kAllKeys);
    EXPECT_LE(walkedBy([&] { curve.flip(); }), 5 * kAllKeys);
}

TEST_F(LongList, aCopyIsLinkedOnceAndThenKnowsItsOrder) {
    kvAnimationCurve copy(curve);
    EXPECT_LE(walkedBy([&] { copy.sortCPs(); }), 2 * kAllKeys);
    EXPECT_EQ(walkedBy([&] { copy.sortCPs(); }), 0U);
    EXPECT_LE(walkedBy([&] { copy.moveCPTo(&State::keys(copy)[7], 7.25F, 1.0F); }), 3U);
}

// Hosts draw curves while others play.
TEST_F(LongList, askingOneListForItsKeysLeavesTheOthersAlone) {
    kvAnimationCurve other("x");
    other.insertCP(1.0, 2.0);
    other.insertCP(2.0, 2.0);
    other.getCPs();
    EXPECT_FALSE(State::isKnownSorted(other));
    EXPECT_TRUE(State::isKnownLinked(curve));
    EXPECT_LE(walkedBy([&] { curve.moveCPTo(key(5000), 5000.25F, 1.0F); }), 3U);
}
