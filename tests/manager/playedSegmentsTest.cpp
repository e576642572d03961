// A player takes the segments of its curves down and does not ask the curves again until something
// changes. None of that may show, whichever curves are evaluated, in whatever order.

#include "manager/player.h"

#include <gtest/gtest.h>

using namespace kv::test;

namespace {

using State = kvTestAccess<kvControlPointManager>;

class Played : public testing::Test {
  protected:
    Played() {
        fill(first, 0.0F);
        fill(second, 100.0F);
        third.importControlPoint(5, 7, 5, 7, 5, 7, 6);
        third.importControlPoint(25, 8, 25, 8, 25, 8, 6);
    }

    void expectLikeAfresh(const Curves& curves, float frame) {
        EXPECT_EQ(player.evaluate(curves, frame), evaluatedAfresh(curves, frame)) << frame;
    }

    static std::uint64_t edits() { return kv::detail::playedEdits.load(); }

    kvAnimationCurve first{"first"};
    kvAnimationCurve second{"second"};
    kvAnimationCurve third{"third"}; // held
    Player player;
};

} // namespace

TEST_F(Played, curvesAreNotAskedBeforeSomethingChanges) {
    const std::vector<Player::Record> before = player.evaluate({&first}, 13.0F);
    // Behind the back of the list.
    std::vector<kvControlPoint> others = static_cast<const kvAnimationCurve&>(second).getCPs();
    State::keys(first).swap(others);
    EXPECT_EQ(player.evaluate({&first}, 13.0F), before);
    kv::detail::countPlayedEdit();
    EXPECT_FALSE(player.evaluate({&first}, 13.0F) == before);
    State::keys(first).swap(others);
}

TEST_F(Played, segmentsEndWhereTheNextOneBegins) {
    for (const float frame : {13.0F, 10.0F, 19.999F, 20.0F, 20.001F, 9.999F, 0.0F, 30.0F, 29.999F})
        for (int i = 0; i < 2; ++i)
            expectLikeAfresh({&first, &third, &second}, frame);
}

TEST_F(Played, framesOutsideOfTheKeysAreLeftToTheHoldRule) {
    for (const float frame : {-1.0F, 0.0F, 4.0F, 5.0F, 6.0F, 24.0F, 25.0F, 26.0F, 31.0F, 4.0F})
        for (const Curves& curves : {Curves{&first, &third}, Curves{&third}})
            for (int i = 0; i < 2; ++i)
                expectLikeAfresh(curves, frame);
}

TEST_F(Played, curvesMayComeInAnotherOrder) {
    for (const Curves& curves :
         {Curves{&first, &second, &third}, Curves{&second, &first, &third}, Curves{&third},
          Curves{}, Curves{&first, nullptr, &second}, Curves{&second, &second, &second, &first}})
        for (int i = 0; i < 2; ++i)
            expectLikeAfresh(curves, 13.0F);
}

TEST_F(Played, evaluationsOfOneTickHaveTheirOwnPlaces) {
    Player both;
    for (const float frame : {13.0F, 13.5F, 22.0F}) {
        both.playedSegments()->rewind();
        kv::detail::evaluateFields(both, Curves{&first, &second}, frame);
        kv::detail::evaluateFields(both, Curves{&second}, frame);
    }
    std::vector<Player::Record> expected;
    for (const float frame : {13.0F, 13.5F, 22.0F})
        for (const Player::Record& record : evaluatedAfresh({&first, &second, &second}, frame))
            expected.push_back(record);
    EXPECT_EQ(both.records(), expected);
}

TEST_F(Played, everyPlayerHearsOfAnEdit) {
    Player other;
    for (int i = 0; i < 2; ++i) {
        player.evaluate({&first}, 13.0F);
        other.evaluate({&first, &second}, 13.0F);
    }
    first.moveCPTo(&keyOf(first, 1), 10.0F, 50.0F);
    expectLikeAfresh({&first}, 13.0F);
    EXPECT_EQ(other.evaluate({&first, &second}, 13.0F), evaluatedAfresh({&first, &second}, 13.0F));
}

TEST_F(Played, editsOfWhatNobodyPlaysDisturbNobody) {
    player.evaluate({&first}, 13.0F);
    const std::uint64_t before = edits();
    second.insertCP(4.0, 5.0);
    second.moveCPTo(&keyOf(second, 1), 10.0F, 50.0F);
    second.computeTangents();
    second.flip();
    second.setAnimationField({});
    kvAnimationCurve copy(first);
    copy = second;
    fill(copy, 3.0F);
    kvControlPoint free(1.0, 2.0, 6);
    free.setInTangent({0.0, 0.0});
    free.setOutTangent({0.0, 0.0});
    free.setPoint({3.0, 4.0});
    first.setSelected(true);
    first.selectAllCPs();
    first.computeDistances2Mouse(1.0, 2.0);
    EXPECT_EQ(edits(), before);
    first.insertCP(4.0, 5.0);
    first.insertCP(6.0, 5.0);
    EXPECT_EQ(edits(), before + 1) << "once until it is played again";
    player.evaluate({&first}, 13.0F);
    first.insertCP(7.0, 5.0);
    EXPECT_EQ(edits(), before + 2);
}

TEST_F(Played, listsThatWereHandedOutAreAskedEveryTime) {
    std::vector<kvControlPoint>& keys = first.getCPs();
    first.sortCPs();
    for (int i = 0; i < 2; ++i)
        player.evaluate({&first}, 13.0F);
    EXPECT_FALSE(State::isPlayed(first));
    kvControlPoint late(5.0, 77.0, 6);
    keys.push_back(late);
    expectLikeAfresh({&first}, 13.0F);
    keys.clear();
    expectLikeAfresh({&first}, 13.0F);

    // A copy is another vector.
    kvAnimationCurve copy(second);
    second.getCPs();
    kvAnimationCurve another(second);
    another.sortCPs();
    player.evaluate({&copy, &another}, 13.0F);
    EXPECT_TRUE(State::isPlayed(copy));
    EXPECT_TRUE(State::isPlayed(another));
}

// A key that was put into a vector stands in no list for all it knows, and does not count its edits
// before the list is linked.
TEST_F(Played, copiesOfListsWithUnlinkedKeysAreAskedEveryTime) {
    std::vector<kvControlPoint>& keys = first.getCPs();
    first.sortCPs();
    keys.pop_back();
    keys.push_back(kvControlPoint(30.0, 3.0, 6));
    kvAnimationCurve copy(first);
    kvAnimationCurve assigned;
    assigned = first;
    for (kvAnimationCurve* const curve : {&copy, &assigned}) {
        player.evaluate({curve}, 25.0F);
        keyOf(*curve, 3).setInTangent({27.0, 500.0});
        expectLikeAfresh({curve}, 25.0F);
        keyOf(*curve, 3).setPoint({5.0, 1.0});
        EXPECT_FALSE(State::isKnownSorted(*curve));
        expectLikeAfresh({curve}, 25.0F);
        curve->sortCPs();
        player.evaluate({curve}, 13.0F);
        EXPECT_TRUE(State::isPlayed(*curve));
    }
}

TEST_F(Played, listsThatMayBeOutOfOrderAreAskedEveryTime) {
    kvAnimationCurve unsorted("unsorted");
    fill(unsorted, 3.0F);
    keyOf(unsorted, 1).setPoint({25.0, 4.0});
    for (const float frame : {13.0F, 22.0F, 26.0F, 13.0F})
        for (int i = 0; i < 2; ++i)
            expectLikeAfresh({&unsorted}, frame);
    EXPECT_FALSE(State::isPlayed(unsorted));
    unsorted.sortCPs();
    expectLikeAfresh({&unsorted}, 13.0F);
    EXPECT_TRUE(State::isPlayed(unsorted));
}
