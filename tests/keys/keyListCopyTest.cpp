// Copies of key lists, and what a list knows about its own order.
#include <kvControlPointManager.h>

#include "keys/keyListFixture.h"
#include "manager/identifiers.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

using namespace kv::test;

namespace {

OpenKeyList listOf(std::vector<double> frames) {
    OpenKeyList list;
    for (const double x : frames)
        list.insertCP(x, x);
    list.sortCPs();
    return list;
}

} // namespace

TEST(KeyListCopy, keysCounterLengthAndEditingStateAreCopied) {
    OpenKeyList source;
    for (const double x : {0.0, 10.0, 20.0})
        source.insertCP(x, x);
    source.setTangentLength(3);
    source.hasHitCPOrTangent(10.0, 10.0, 1.0, 1.0);
    State::hitType(source) = kvControlPointManager::HitOutTangent;
    const std::size_t draws = kv::detail::identifierStore().issued().size();
    OpenKeyList constructed(source);
    OpenKeyList assigned;
    assigned = source;
    EXPECT_EQ(kv::detail::identifierStore().issued().size(), draws);
    for (OpenKeyList* copy : {&constructed, &assigned}) {
        EXPECT_EQ(framesOf(*copy), framesOf(source));
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(keyAt(*copy, i).getId(), keyAt(source, i).getId());
            EXPECT_EQ(Links::next(keyAt(*copy, i)), Links::next(keyAt(source, i)));
            EXPECT_EQ(Links::previous(keyAt(*copy, i)), Links::previous(keyAt(source, i)));
        }
        EXPECT_EQ(State::count(*copy), 4);
        EXPECT_EQ(State::length(*copy), 3);
        EXPECT_EQ(copy->getHitCP(), &keyAt(source, 1));
        EXPECT_EQ(copy->getHitType(), kvControlPointManager::HitOutTangent);
        EXPECT_EQ(State::current(*copy), State::current(source));
    }
}

TEST(KeyListCopy, assigningAListToItselfKeepsIt) {
    OpenKeyList list = listOf({0, 10});
    OpenKeyList& same = list;
    list = same;
    EXPECT_EQ(framesOf(list), (std::vector<double>{0, 10}));
    expectLinked(list);
}

TEST(KeyListCopy, linksIntoTheSourceCountAsNone) {
    const OpenKeyList source = listOf({0, 10, 20});
    OpenKeyList copy(source);
    kvControlPoint& middle = State::keys(copy)[1];
    middle.setInTangent({-77, -77});
    copy.computeTangents(middle);
    EXPECT_EQ(middle.getInTangent().x, -77.0);
    EXPECT_TRUE(copy.checkConstraints(middle, 1000.0F, 900.0F, 2000.0F));
}

TEST(KeyListCopy, linksOfACopyLeadNowhereEvenWhereItLiesInThePlaceOfItsSource) {
    const OpenKeyList source = listOf({0, 10, 20});
    OpenKeyList copy(source);
    kvControlPoint& middle = State::keys(copy)[1];
    Links::previous(middle) = &State::keys(copy)[0];
    Links::next(middle) = &State::keys(copy)[2];
    middle.setInTangent({-77, -77});
    copy.computeTangents(middle);
    EXPECT_EQ(middle.getInTangent().x, -77.0);
    copy.sortCPs();
    copy.computeTangents(middle);
    EXPECT_NE(middle.getInTangent().x, -77.0);
}

TEST(KeyListCopy, aCopyOutlivesItsSource) {
    auto source = std::make_unique<OpenKeyList>(listOf({0, 10, 20}));
    source->sortCPs();
    OpenKeyList copy(*source);
    source.reset();
    copy.computeTangents();
    copy.selectAllCPs();
    copy.computeTangents(kvControlPoint::Smooth);
    copy.constantCurveInterval();
    copy.computeTangentsExtended(State::keys(copy)[1]);
    EXPECT_TRUE(copy.checkConstraints(keyAt(copy, 1), 5.0F, 5.0F, 5.0F));
    copy.deleteCP(&State::keys(copy)[1]);
    expectLinked(copy);
}

TEST(KeyListCopy, relinkingMakesACopyUsable) {
    OpenKeyList source = listOf({0, 10, 20});
    OpenKeyList linked(source);
    linked.computeLinkedList();
    expectLinked(linked);
    OpenKeyList sorted(source);
    sorted.sortCPs();
    expectLinked(sorted);
    OpenKeyList edited(source);
    edited.insertCP(15.0, 3.0);
    EXPECT_EQ(framesOf(edited), (std::vector<double>{0, 10, 15, 20}));
    expectLinked(edited);
    expectLinked(source);
}

TEST(KeyListCopy, aCopyIsKnownAsSortedButNotAsLinked) {
    OpenKeyList source = listOf({0, 10, 20});
    source.sortCPs();
    const OpenKeyList copy(source);
    EXPECT_TRUE(State::isKnownSorted(copy));
    EXPECT_FALSE(State::isKnownLinked(copy));
    source.getCPs()[0].setPoint({50, 0});
    const OpenKeyList unsorted(source);
    EXPECT_FALSE(State::isKnownSorted(unsorted));
    OpenKeyList assigned = listOf({1, 2});
    assigned = unsorted;
    EXPECT_FALSE(State::isKnownSorted(assigned));
}

TEST(KeyListKnowledge, editsFromOutsideEndIt) {
    OpenKeyList list;
    const auto learn = [&list] {
        list.sortCPs();
        ASSERT_TRUE(State::isKnownLinked(list));
    };
    for (const double x : {0.0, 10.0, 20.0})
        list.insertCP(x, x);
    learn();
    State::keys(list)[0].setPoint({1, 1});
    EXPECT_FALSE(State::isKnownSorted(list));
    learn();
    State::keys(list)[0].setId(12);
    EXPECT_FALSE(State::isKnownSorted(list));
    learn();
    kvControlPoint other;
    State::keys(list)[0] = other;
    EXPECT_FALSE(State::isKnownSorted(list));
    learn();
    list.getCPs();
    EXPECT_FALSE(State::isKnownSorted(list));
    learn();
    State::keys(list).pop_back();
    EXPECT_FALSE(State::isKnownSorted(list)) << "a key removed behind the list's back";
}

TEST(KeyListKnowledge, harmlessCallsKeepIt) {
    OpenKeyList list = listOf({0, 10, 20});
    list.sortCPs();
    kvControlPoint& cp = State::keys(list)[1];
    cp.setInTangent({1, 1});
    cp.setOutTangent({1, 1});
    cp.setTangentType(3);
    cp.setSelected(true);
    list.computeTangents();
    list.findCP(cp.getId());
    list.getBezierIntervalCPs(5.0F);
    list.getSelectedCPs();
    const kvControlPoint copy(cp);
    EXPECT_EQ(copy.getId(), cp.getId());
    EXPECT_TRUE(State::isKnownLinked(list));
}

TEST(KeyListKnowledge, theListsOwnChangesKeepIt) {
    OpenKeyList list = listOf({0, 10, 20, 30});
    list.sortCPs();
    list.insertCP(15.0, 1.0);
    list.insertCP(15.0, 2.0);
    list.insertCP(40.0, 2.0);
    EXPECT_TRUE(State::isKnownLinked(list));
    kvControlPoint cp(17.0, 0.0, 6);
    list.insertCP(cp);
    EXPECT_TRUE(State::isKnownLinked(list));
    list.deleteCP(&State::keys(list)[1]);
    EXPECT_TRUE(State::isKnownLinked(list));
    State::keys(list)[1].setSelected(true);
    list.deleteAllSelectedCPs();
    EXPECT_TRUE(State::isKnownLinked(list));
    list.deleteExistingKey(0.0);
    EXPECT_TRUE(State::isKnownSorted(list));
    EXPECT_FALSE(State::isKnownLinked(list));
}

TEST(KeyListKnowledge, numberingAKeyOfAnotherListEndsWhatThatListKnew) {
    OpenKeyList list = listOf({0, 10, 20});
    OpenKeyList other = listOf({0, 10, 20});
    list.sortCPs();
    other.sortCPs();
    list.insertCP(State::keys(other)[1]);
    EXPECT_TRUE(State::isKnownLinked(list));
    EXPECT_FALSE(State::isKnownSorted(other));
}

TEST(KeyListKnowledge, keysThatStandInNoListDisturbNone) {
    OpenKeyList list = listOf({0, 10, 20});
    list.sortCPs();
    kvControlPoint cp;
    cp.setPoint({30, 1});
    cp.setId(4711);
    cp = kvControlPoint(31, 1, 6);
    EXPECT_TRUE(State::isKnownLinked(list));
    list.insertCP(cp);
    EXPECT_TRUE(State::isKnownLinked(list));
}

TEST(KeyListKnowledge, theIdOfALoneKeyMayChangeUnnoticed) {
    // Long enough afterwards for the list to tell new ids by the greatest one.
    OpenKeyList list;
    list.insertCP(0, 0);
    State::keys(list)[0].setId(500000000);
    for (int i = 1; i < 40; ++i)
        list.insertCP(i, 0);
    State::count(list) = 500000000;
    kvControlPoint cp(1000, 0, 6);
    list.insertCP(cp);
    EXPECT_EQ(State::current(list), &keyAt(list, 0));
    EXPECT_EQ(list.findCP(500000000), &keyAt(list, 0));
}

TEST(KeyListKnowledge, aLoneKeyOfAnotherListMayBeNumberedAndMoved) {
    OpenKeyList lone;
    lone.insertCP(5, 0);
    State::keys(lone)[0].setPoint({7, 0});
    EXPECT_EQ(lone.getStartFrame(), 7.0);
    lone.insertCP(6, 1);
    lone.insertCP(7, 2);
    EXPECT_EQ(framesOf(lone), (std::vector<double>{6, 7}));
    EXPECT_EQ(valuesOf(lone), (std::vector<double>{1, 2}));
}
