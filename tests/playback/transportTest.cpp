// The transport: what each operation but those that start playback sets, and that it leaves
// everything else alone.

#include "playback/transportFixture.h"
#include "support/recordingListener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using Controller = kvAnimationController2;
using Access = kvTestAccess<kvAnimationController2>;
using kv::test::Changes;
using kv::test::changesOf;
using kv::test::text;
using kv::test::Transport;
using testing::ElementsAre;
using testing::IsEmpty;

// The state before the first test: fixtures set it anew.
class StartState : public testing::Environment {
  public:
    void SetUp() override { state = kv::test::state(); }
    static Changes state;
};
Changes StartState::state;
const testing::Environment* const kStartState = testing::AddGlobalTestEnvironment(new StartState);

TEST(TransportStart, globalPlaybackAtTwentyFiveFramesBeforeAnyCall) {
    const std::string null = text(static_cast<const void*>(nullptr));
    const Changes expected = {
        {"am", null},
        {"blocking", "false"},
        {"minFrame", "0"},
        {"maxFrame", "0"},
        {"startFrame", "0"},
        {"endFrame", "0"},
        {"actualFrame", "0"},
        {"values", "0"},
        {"playingBlock", null},
        {"playingClip", null},
        {"playingSequence", null},
        {"node", "null"},
        {"playing", "false"},
        {"pausing", "false"},
        {"repeating", "false"},
        {"ffw", "false"},
        {"fbw", "false"},
        {"reverse", "false"},
        {"oldFrame", "0"},
        {"ignoreActivity", "false"},
        {"connectedGlobalSlider", "false"},
        {"duration", "0"},
        {"fps", "25"},
        {"simTime", "0"},
        {"startTime", "0"},
        {"timeDiff", "0"},
        {"pt", "3"},
        {"manager.actualFrame", "0"},
    };
    EXPECT_EQ(StartState::state, expected);
}

// --- plain settings

TEST_F(Transport, settersSetTheirOwnMemberOnly) {
    EXPECT_EQ(changesOf([] { Controller::blockCalls(true); }), (Changes{{"blocking", "true"}}));
    EXPECT_EQ(changesOf([] { Controller::setMinFrame(1.0F); }), (Changes{{"minFrame", "1"}}));
    EXPECT_EQ(changesOf([] { Controller::setMaxFrame(2.0F); }), (Changes{{"maxFrame", "2"}}));
    EXPECT_EQ(changesOf([] { Controller::setStartFrame(3.0F); }), (Changes{{"startFrame", "3"}}));
    EXPECT_EQ(changesOf([] { Controller::setEndFrame(4.0F); }), (Changes{{"endFrame", "4"}}));
    EXPECT_EQ(changesOf([] { Controller::setPlayType(2); }), (Changes{{"pt", "2"}}));
    EXPECT_EQ(changesOf([] { Controller::setPlayType(-5); }), (Changes{{"pt", "-5"}}));
    EXPECT_EQ(changesOf([] { Controller::setFPS(60.0F); }), (Changes{{"fps", "60"}}));
    EXPECT_EQ(changesOf([] { Controller::setAnimationManager(nullptr); }),
              (Changes{{"am", address(nullptr)}}));
    EXPECT_EQ(Controller::getFPS(), 60.0F);
    EXPECT_EQ(Controller::getActualFrame(), 905.0F);
    EXPECT_EQ(Controller::getValues().size(), 9U);
}

// --- pause, stop, speed

TEST_F(Transport, pauseTogglesItsFlagOnly) {
    EXPECT_EQ(changesOf([] { Controller::pause(); }), (Changes{{"pausing", "true"}}));
    EXPECT_EQ(changesOf([] { Controller::pause(); }), (Changes{{"pausing", "false"}}));
}

TEST_F(Transport, stopClearsFourFlags) {
    Access::playing() = Access::reverse() = Access::ignoreActivity() = Access::blocking() = true;
    Access::pausing() = Access::repeating() = Access::ffw() = Access::fbw() = true;
    EXPECT_EQ(changesOf([] { Controller::stop(); }), (Changes{{"playing", "false"},
                                                              {"reverse", "false"},
                                                              {"ignoreActivity", "false"},
                                                              {"blocking", "false"}}));
}

TEST_F(Transport, fastForwardTriplesTheRateEveryTime) {
    EXPECT_EQ(changesOf([] { Controller::fastForward(); }),
              (Changes{{"ffw", "true"}, {"playing", "true"}, {"fps", "75"}}));
    EXPECT_EQ(changesOf([] { Controller::fastForward(); }), (Changes{{"fps", "225"}}));
}

TEST_F(Transport, fastBackwardAlsoReverses) {
    EXPECT_EQ(changesOf([] { Controller::fastBackward(); }),
              (Changes{{"fbw", "true"}, {"playing", "true"}, {"reverse", "true"}, {"fps", "75"}}));
}

TEST_F(Transport, repeatChangesNothing) {
    EXPECT_THAT(changesOf([] { Controller::repeat(true); }), IsEmpty());
    EXPECT_THAT(changesOf([] { Controller::repeat(false); }), IsEmpty());
}

TEST_F(Transport, resolveTransformNodeIsTheManagers) {
    const osg::NodePtr child = osg::Node::create();
    node->addChild(child);
    EXPECT_EQ(Controller::resolveTransformNode(node), node);
    EXPECT_EQ(Controller::resolveTransformNode(child), node);
    EXPECT_EQ(Controller::resolveTransformNode(osg::NullFC), osg::NullFC);
}

// --- resets and jumps: state; what they show is tested with the writes

TEST_F(Transport, resetOfNullOnlyStops) {
    Access::playing() = Access::reverse() = Access::ignoreActivity() = Access::blocking() = true;
    const Changes stopped = {{"playing", "false"},
                             {"reverse", "false"},
                             {"ignoreActivity", "false"},
                             {"blocking", "false"}};
    EXPECT_EQ(changesOf([] { Controller::reset(static_cast<kvAnimationBlock*>(nullptr)); }),
              stopped);
    Access::playing() = Access::reverse() = Access::ignoreActivity() = Access::blocking() = true;
    EXPECT_EQ(changesOf([] { Controller::reset(static_cast<kvAnimationClip*>(nullptr)); }),
              stopped);
}

TEST_F(Transport, jumpsToANullItemDoNotEvenStop) {
    Access::playing() = Access::reverse() = Access::ignoreActivity() = Access::blocking() = true;
    EXPECT_THAT(changesOf([] {
                    Controller::gotoStart(static_cast<kvAnimationBlock*>(nullptr));
                    Controller::gotoEnd(static_cast<kvAnimationBlock*>(nullptr));
                    Controller::gotoStart(static_cast<kvAnimationClip*>(nullptr));
                    Controller::gotoEnd(static_cast<kvAnimationClip*>(nullptr));
                }),
                IsEmpty());
}

TEST_F(Transport, resetBlockReplacesTheValuesAndKeepsTheFrames) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    EXPECT_EQ(changesOf([&] { Controller::reset(block); }), (Changes{{"values", "1"}}));
    EXPECT_NEAR(shown(node), 10.0F, 1e-4);
}

TEST_F(Transport, resetClipSetsTheManagersFrame) {
    kvAnimationClip* const clip = makeClip();
    clip->addBlock(new kvAnimationBlock(node, "b"));
    clip->getLastInsertedBlock()->addCurve(makeRamp(node, 10.0F, 40.0F));
    clip->updateBounds();
    EXPECT_EQ(changesOf([&] { Controller::reset(clip); }),
              (Changes{{"values", "1"}, {"manager.actualFrame", "10"}}));
}

TEST_F(Transport, jumpsOfItemsSetTheManagersFrameAndLeaveTheValues) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    EXPECT_EQ(changesOf([&] { Controller::gotoStart(block); }),
              (Changes{{"manager.actualFrame", "10"}}));
    EXPECT_EQ(changesOf([&] { Controller::gotoEnd(block); }),
              (Changes{{"manager.actualFrame", "40"}}));
    kvAnimationClip* const clip = makeClip();
    clip->addBlock(new kvAnimationBlock(node, "b"));
    clip->getLastInsertedBlock()->addCurve(makeRamp(node, 11.0F, 41.0F));
    clip->updateBounds();
    EXPECT_EQ(changesOf([&] { Controller::gotoStart(clip); }),
              (Changes{{"manager.actualFrame", "11"}}));
    EXPECT_EQ(changesOf([&] { Controller::gotoEnd(clip); }),
              (Changes{{"manager.actualFrame", "41"}}));
}

TEST_F(Transport, jumpsOfATypeWithoutItsItemEmptyTheValuesAndKeepTheFrame) {
    for (const auto type : {Controller::PT_BLOCK, Controller::PT_CLIP}) {
        for (const bool toStart : {true, false}) {
            Access::values().replace().resize(3);
            const auto jump = [&] {
                toStart ? Controller::gotoStart(type) : Controller::gotoEnd(type);
            };
            EXPECT_EQ(changesOf(jump), (Changes{{"values", "0"}}));
        }
    }
}

// Every jump stops; what else it sets, by type and direction. Nothing but that changes, the frame
// and the range of the transport included.
TEST_F(Transport, jumpsOfATypeStopAndSetItsValuesAndTheManagersFrame) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    kvAnimationClip* const clip = makeClip();
    clip->addBlock(new kvAnimationBlock(node, "b"));
    clip->getLastInsertedBlock()->addCurve(makeRamp(node, 11.0F, 41.0F));
    clip->updateBounds();
    const std::unique_ptr<kvAnimationCurve> selected(makeRamp(node, 0.0F, 2000.0F));
    kvAnimationManager2::_the.setSelectedCurves({selected.get()});
    kvAnimationManager2::_animationBlocks = {block, makeBlock(node, 12.0F, 42.0F)};
    Access::playingBlock() = block;
    Access::playingClip() = clip;

    struct Row {
        Controller::PlayType type;
        bool toStart;
        const char* values; // there were 9; global playback adds to them
        const char* managersFrame;
    };
    const Row rows[] = {
        {Controller::PT_BLOCK, true, "1", "10"},    {Controller::PT_BLOCK, false, "1", "40"},
        {Controller::PT_CLIP, true, "1", "11"},     {Controller::PT_CLIP, false, "1", "41"},
        {Controller::PT_GLOBAL, true, "12", "901"}, {Controller::PT_GLOBAL, false, "12", "902"},
        {Controller::PT_LOCAL, true, "1", "901"},   {Controller::PT_LOCAL, false, "1", "902"},
    };
    for (const Row& row : rows) {
        raiseAllFlags();
        Access::values().replace().resize(9);
        kvAnimationManager2::setActualFrame(33.0F);
        EXPECT_EQ(changesOf([&] {
                      row.toStart ? Controller::gotoStart(row.type) : Controller::gotoEnd(row.type);
                  }),
                  (Changes{{"playing", "false"},
                           {"reverse", "false"},
                           {"ignoreActivity", "false"},
                           {"blocking", "false"},
                           {"values", row.values},
                           {"manager.actualFrame", row.managersFrame}}))
            << "type " << row.type << (row.toStart ? " to its start" : " to its end");
    }
    kvAnimationManager2::_the.clear(true);
}

TEST_F(Transport, jumpsOfAnUnknownTypeOnlyStop) {
    Access::playing() = Access::blocking() = true;
    EXPECT_EQ(changesOf([] { Controller::gotoStart(Controller::PT_SEQUENCE); }),
              (Changes{{"playing", "false"}, {"blocking", "false"}}));
    EXPECT_THAT(changesOf([] { Controller::gotoEnd(static_cast<Controller::PlayType>(77)); }),
                IsEmpty());
}

} // namespace
