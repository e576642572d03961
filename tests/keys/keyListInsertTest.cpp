// Inserting keys: order, replacing, snapping, ids, and which handles are recomputed.
#include <kvControlPointManager.h>

#include "keys/draws.h"
#include "keys/keyListFixture.h"
#include "manager/identifiers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <vector>

using namespace kv::test;

TEST(KeyListInsert, aNewListIsEmptyWithItsInitialValues) {
    OpenKeyList list;
    EXPECT_TRUE(list.getCPs().empty());
    EXPECT_EQ(list.getHitType(), 0);
    EXPECT_EQ(list.getHitCP(), nullptr);
    EXPECT_EQ(State::current(list), nullptr);
    EXPECT_EQ(State::count(list), 1);
    EXPECT_EQ(State::length(list), 2);
}

TEST(KeyListInsert, keysComeInTheOrderOfTheirFrames) {
    OpenKeyList list;
    for (const double x : {5.0, 1.0, 9.0, -3.0, 7.0})
        list.insertCP(x, 2 * x);
    EXPECT_EQ(framesOf(list), (std::vector<double>{-3, 1, 5, 7, 9}));
    expectLinked(list);
}

TEST(KeyListInsert, aKeyAtTheSameFrameIsReplaced) {
    OpenKeyList list;
    list.insertCP(1.0, 10.0);
    list.insertCP(2.0, 20.0);
    const int oldId = keyAt(list, 1).getId();
    list.insertCP(2.0, 21.0);
    EXPECT_EQ(framesOf(list), (std::vector<double>{1, 2}));
    EXPECT_EQ(keyAt(list, 1).getPoint().y, 21.0);
    EXPECT_NE(keyAt(list, 1).getId(), oldId);
    expectLinked(list);
}

TEST(KeyListInsert, aFrameThatDiffersByATrillionthIsAnotherKey) {
    OpenKeyList list;
    list.insertCP(1.0, 10.0);
    list.insertCP(1.0 + 1e-12, 20.0);
    EXPECT_EQ(list.getCPs().size(), 2U);
}

TEST(KeyListInsert, negativeZeroIsTheFrameZero) {
    OpenKeyList list;
    list.insertCP(0.0, 10.0);
    list.insertCP(-0.0, 20.0);
    ASSERT_EQ(list.getCPs().size(), 1U);
    EXPECT_EQ(keyAt(list, 0).getPoint().y, 20.0);
}

TEST(KeyListInsert, aNanFrameReplacesNothingAndGoesToTheEnd) {
    OpenKeyList list;
    list.insertCP(kNaN, 1.0);
    list.insertCP(3.0, 2.0);
    list.insertCP(kNaN, 3.0);
    list.insertCP(1.0, 4.0);
    ASSERT_EQ(list.getCPs().size(), 4U);
    EXPECT_EQ(valuesOf(list), (std::vector<double>{4, 2, 1, 3}));
    expectLinked(list);
}

TEST(KeyListInsert, snappingRoundsHalvesAwayFromZero) {
    OpenKeyList list;
    list.insertCP(2.5, -2.5, true, true);
    EXPECT_EQ(keyAt(list, 0).getPoint().x, 3.0);
    EXPECT_EQ(keyAt(list, 0).getPoint().y, -3.0);
    EXPECT_EQ(State::toInt(-0.5), -1);
    EXPECT_EQ(State::toInt(0.49), 0);
}

TEST(KeyListInsert, eachCoordinateSnapsOnItsOwn) {
    OpenKeyList list;
    list.insertCP(2.5, 1.5, true, false);
    list.insertCP(7.25, 1.5, false, true);
    EXPECT_EQ(framesOf(list), (std::vector<double>{3, 7.25}));
    EXPECT_EQ(valuesOf(list), (std::vector<double>{1.5, 2}));
}

TEST(KeyListInsert, aFrameThatDoesNotFitIntSnapsToTheSmallestInt) {
    OpenKeyList list;
    list.insertCP(1e300, kNaN, true, true);
    EXPECT_EQ(keyAt(list, 0).getPoint().x, static_cast<double>(INT_MIN));
    EXPECT_EQ(keyAt(list, 0).getPoint().y, static_cast<double>(INT_MIN));
}

TEST(KeyListInsert, aSingleSnappedKeyKeepsItsUnsnappedHandles) {
    OpenKeyList list;
    list.insertCP(2.5, -2.5, true, true);
    EXPECT_EQ(keyAt(list, 0).getInTangent().x, 2.5);
    EXPECT_EQ(keyAt(list, 0).getOutTangent().y, -2.5);
}

TEST(KeyListInsert, theReplacedKeyIsTheOneAtTheUnsnappedFrame) {
    OpenKeyList list;
    list.insertCP(2.5, 1.0);
    list.insertCP(3.0, 2.0);
    list.insertCP(2.5, 3.0, true, false);
    // The key at 2.5 is gone; the one at 3, where the new key lands, is not, and stays in front.
    EXPECT_EQ(framesOf(list), (std::vector<double>{3, 3}));
    EXPECT_EQ(valuesOf(list), (std::vector<double>{2, 3}));
    expectLinked(list);
}

TEST(KeyListInsert, aReplacedKeyMaySnapPastItsNeighbours) {
    OpenKeyList list;
    for (const double x : {0.0, 0.6, 0.7, 0.9, 2.0})
        list.insertCP(x, x);
    list.insertCP(0.6, 50.0, true, false);
    EXPECT_EQ(framesOf(list), (std::vector<double>{0, 0.7, 0.9, 1, 2}));
    expectLinked(list);
    list.insertCP(1.0, 50.0, false, false);
    list.insertCP(0.9, 60.0, false, false);
    for (const double x : {-0.4, -0.3, -0.2})
        list.insertCP(x, x);
    list.insertCP(0.7, 70.0);
    list.insertCP(0.7, 71.0, true, false);
    EXPECT_EQ(framesOf(list), (std::vector<double>{-0.4, -0.3, -0.2, 0, 0.9, 1, 1, 2}));
    list.insertCP(-0.2, 72.0, true, false);
    EXPECT_EQ(framesOf(list), (std::vector<double>{-0.4, -0.3, 0, 0, 0.9, 1, 1, 2}));
    EXPECT_EQ(keyAt(list, 3).getPoint().y, 72.0);
    expectLinked(list);
}

TEST(KeyListInsert, aReplacedKeyMaySnapTowardsTheFront) {
    OpenKeyList list;
    for (const double x : {0.0, 4.75, 5.25, 10.0})
        list.insertCP(x, x);
    // Stays in its place, then goes past the key before it, then in front of all.
    list.insertCP(5.25, 1.0, true, false);
    EXPECT_EQ(framesOf(list), (std::vector<double>{0, 4.75, 5, 10}));
    EXPECT_EQ(valuesOf(list), (std::vector<double>{0, 4.75, 1, 10}));
    list.insertCP(5.125, 2.0);
    list.insertCP(5.125, 3.0, true, false);
    EXPECT_EQ(framesOf(list), (std::vector<double>{0, 4.75, 5, 5, 10}));
    EXPECT_EQ(valuesOf(list), (std::vector<double>{0, 4.75, 1, 3, 10}));
    for (const double x : {10.375, 10.25, 10.125})
        list.insertCP(x, x);
    list.deleteExistingKey(10.0);
    list.insertCP(10.375, 4.0, true, false);
    EXPECT_EQ(framesOf(list), (std::vector<double>{0, 4.75, 5, 5, 10, 10.125, 10.25}));
    EXPECT_EQ(keyAt(list, 4).getPoint().y, 4.0);
    list.insertCP(-0.25, 5.0);
    list.insertCP(0.25, 6.0);
    list.insertCP(0.25, 7.0, true, false);
    EXPECT_EQ(framesOf(list), (std::vector<double>{-0.25, 0, 0, 4.75, 5, 5, 10, 10.125, 10.25}));
    EXPECT_EQ(keyAt(list, 2).getPoint().y, 7.0) << "behind the key that was at its frame";
    expectLinked(list);
}

TEST(KeyListInsert, theNewKeyIsTheCurrentOne) {
    OpenKeyList list;
    list.insertCP(5.0, 1.0);
    EXPECT_EQ(State::current(list), &keyAt(list, 0));
    list.insertCP(9.0, 2.0);
    EXPECT_EQ(State::current(list), &keyAt(list, 1));
    list.insertCP(1.0, 3.0);
    EXPECT_EQ(State::current(list), &keyAt(list, 0));
}

TEST(KeyListInsert, aNewKeyIsAutoWithAFreshId) {
    OpenKeyList list;
    list.insertCP(5.0, 1.0);
    EXPECT_EQ(keyAt(list, 0).getTangentType(), 5);
    EXPECT_EQ(static_cast<unsigned>(keyAt(list, 0).getId()),
              kv::detail::identifierStore().issued().back());
}

TEST(KeyListInsert, everyInsertionDrawsExactlyOneId) {
    OpenKeyList list;
    EXPECT_EQ(drawsOf([&] { list.insertCP(5.0, 1.0); }), 1U);
    EXPECT_EQ(drawsOf([&] { list.insertCP(9.0, 1.0, true, true); }), 1U) << "behind the others";
    EXPECT_EQ(drawsOf([&] { list.insertCP(1.0, 1.0); }), 1U) << "in front of the others";
    EXPECT_EQ(drawsOf([&] { list.insertCP(5.0, 2.0); }), 1U) << "in place of another";
    list.getCPs()[0].setPoint({7.0, 0.0});
    EXPECT_EQ(drawsOf([&] { list.insertCP(6.0, 1.0); }), 1U) << "into a list to be sorted";
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(drawsOf([&] { list.insertCP(20.0 + i, 1.0); }), 1U) << "growing";
}

TEST(KeyListInsert, onlyThePreviousTheNewAndTheNextKeyAreRecomputed) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0, 30.0, 40.0})
        list.insertCP(x, x);
    for (kvControlPoint& cp : State::keys(list)) {
        cp.setInTangent({-77, -77});
        cp.setOutTangent({-77, -77});
    }
    list.insertCP(25.0, 0.0);
    std::vector<bool> untouched;
    for (const kvControlPoint& cp : keysOf(list))
        untouched.push_back(cp.getInTangent().x == -77.0);
    EXPECT_EQ(untouched, (std::vector<bool>{true, true, false, false, false, true}));
}

TEST(KeyListInsert, anImportedKeyTakesTheCounterAsItsId) {
    OpenKeyList list;
    kvControlPoint cp(5.0, 1.0, 6);
    list.insertCP(cp);
    EXPECT_EQ(keyAt(list, 0).getId(), 1);
    EXPECT_EQ(cp.getId(), 1) << "the caller's key is numbered as well";
    list.insertCP(7.0, 1.0);
    list.insertCP(6.0, 1.0);
    kvControlPoint last(9.0, 1.0, 6);
    list.insertCP(last);
    EXPECT_EQ(last.getId(), 4);
    EXPECT_EQ(State::count(list), 5);
}

TEST(KeyListInsert, anImportedKeyKeepsAllItsFields) {
    OpenKeyList list;
    kvControlPoint cp(5.25, 1.0, 6);
    cp.setInTangent({1, 2});
    cp.setOutTangent({3, 4});
    cp.setOldPoint({5, 6});
    cp.setSelected(true);
    cp.setMinX(7);
    list.insertCP(cp);
    const kvControlPoint& kept = keyAt(list, 0);
    EXPECT_EQ(kept.getPoint().x, 5.25);
    EXPECT_EQ(kept.getInTangent().y, 2.0);
    EXPECT_EQ(kept.getOutTangent().x, 3.0);
    EXPECT_EQ(kept.getOldPoint().y, 6.0);
    EXPECT_TRUE(kept.isSelected());
    EXPECT_EQ(kept.getMinX(), 7.0);
    EXPECT_EQ(kept.getTangentType(), 6);
}

TEST(KeyListInsert, anImportedKeyReplacesTheKeyAtItsFrame) {
    OpenKeyList list;
    list.insertCP(5.0, 1.0);
    kvControlPoint cp(5.0, 2.0, 6);
    list.insertCP(cp);
    ASSERT_EQ(list.getCPs().size(), 1U);
    EXPECT_EQ(keyAt(list, 0).getPoint().y, 2.0);
    EXPECT_EQ(keyAt(list, 0).getId(), 2);
}

TEST(KeyListInsert, anImportedKeyDrawsNoId) {
    OpenKeyList list;
    kvControlPoint cp(5.0, 1.0, 6);
    EXPECT_EQ(drawsOf([&] { list.insertCP(cp); }), 0U);
}

TEST(KeyListInsert, aKeyOfTheListItselfCanBeInsertedAgain) {
    OpenKeyList list;
    list.insertCP(5.0, 1.0);
    list.insertCP(6.0, 2.0);
    list.insertCP(State::keys(list)[0]);
    EXPECT_EQ(framesOf(list), (std::vector<double>{5, 6}));
    EXPECT_EQ(valuesOf(list), (std::vector<double>{1, 2}));
    EXPECT_EQ(keyAt(list, 0).getId(), 3);
    expectLinked(list);
}

TEST(KeyListInsert, theFirstOfSeveralKeysWithTheIdBecomesTheCurrentOneAndIsRecomputed) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0, 30.0})
        list.insertCP(x, x);
    list.getCPs()[0].setId(State::count(list));
    kvControlPoint cp(40.0, 7.0, 4);
    cp.setInTangent({-1, -1});
    list.insertCP(cp);
    EXPECT_EQ(State::current(list), &keyAt(list, 0));
    EXPECT_EQ(keyAt(list, 4).getInTangent().x, -1.0) << "the new key itself is not found by its id";
    EXPECT_EQ(State::count(list), 6);
}

TEST(KeyListInsert, duplicatesAreFoundInLongListsToo) {
    // Long enough for the list to look ids up instead of walking.
    OpenKeyList list;
    for (int i = 0; i < 300; ++i)
        list.insertCP(i, i);
    list.getCPs()[17].setId(250000000);
    list.sortCPs();
    for (int i = 0; i < 40; ++i) {
        State::count(list) = i % 3 == 0 ? 250000000 : 7000000 - i;
        kvControlPoint cp(1000.0 + i, 0.0, 5);
        list.insertCP(cp);
        const bool duplicate = i % 3 == 0;
        EXPECT_EQ(State::current(list), duplicate ? &keyAt(list, 17) : &State::keys(list).back());
    }
    EXPECT_TRUE(State::hasIdIndex(list));
}

TEST(KeyListInsert, aListThatIsNotSortedIsSortedByAnInsertion) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0, 30.0})
        list.insertCP(x, x);
    list.getCPs()[0].setPoint({25.0, 0.0});
    list.insertCP(15.0, 1.0);
    EXPECT_EQ(framesOf(list), (std::vector<double>{10, 15, 20, 25, 30}));
    expectLinked(list);
}

TEST(KeyListInsert, aHundredThousandAscendingKeysKeepOrderAndLinks) {
    OpenKeyList list;
    for (int i = 0; i < 100000; ++i)
        list.insertCP(i, i % 7);
    ASSERT_EQ(list.getCPs().size(), 100000U);
    expectLinked(list);
    EXPECT_TRUE(std::is_sorted(keysOf(list).begin(), keysOf(list).end()));
    EXPECT_LE(list.getCPs().capacity(), 125001U) << "spare room costs as much as keys do";
}
