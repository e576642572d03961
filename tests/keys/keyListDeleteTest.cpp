// Deleting keys: by frame, by key, by selection, and what that does to links and handles.
#include <kvControlPointManager.h>

#include "keys/keyListFixture.h"

#include <gtest/gtest.h>

#include <vector>

using namespace kv::test;

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

TEST(KeyListDelete, aNeighbourThatIsItselfDeletedIsNotRecomputed) {
    OpenKeyList list;
    for (const double x : {0.0, 10.0, 20.0, 30.0})
        list.insertCP(x, x);
    // Of the two keys with one id the first is deleted, which is the neighbour of the one given.
    list.getCPs()[0].setId(5);
    list.getCPs()[1].setId(5);
    for (kvControlPoint& cp : State::keys(list))
        cp.setInTangent({-77, -77});
    list.deleteCP(&State::keys(list)[1]);
    EXPECT_EQ(framesOf(list), (std::vector<double>{10, 20, 30}));
    std::vector<bool> untouched;
    for (const kvControlPoint& cp : keysOf(list))
        untouched.push_back(cp.getInTangent().x == -77.0);
    EXPECT_EQ(untouched, (std::vector<bool>{true, false, true}));
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

TEST(KeyListDelete, keysOfALongListAreFoundAfterSelectedOnesWereDeleted) {
    // Long enough, and searched often enough, for the list to look ids up instead of walking.
    OpenKeyList list;
    for (int i = 0; i < 100; ++i) {
        State::count(list) = 300000000 + (i * 37) % 100;
        kvControlPoint cp(i, i, kvControlPoint::User);
        cp.setSelected(i % 3 == 0);
        list.insertCP(cp);
    }
    for (int round = 0; round < 8; ++round)
        EXPECT_EQ(list.findCP(300000000)->getPoint().x, 0.0);
    ASSERT_TRUE(State::hasIdIndex(list));
    list.deleteAllSelectedCPs();
    EXPECT_EQ(list.getCPs().size(), 66U);
    for (int i = 0; i < 100; ++i) {
        const kvControlPoint* const found = list.findCP(300000000 + (i * 37) % 100);
        if (i % 3 == 0)
            EXPECT_EQ(found, nullptr) << i;
        else
            EXPECT_EQ(found->getPoint().x, i);
    }
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
