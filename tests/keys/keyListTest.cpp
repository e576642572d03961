// The key list, operation by operation: inserting, deleting, looking up, ranges, the mouse.
#include <kvControlPointManager.h>

#include "keys/keyListFixture.h"
#include "manager/identifiers.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>
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
    const std::size_t before = kv::detail::identifierStore().issued().size();
    list.insertCP(cp);
    EXPECT_EQ(kv::detail::identifierStore().issued().size(), before);
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

TEST(KeyListDelete, deletingByFrameTakesTheFirstExactMatch) {
    OpenKeyList list;
    for (const double x : {1.0, 2.0, 3.0})
        list.insertCP(x, x);
    EXPECT_FALSE(list.deleteExistingKey(2.0 + 1e-12));
    EXPECT_TRUE(list.deleteExistingKey(2.0));
    EXPECT_FALSE(list.deleteExistingKey(2.0));
    EXPECT_EQ(framesOf(list), (std::vector<double>{1, 3}));
}

TEST(KeyListDelete, deletingByFrameFromAnEmptyListOrAtNanFindsNothing) {
    OpenKeyList list;
    EXPECT_FALSE(list.deleteExistingKey(0.0));
    list.insertCP(kNaN, 1.0);
    EXPECT_FALSE(list.deleteExistingKey(kNaN));
}

TEST(KeyListDelete, deletingByFrameNeitherRelinksNorRecomputes) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0, 30.0})
        list.insertCP(x, x * x);
    const kvControlPoint before = keyAt(list, 2);
    list.deleteExistingKey(10.0);
    const kvControlPoint& after = keyAt(list, 1);
    EXPECT_EQ(after.getInTangent().x, before.getInTangent().x);
    EXPECT_EQ(after.getOutTangent().y, before.getOutTangent().y);
    EXPECT_EQ(Links::next(after), Links::next(before));
    EXPECT_EQ(Links::previous(after), Links::previous(before));
    list.computeLinkedList();
    expectLinked(list);
}

TEST(KeyListDelete, aStaleLinkBeyondTheKeysCountsAsNone) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, x);
    list.deleteExistingKey(20.0);
    // The key at 10 still links to the third place, which is gone.
    EXPECT_TRUE(list.checkConstraints(keyAt(list, 1), 15.0F, 12.0F, 900.0F));

    list.sortCPs();
    list.deleteExistingKey(0.0);
    list.insertCP(30.0, 0.0);
    list.deleteExistingKey(10.0);
    // The key at 30 moved to the front. As the first key it needs a next one, and has none.
    kvControlPoint& first = State::keys(list)[0];
    first.setInTangent({-77, -77});
    list.computeTangents(first);
    EXPECT_EQ(first.getInTangent().x, -77.0);
}

TEST(KeyListDelete, deletingAKeyRelinksAndRecomputesItsNeighbours) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0, 30.0, 40.0})
        list.insertCP(x, x);
    for (kvControlPoint& cp : State::keys(list))
        cp.setInTangent({-77, -77});
    list.deleteCP(&State::keys(list)[2]);
    EXPECT_EQ(framesOf(list), (std::vector<double>{0, 10, 30, 40}));
    expectLinked(list);
    std::vector<bool> untouched;
    for (const kvControlPoint& cp : keysOf(list))
        untouched.push_back(cp.getInTangent().x == -77.0);
    EXPECT_EQ(untouched, (std::vector<bool>{true, false, false, true}));
}

TEST(KeyListDelete, theRememberedNeighboursAreKeysNotPlaces) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0, 30.0})
        list.insertCP(x, x);
    // The neighbours of the deleted key are about to be sorted elsewhere.
    list.getCPs()[1].setPoint({100.0, 0.0});
    for (kvControlPoint& cp : State::keys(list))
        cp.setInTangent({-77, -77});
    list.deleteCP(&State::keys(list)[2]);
    EXPECT_EQ(framesOf(list), (std::vector<double>{0, 30, 100}));
    std::vector<bool> untouched;
    for (const kvControlPoint& cp : keysOf(list))
        untouched.push_back(cp.getInTangent().x == -77.0);
    EXPECT_EQ(untouched, (std::vector<bool>{true, false, false}));
}

TEST(KeyListDelete, nullAndUnknownKeysAreIgnored) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0})
        list.insertCP(x, x);
    list.deleteCP(nullptr);
    kvControlPoint stranger(0.0, 0.0, 5);
    stranger.setId(-1);
    list.deleteCP(&stranger);
    EXPECT_EQ(list.getCPs().size(), 2U);
}

TEST(KeyListDelete, theKeyIsFoundByIdFromTheFront) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, x);
    list.getCPs()[0].setId(5);
    list.getCPs()[2].setId(5);
    list.deleteCP(&State::keys(list)[2]);
    EXPECT_EQ(framesOf(list), (std::vector<double>{10, 20}));
}

TEST(KeyListDelete, aKeyThatStaysAloneHasNoNeighbours) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0})
        list.insertCP(x, x);
    list.deleteCP(&State::keys(list)[0]);
    expectLinked(list);
    EXPECT_TRUE(list.checkConstraints(keyAt(list, 0), -100.0F, -100.0F, 0.0F));
    list.deleteCP(&State::keys(list)[0]);
    EXPECT_TRUE(list.getCPs().empty());
}

TEST(KeyListDelete, deletingTheSelectedKeysRecomputesAllThatRemain) {
    OpenKeyList list;
    for (int i = 0; i < 6; ++i)
        list.insertCP(10.0 * i, i);
    for (kvControlPoint& cp : State::keys(list))
        cp.setInTangent({-77, -77});
    for (const std::size_t i : {0U, 1U, 4U})
        State::keys(list)[i].setSelected(true);
    list.deleteAllSelectedCPs();
    EXPECT_EQ(framesOf(list), (std::vector<double>{20, 30, 50}));
    expectLinked(list);
    for (const kvControlPoint& cp : keysOf(list))
        EXPECT_NE(cp.getInTangent().x, -77.0);
}

TEST(KeyListDelete, deletingNoSelectedKeyStillSortsLinksAndRecomputes) {
    OpenKeyList list;
    for (int i = 0; i < 4; ++i)
        list.insertCP(10.0 * i, i);
    list.getCPs()[0].setPoint({25.0, 0.0});
    for (kvControlPoint& cp : State::keys(list))
        cp.setInTangent({-77, -77});
    list.deleteAllSelectedCPs();
    EXPECT_EQ(framesOf(list), (std::vector<double>{10, 20, 25, 30}));
    expectLinked(list);
    for (const kvControlPoint& cp : keysOf(list))
        EXPECT_NE(cp.getInTangent().x, -77.0);
}

TEST(KeyListDelete, allKeysMayBeSelected) {
    OpenKeyList list;
    for (int i = 0; i < 4; ++i)
        list.insertCP(10.0 * i, i);
    list.selectAllCPs();
    list.deleteAllSelectedCPs();
    EXPECT_TRUE(list.getCPs().empty());
    list.deleteAllSelectedCPs();
    list.insertCP(1.0, 1.0);
    EXPECT_EQ(list.getCPs().size(), 1U);
}

TEST(KeyListLookUp, findingByIdSetsTheCurrentKey) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, x);
    list.getCPs()[1].setId(5);
    list.getCPs()[2].setId(5);
    EXPECT_EQ(list.findCP(5), &keyAt(list, 1));
    EXPECT_EQ(State::current(list), &keyAt(list, 1));
}

TEST(KeyListLookUp, aFailedSearchLeavesTheCurrentKey) {
    OpenKeyList list;
    list.insertCP(1.0, 1.0);
    kvControlPoint* const current = State::current(list);
    EXPECT_EQ(list.findCP(-1), nullptr);
    EXPECT_EQ(State::current(list), current);
}

TEST(KeyListLookUp, everyKeyOfALongListIsFoundByItsId) {
    OpenKeyList list;
    for (int i = 0; i < 500; ++i)
        list.insertCP(i, 0.0);
    for (int i = 0; i < 500; i += 5)
        list.getCPs()[static_cast<std::size_t>(i)].setId(400000000 + i / 10);
    list.sortCPs();
    for (int round = 0; round < 2; ++round) {
        for (const kvControlPoint& cp : keysOf(list)) {
            std::size_t first = 0;
            while (keyAt(list, first).getId() != cp.getId())
                ++first;
            EXPECT_EQ(list.findCP(cp.getId()), &keyAt(list, first));
        }
        EXPECT_EQ(list.findCP(400000777), nullptr);
        EXPECT_EQ(list.findCP(-3), nullptr);
        list.deleteCP(&State::keys(list)[77]);
        list.insertCP(1000.0 + round, 0.0);
    }
}

TEST(KeyListLookUp, theProtectedSearchAnswersWithAnIterator) {
    OpenKeyList list;
    list.insertCP(1.0, 1.0);
    EXPECT_EQ(list.findCP(keyAt(list, 0)), State::keys(list).begin());
    kvControlPoint stranger;
    stranger.setId(-1);
    EXPECT_EQ(list.findCP(stranger), State::keys(list).end());
}

TEST(KeyListLookUp, startAndEndAreToldById) {
    OpenKeyList list;
    kvControlPoint stranger;
    EXPECT_FALSE(list.isStartCP(stranger));
    EXPECT_FALSE(list.isEndCP(stranger));
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, x);
    EXPECT_TRUE(list.isStartCP(keyAt(list, 0)));
    EXPECT_FALSE(list.isStartCP(keyAt(list, 1)));
    EXPECT_TRUE(list.isEndCP(keyAt(list, 2)));
    stranger.setId(keyAt(list, 2).getId());
    EXPECT_TRUE(list.isEndCP(stranger));
}

TEST(KeyListLookUp, selectionIsTheFlagOfTheKeyButNotForAnEmptyList) {
    OpenKeyList list;
    kvControlPoint cp;
    list.selectCP(cp);
    EXPECT_TRUE(cp.isSelected());
    EXPECT_FALSE(list.isSelected(cp));
    list.insertCP(1.0, 1.0);
    EXPECT_TRUE(list.isSelected(cp));
    list.deselectCP(cp);
    EXPECT_FALSE(list.isSelected(cp));
}

TEST(KeyListLookUp, theSelectedKeysComeInListOrder) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0, 30.0})
        list.insertCP(x, x);
    EXPECT_TRUE(list.getSelectedCPs().empty());
    list.selectAllCPs();
    EXPECT_EQ(list.getSelectedCPs().size(), 4U);
    list.deselectCP(State::keys(list)[1]);
    EXPECT_EQ(list.getSelectedCPs(),
              (std::vector<kvControlPoint*>{&State::keys(list)[0], &State::keys(list)[2],
                                            &State::keys(list)[3]}));
    list.deselectAllCPs();
    EXPECT_TRUE(list.getSelectedCPs().empty());
}

TEST(KeyListRange, anEmptyListHasTheInvertedRange) {
    const OpenKeyList list;
    EXPECT_EQ(list.getStartFrame(), 99999.0);
    EXPECT_EQ(list.getEndFrame(), -99999.0);
}

TEST(KeyListRange, startAndEndAreTheFirstAndLastElement) {
    OpenKeyList list;
    for (const double x : {3.5, 10.0, 20.25})
        list.insertCP(x, x);
    EXPECT_EQ(list.getStartFrame(), 3.5);
    EXPECT_EQ(list.getEndFrame(), 20.25);
    list.getCPs()[0].setPoint({50.0, 0.0});
    EXPECT_EQ(list.getStartFrame(), 50.0);
}

TEST(KeyListRange, anEmptyListZeroesTheRangeItIsGiven) {
    const OpenKeyList list;
    double maxX = 7.0;
    double maxY = 8.0;
    double minX = 9.0;
    double minY = 10.0;
    list.getMaxMinValues(maxX, maxY, minX, minY);
    EXPECT_EQ(maxX, 0.0);
    EXPECT_EQ(maxY, 0.0);
    EXPECT_EQ(minX, 0.0);
    EXPECT_EQ(minY, 0.0);
}

TEST(KeyListRange, keysWidenTheRangeTheyAreGivenAndHandlesDoNot) {
    OpenKeyList list;
    list.insertCP(-3.0, 40.0);
    list.insertCP(12.0, -7.0);
    State::keys(list)[0].setInTangent({-500, 500});
    double maxX = -9999.0;
    double maxY = 100.0;
    double minX = 9999.0;
    double minY = -1.0;
    list.getMaxMinValues(maxX, maxY, minX, minY);
    EXPECT_EQ(maxX, 12.0);
    EXPECT_EQ(maxY, 100.0) << "a seed beyond the keys stays";
    EXPECT_EQ(minX, -3.0);
    EXPECT_EQ(minY, -7.0);
}

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
    list.snap2Integer(State::keys(list)[1], 20.5, 0.0, false, false);
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

TEST(KeyListMouse, distancesAreSigned) {
    OpenKeyList list;
    list.insertCP(3.0, -4.0);
    list.computeDistances2Mouse(5.0, -10.0);
    double dx = 0.0;
    double dy = 0.0;
    keyAt(list, 0).getDistance2Mouse(dx, dy);
    EXPECT_EQ(dx, -2.0);
    EXPECT_EQ(dy, 6.0);
}

TEST(KeyListMouse, aKeyIsHitWithinSixPixelsAndNotAtSix) {
    OpenKeyList list;
    list.insertCP(0.0, 0.0);
    EXPECT_TRUE(list.hasHitCPOrTangent(5.9, 0.0, 1.0, 1.0));
    EXPECT_FALSE(list.hasHitCPOrTangent(6.0, 0.0, 1.0, 1.0));
    EXPECT_TRUE(list.hasHitCPOrTangent(0.0, -5.9, 1.0, 1.0));
    EXPECT_FALSE(list.hasHitCPOrTangent(0.0, -6.0, 1.0, 1.0));
}

TEST(KeyListMouse, theReachShrinksWithTheScaleOfItsAxis) {
    OpenKeyList list;
    list.insertCP(0.0, 0.0);
    EXPECT_TRUE(list.hasHitCPOrTangent(0.59, 2.9, 10.0, 2.0));
    EXPECT_FALSE(list.hasHitCPOrTangent(0.61, 2.9, 10.0, 2.0));
    EXPECT_FALSE(list.hasHitCPOrTangent(0.59, 3.1, 10.0, 2.0));
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
