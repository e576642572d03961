// After every operation that changes a curve, its keys, what it drives, or that ends it, the next
// tick has the new values, although players do not ask curves again before something changes.

#include "manager/fixture.h"
#include "manager/player.h"

#include <functional>
#include <new>
#include <ostream>

using namespace kv::test;

namespace {

using State = kvTestAccess<kvControlPointManager>;

struct Edit {
    const char* name;
    std::function<void(kvAnimationCurve&)> make;
};

void PrintTo(const Edit& edit, std::ostream* out) {
    *out << edit.name;
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
        keyOf(curve, place).setSelected(true);
}

/// Each changes the value at frame 13, which lies between the keys 1 and 2.
const Edit kEdits[] = {
    {"setPoint",
     [](auto& c) {
         keyOf(c, 1).setPoint({10.0, 50.0});
     }},
    {"setInTangent",
     [](auto& c) {
         keyOf(c, 2).setInTangent({15.0, 50.0});
     }},
    {"setOutTangent",
     [](auto& c) {
         keyOf(c, 1).setOutTangent({15.0, 50.0});
     }},
    {"assignedKey", [](auto& c) { keyOf(c, 1) = kvControlPoint(10.0, 50.0, 6); }},
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
    {"deleteCP", [](auto& c) { c.deleteCP(&keyOf(c, 1)); }},
    {"deleteAllSelectedCPs",
     [](auto& c) {
         selectKeys(c, {2});
         c.deleteAllSelectedCPs();
     }},
    {"moveCPToTheSamePlace", [](auto& c) { c.moveCPTo(&keyOf(c, 1), 10.0F, 50.0F); }},
    {"moveCPToAnotherPlace", [](auto& c) { c.moveCPTo(&keyOf(c, 0), 12.0F, 50.0F); }},
    {"moveCPToOfAnotherCurve",
     [](auto& c) {
         another() = kvAnimationCurve("another");
         another().moveCPTo(&keyOf(c, 1), 10.0F, 50.0F);
     }},
    {"snap2Integer", [](auto& c) { c.snap2Integer(keyOf(c, 1), 10.0, 50.3, true, true); }},
    {"snap2IntegerByAnotherCurve",
     [](auto& c) {
         another().set("another", static_cast<const kvAnimationCurve&>(c).getCPs());
         another().snap2Integer(keyOf(c, 1), 10.0, 50.3, true, true);
     }},
    {"computeTangentsOfAKey",
     [](auto& c) {
         keyOf(c, 1).setTangentType(kvControlPoint::Flat);
         c.computeTangents(keyOf(c, 1));
     }},
    {"computeTangentsOfAKeyByAnotherCurve",
     [](auto& c) {
         another().set("another", static_cast<const kvAnimationCurve&>(c).getCPs());
         keyOf(c, 1).setTangentType(kvControlPoint::Collapsed);
         another().computeTangents(keyOf(c, 1));
     }},
    {"computeTangents",
     [](auto& c) {
         keyOf(c, 2).setTangentType(kvControlPoint::Flat);
         c.computeTangents();
     }},
    {"computeTangentsOfSelected",
     [](auto& c) {
         selectKeys(c, {1});
         c.computeTangents(kvControlPoint::Smooth);
     }},
    {"computeTangentsExtended",
     [](auto& c) {
         keyOf(c, 2).setTangentType(kvControlPoint::Collapsed);
         c.computeTangentsExtended(keyOf(c, 3));
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
    {"assignmentOfTheKeysAlone",
     [](auto& c) {
         kvAnimationCurve other("other");
         fill(other, 70.0F);
         static_cast<kvControlPointManager&>(c) = other;
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
