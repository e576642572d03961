// A player takes the segments of its curves down and does not ask the curves again until something
// changes. None of that may show: after every operation that changes a curve, its keys, what it
// drives, or that ends it, the next evaluation has the new values.

#include "manager/fixture.h"
#include "manager/frameEvaluation.h"

#include "keys/curveBinding.h"
#include "keys/playedSegments.h"
#include "support/access/kvAnimationCurve.h"
#include "support/access/kvControlPointManager.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <new>
#include <ostream>

using namespace kv::test;

namespace {

using kv::detail::CurveBatch;
using kv::detail::PlayedSegments;
using State = kvTestAccess<kvControlPointManager>;
using Curves = std::vector<kvAnimationCurve*>;

std::uint32_t bits(float value) {
    std::uint32_t result = 0;
    std::memcpy(&result, &value, sizeof result);
    return result;
}

/// Keeps what it is given, as a player does.
class Player final : public kv::detail::FieldSink {
  public:
    struct Record {
        std::uint64_t binding;
        std::uint32_t value; // its bits
        bool operator==(const Record& other) const {
            return binding == other.binding && value == other.value;
        }
    };

    void add(const CurveBatch::Entry* evaluated, std::size_t count) override {
        for (std::size_t i = 0; i < count; ++i)
            _records.push_back({evaluated[i].binding, bits(evaluated[i].value)});
    }
    PlayedSegments* playedSegments() override { return &_segments; }

    const std::vector<Record>& records() const { return _records; }

    const std::vector<Record>& evaluate(const Curves& curves, float frame) {
        _records.clear();
        _segments.rewind();
        kv::detail::evaluateFields(*this, curves, frame);
        return _records;
    }

  private:
    PlayedSegments _segments;
    std::vector<Record> _records;
};

std::vector<Player::Record> evaluatedAfresh(const Curves& curves, float frame) {
    return Player().evaluate(curves, frame);
}

/// Keys at 0, 10, 20 and 30 with handles of their own.
void fill(kvAnimationCurve& curve, float value) {
    for (int i = 0; i < 4; ++i) {
        const float x = 10.0F * static_cast<float>(i);
        const float y = value + static_cast<float>(i % 2);
        curve.importControlPoint(x, y, x - 4.0F, y + 1.0F, x + 3.0F, y - 2.0F,
                                 kvControlPoint::User);
    }
}

struct Edit {
    const char* name;
    std::function<void(kvAnimationCurve&)> make;
};

void PrintTo(const Edit& edit, std::ostream* out) {
    *out << edit.name;
}

kvControlPoint& key(kvAnimationCurve& curve, std::size_t place) {
    return State::keys(curve)[place];
}

/// A curve for edits that concern two.
kvAnimationCurve& another() {
    static kvAnimationCurve curve("another");
    return curve;
}

/// The block owns its curves; this one is somebody else's.
void inBlock(kvAnimationCurve& curve, const std::function<void(kvAnimationBlock&)>& work) {
    kvAnimationBlock block("block");
    block.addCurve(&curve);
    work(block);
    block.getBlockCurves().clear();
}

void onSelected(kvAnimationCurve& curve, const std::function<void(kvAnimationManager2&)>& work) {
    kvAnimationManager2& manager = kvAnimationManager2::_the;
    manager.setSelectedCurves({&curve});
    work(manager);
    manager.setSelectedCurves({});
}

void selectKeys(kvAnimationCurve& curve, std::initializer_list<std::size_t> places) {
    for (const std::size_t place : places)
        key(curve, place).setSelected(true);
}

/// Each changes the value at frame 13, which lies between the keys 1 and 2.
const Edit kEdits[] = {
    {"setPoint",
     [](auto& c) {
         key(c, 1).setPoint({10.0, 50.0});
     }},
    {"setInTangent",
     [](auto& c) {
         key(c, 2).setInTangent({15.0, 50.0});
     }},
    {"setOutTangent",
     [](auto& c) {
         key(c, 1).setOutTangent({15.0, 50.0});
     }},
    {"assignedKey", [](auto& c) { key(c, 1) = kvControlPoint(10.0, 50.0, 6); }},
    {"getCPs",
     [](auto& c) {
         c.getCPs()[1].setPoint({10.0, 50.0});
     }},
    {"getCPsThatAreReplaced",
     [](auto& c) {
         std::vector<kvControlPoint> keys(2, kvControlPoint(0.0, 50.0, 6));
         keys[1].setPoint({20.0, 60.0});
         c.getCPs().swap(keys);
     }},
    {"insertCP", [](auto& c) { c.insertCP(12.0, 50.0); }},
    {"insertCPInPlaceOfAnother", [](auto& c) { c.insertCP(10.0, 50.0); }},
    {"importControlPoint", [](auto& c) { c.importControlPoint(12, 50, 11, 50, 12, 50, 6); }},
    {"deleteExistingKey", [](auto& c) { c.deleteExistingKey(10.0); }},
    {"deleteCP", [](auto& c) { c.deleteCP(&key(c, 1)); }},
    {"deleteAllSelectedCPs",
     [](auto& c) {
         selectKeys(c, {2});
         c.deleteAllSelectedCPs();
     }},
    {"moveCPToTheSamePlace", [](auto& c) { c.moveCPTo(&key(c, 1), 10.0F, 50.0F); }},
    {"moveCPToAnotherPlace", [](auto& c) { c.moveCPTo(&key(c, 0), 12.0F, 50.0F); }},
    {"moveCPToOfAnotherCurve",
     [](auto& c) {
         another() = kvAnimationCurve("another");
         another().moveCPTo(&key(c, 1), 10.0F, 50.0F);
     }},
    {"snap2Integer", [](auto& c) { c.snap2Integer(key(c, 1), 10.0, 50.3, true, true); }},
    {"snap2IntegerByAnotherCurve",
     [](auto& c) {
         another().set("another", static_cast<const kvAnimationCurve&>(c).getCPs());
         another().snap2Integer(key(c, 1), 10.0, 50.3, true, true);
     }},
    {"computeTangentsOfAKey",
     [](auto& c) {
         key(c, 1).setTangentType(kvControlPoint::Flat);
         c.computeTangents(key(c, 1));
     }},
    {"computeTangentsOfAKeyByAnotherCurve",
     [](auto& c) {
         another().set("another", static_cast<const kvAnimationCurve&>(c).getCPs());
         key(c, 1).setTangentType(kvControlPoint::Collapsed);
         another().computeTangents(key(c, 1));
     }},
    {"computeTangents",
     [](auto& c) {
         key(c, 2).setTangentType(kvControlPoint::Flat);
         c.computeTangents();
     }},
    {"computeTangentsOfSelected",
     [](auto& c) {
         selectKeys(c, {1});
         c.computeTangents(kvControlPoint::Smooth);
     }},
    {"computeTangentsExtended",
     [](auto& c) {
         key(c, 2).setTangentType(kvControlPoint::Collapsed);
         c.computeTangentsExtended(key(c, 3));
     }},
    {"constantCurveInterval",
     [](auto& c) {
         selectKeys(c, {1, 2});
         c.constantCurveInterval();
     }},
    {"set", [](auto& c) { c.set("set", std::vector<kvControlPoint>(2)); }},
    {"stretchLeft", [](auto& c) { c.stretchLeft(-20.0F); }},
    {"stretchRight", [](auto& c) { c.stretchRight(50.0F); }},
    {"flip", [](auto& c) { c.flip(); }},
    {"moveBlock", [](auto& c) { inBlock(c, [](auto& block) { block.moveBlock(3.0F); }); }},
    {"changeFrameOfSelectedCPs",
     [](auto& c) {
         selectKeys(c, {0, 1});
         onSelected(c, [](auto& manager) { manager.changeFrameOfSelectedCPs(16.0F); });
     }},
    {"changeValueOfSelectedCPs",
     [](auto& c) {
         selectKeys(c, {1});
         onSelected(c, [](auto& manager) { manager.changeValueOfSelectedCPs(50.0F); });
     }},
    {"assignment",
     [](auto& c) {
         kvAnimationCurve other("other");
         fill(other, 70.0F);
         c = other;
     }},
    {"setAnimationField", [](auto& c) { c.setAnimationField({}); }},
    {"reconstruction",
     [](auto& c) {
         c.~kvAnimationCurve();
         fill(*new (&c) kvAnimationCurve("new"), 70.0F);
     }},
};

class PlayedEdit : public testing::TestWithParam<Edit> {
  protected:
    PlayedEdit() { fill(curve, 0.0F); }

    kvAnimationCurve curve{"curve"};
    Player player;
};

std::string nameOf(const testing::TestParamInfo<Edit>& info) {
    return info.param.name;
}

} // namespace

TEST_P(PlayedEdit, showsInTheNextEvaluation) {
    const std::vector<Player::Record> before = player.evaluate({&curve}, 13.0F);
    ASSERT_EQ(before, player.evaluate({&curve}, 13.0F));
    ASSERT_TRUE(State::isPlayed(curve));
    GetParam().make(curve);
    const std::vector<Player::Record> expected = evaluatedAfresh({&curve}, 13.0F);
    EXPECT_FALSE(expected == before) << "the edit changes something";
    EXPECT_EQ(player.evaluate({&curve}, 13.0F), expected);
}

INSTANTIATE_TEST_SUITE_P(Every, PlayedEdit, testing::ValuesIn(kEdits), nameOf);

namespace {

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
    first.moveCPTo(&key(first, 1), 10.0F, 50.0F);
    expectLikeAfresh({&first}, 13.0F);
    EXPECT_EQ(other.evaluate({&first, &second}, 13.0F), evaluatedAfresh({&first, &second}, 13.0F));
}

TEST_F(Played, editsOfWhatNobodyPlaysDisturbNobody) {
    player.evaluate({&first}, 13.0F);
    const std::uint64_t before = edits();
    second.insertCP(4.0, 5.0);
    second.moveCPTo(&key(second, 1), 10.0F, 50.0F);
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
        key(*curve, 3).setInTangent({27.0, 500.0});
        expectLikeAfresh({curve}, 25.0F);
        key(*curve, 3).setPoint({5.0, 1.0});
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
    key(unsorted, 1).setPoint({25.0, 4.0});
    for (const float frame : {13.0F, 22.0F, 26.0F, 13.0F})
        for (int i = 0; i < 2; ++i)
            expectLikeAfresh({&unsorted}, frame);
    EXPECT_FALSE(State::isPlayed(unsorted));
    unsorted.sortCPs();
    expectLikeAfresh({&unsorted}, 13.0F);
    EXPECT_TRUE(State::isPlayed(unsorted));
}
