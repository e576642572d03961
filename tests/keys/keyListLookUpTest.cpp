// Finding keys by id, selection, and the ranges of a list.
#include <kvControlPointManager.h>

#include "keys/keyListFixture.h"

#include <gtest/gtest.h>

#include <vector>

using namespace kv::test;

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
