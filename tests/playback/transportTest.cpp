// The transport: what each operation sets, and that it leaves everything else alone.

#include "playback/playbackFixture.h"
#include "playback/playedValues.h"
#include "support/access/kvAnimationController2.h"
#include "support/recordingListener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

namespace {

using Controller = kvAnimationController2;
using Access = kvTestAccess<kvAnimationController2>;
using Changes = std::map<std::string, std::string>;
using testing::ElementsAre;
using testing::IsEmpty;

template <class T>
std::string text(const T& value) {
    std::ostringstream out;
    out.precision(17);
    out << value;
    return out.str();
}

std::string text(bool value) {
    return value ? "true" : "false";
}
std::string text(Controller::PlayType value) {
    return text(static_cast<int>(value));
}
std::string text(const osg::NodePtr& node) {
    return node == osg::NullFC ? "null" : text(osg::getContainerId(node));
}

// Every static member of the transport, and the one setting of the manager that it writes.
Changes state() {
    return {
        {"am", text(static_cast<const void*>(Access::am()))},
        {"blocking", text(Access::blocking())},
        {"minFrame", text(Access::minFrame())},
        {"maxFrame", text(Access::maxFrame())},
        {"startFrame", text(Access::startFrame())},
        {"endFrame", text(Access::endFrame())},
        {"actualFrame", text(Access::actualFrame())},
        {"values", text(Access::values().all().size())},
        {"playingBlock", text(static_cast<const void*>(Access::playingBlock()))},
        {"playingClip", text(static_cast<const void*>(Access::playingClip()))},
        {"playingSequence", text(static_cast<const void*>(Access::playingSequence()))},
        {"node", text(Access::node())},
        {"playing", text(Access::playing())},
        {"pausing", text(Access::pausing())},
        {"repeating", text(Access::repeating())},
        {"ffw", text(Access::ffw())},
        {"fbw", text(Access::fbw())},
        {"reverse", text(Access::reverse())},
        {"connectedGlobalSlider", text(Access::connectedGlobalSlider())},
        {"ignoreActivity", text(Access::ignoreActivity())},
        {"oldFrame", text(Access::oldFrame())},
        {"duration", text(Access::duration())},
        {"fps", text(Access::fps())},
        {"simTime", text(Access::simTime())},
        {"startTime", text(Access::startTime())},
        {"timeDiff", text(Access::timeDiff())},
        {"pt", text(Access::pt())},
        {"manager.actualFrame", text(kvAnimationManager2::getActualFrame())},
    };
}

// What `operation` changes, by the name of the member.
template <class Operation>
Changes changesOf(Operation operation) {
    const Changes before = state();
    operation();
    Changes after = state();
    for (const auto& [name, value] : before) {
        if (after[name] == value) after.erase(name);
    }
    return after;
}

class Transport : public kv::test::PlaybackFixture {
  public:
    // No member has the value that an operation would give it, so that every write shows.
    Transport() {
        setTime(7.5);
        Access::minFrame() = 901.0F;
        Access::maxFrame() = 902.0F;
        Access::startFrame() = 903.0F;
        Access::endFrame() = 904.0F;
        Access::actualFrame() = 905.0F;
        Access::oldFrame() = 906.0F;
        Access::duration() = 907.0F;
        Access::simTime() = 908.0;
        Access::startTime() = 909.0;
        Access::timeDiff() = 910.0;
        Access::pt() = static_cast<Controller::PlayType>(77);
        kvAnimationManager2::setActualFrame(33.0F);
        Access::values().replace().resize(9);
    }

    static std::string address(const void* pointer) { return text(pointer); }

    // The other value of every flag, so that an operation which clears too much is seen.
    static void raiseAllFlags() {
        Access::blocking() = Access::playing() = Access::pausing() = Access::repeating() = true;
        Access::ffw() = Access::fbw() = Access::reverse() = true;
        Access::connectedGlobalSlider() = Access::ignoreActivity() = true;
    }
};

// The state before the first test: fixtures set it anew.
class StartState : public testing::Environment {
  public:
    void SetUp() override { state = ::state(); }
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

// --- play

TEST_F(Transport, playBlockTakesTheRangeOfTheBlock) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    EXPECT_EQ(changesOf([&] { Controller::play(block, false, false); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "10"},
                       {"endFrame", "40"},
                       {"duration", "30"},
                       {"playingBlock", address(block)},
                       {"pt", "1"},
                       {"playing", "true"}}));
}

TEST_F(Transport, playBlockInReverseStartsAtTheEnd) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    block->setRepeat(true);
    EXPECT_EQ(changesOf([&] { Controller::play(block, true, true); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "40"},
                       {"endFrame", "10"},
                       {"duration", "30"},
                       {"playingBlock", address(block)},
                       {"pt", "1"},
                       {"playing", "true"},
                       {"reverse", "true"},
                       {"repeating", "true"},
                       {"ignoreActivity", "true"}}));
}

TEST_F(Transport, playBlockClearsWhatAnEarlierPlaySet) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    Access::repeating() = Access::reverse() = Access::ignoreActivity() = true;
    const Changes changes = changesOf([&] { Controller::play(block, false, false); });
    EXPECT_EQ(changes.at("repeating"), "false");
    EXPECT_EQ(changes.at("reverse"), "false");
    EXPECT_EQ(changes.at("ignoreActivity"), "false");
}

TEST_F(Transport, playBlockFromTwoFramesKeepsTheDurationOfTheBlock) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    EXPECT_EQ(changesOf([&] { Controller::play(block, 0.0F, 5.0F, false, false); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "0"},
                       {"endFrame", "5"},
                       {"duration", "30"},
                       {"playingBlock", address(block)},
                       {"pt", "1"},
                       {"playing", "true"}}));
    // Reverse does not exchange the arguments.
    Controller::play(block, 0.0F, 5.0F, true, false);
    EXPECT_EQ(Access::startFrame(), 0.0F);
    EXPECT_EQ(Access::endFrame(), 5.0F);
}

TEST_F(Transport, playSequenceLeavesRepeatingAsItIs) {
    const std::unique_ptr<kvAnimationSequence2> item(makeSequence("go", 5.0F, 9.0F));
    Access::repeating() = true;
    Access::ignoreActivity() = true;
    EXPECT_EQ(changesOf([&] { Controller::play(item.get(), false); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "5"},
                       {"endFrame", "9"},
                       {"duration", "4"},
                       {"playingSequence", address(item.get())},
                       {"pt", "5"},
                       {"playing", "true"},
                       {"ignoreActivity", "false"}}));
    EXPECT_EQ(changesOf([&] { Controller::play(item.get(), true); }),
              (Changes{{"startFrame", "9"}, {"endFrame", "5"}, {"reverse", "true"}}));
}

TEST_F(Transport, playClipTakesTheRangeOfTheClipAndArmsItsSequences) {
    kvAnimationClip* const clip = makeClip();
    clip->addBlock(new kvAnimationBlock(node, "b"));
    clip->getLastInsertedBlock()->addCurve(makeRamp(node, 10.0F, 40.0F));
    kvAnimationSequence2* const item = makeSequence("go", 12.0F, 13.0F);
    clip->addSequence(item);
    item->setDirty(false);
    clip->setRepeat(true);
    EXPECT_EQ(changesOf([&] { Controller::play(clip, false, true); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "10"},
                       {"endFrame", "40"},
                       {"duration", "30"},
                       {"playingClip", address(clip)},
                       {"pt", "2"},
                       {"playing", "true"},
                       {"repeating", "true"},
                       {"ignoreActivity", "true"}}));
    EXPECT_TRUE(item->getDirty());
    EXPECT_EQ(changesOf([&] { Controller::play(clip, true, false); }),
              (Changes{{"startFrame", "40"},
                       {"endFrame", "10"},
                       {"reverse", "true"},
                       {"ignoreActivity", "false"}}));
}

TEST_F(Transport, playClipFromTwoFramesTakesTheDurationOfTheArguments) {
    kvAnimationClip* const clip = makeClip();
    kvAnimationSequence2* const item = makeSequence("go", 12.0F, 13.0F);
    clip->addSequence(item);
    item->setDirty(false);
    EXPECT_EQ(changesOf([&] { Controller::play(clip, 0.0F, 5.0F, false, false); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "0"},
                       {"endFrame", "5"},
                       {"duration", "5"},
                       {"playingClip", address(clip)},
                       {"pt", "2"},
                       {"playing", "true"}}));
    EXPECT_TRUE(item->getDirty());
}

// With every flag up and every item set: what each operation leaves.
TEST_F(Transport, playClearsOnlyTheFlagsThatItTakesAndKeepsTheOtherItems) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    kvAnimationClip* const clip = makeClip();
    const std::unique_ptr<kvAnimationSequence2> item(makeSequence("go", 5.0F, 9.0F));
    const osg::NodePtr other = makeMover();
    const auto prepare = [&] {
        raiseAllFlags();
        Access::playing() = false;
        Access::pausing() = false;
        Access::fps() = 75.0F;
        Access::pt() = static_cast<Controller::PlayType>(77);
        Access::startTime() = 909.0;
        Access::startFrame() = 903.0F;
        Access::endFrame() = 904.0F;
        Access::duration() = 907.0F;
        Access::playingBlock() = makeBlock(node, 0.0F, 1.0F);
        Access::playingClip() = makeClip();
        static kvAnimationSequence2 another("another");
        Access::playingSequence() = &another;
        Access::node() = node;
    };
    prepare();
    EXPECT_EQ(changesOf([&] { Controller::play(block, false, false); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "10"},
                       {"endFrame", "40"},
                       {"duration", "30"},
                       {"playingBlock", address(block)},
                       {"pt", "1"},
                       {"playing", "true"},
                       {"reverse", "false"},
                       {"repeating", "false"},
                       {"ignoreActivity", "false"}}));
    prepare();
    EXPECT_EQ(changesOf([&] { Controller::play(block, 1.0F, 2.0F, false, false); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "1"},
                       {"endFrame", "2"},
                       {"duration", "30"},
                       {"playingBlock", address(block)},
                       {"pt", "1"},
                       {"playing", "true"},
                       {"reverse", "false"},
                       {"repeating", "false"},
                       {"ignoreActivity", "false"}}));
    prepare();
    EXPECT_EQ(changesOf([&] { Controller::play(item.get(), false); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "5"},
                       {"endFrame", "9"},
                       {"duration", "4"},
                       {"playingSequence", address(item.get())},
                       {"pt", "5"},
                       {"playing", "true"},
                       {"reverse", "false"},
                       {"ignoreActivity", "false"}}));
    clip->addBlock(new kvAnimationBlock(node, "b"));
    clip->getLastInsertedBlock()->addCurve(makeRamp(node, 11.0F, 41.0F));
    clip->updateBounds();
    prepare();
    EXPECT_EQ(changesOf([&] { Controller::play(clip, false, false); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "11"},
                       {"endFrame", "41"},
                       {"duration", "30"},
                       {"playingClip", address(clip)},
                       {"pt", "2"},
                       {"playing", "true"},
                       {"reverse", "false"},
                       {"repeating", "false"},
                       {"ignoreActivity", "false"}}));
    prepare();
    EXPECT_EQ(changesOf([&] { Controller::play(clip, 8.0F, 2.0F, true, true); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "8"},
                       {"endFrame", "2"},
                       {"duration", "-6"},
                       {"playingClip", address(clip)},
                       {"pt", "2"},
                       {"playing", "true"},
                       {"repeating", "false"}}));
    prepare();
    EXPECT_EQ(changesOf([&] { Controller::play(other, false); }), (Changes{{"startTime", "7.5"},
                                                                           {"startFrame", "33"},
                                                                           {"duration", "-1"},
                                                                           {"node", text(other)},
                                                                           {"fps", "25"},
                                                                           {"pt", "4"},
                                                                           {"playing", "true"},
                                                                           {"reverse", "false"}}));
    prepare();
    EXPECT_EQ(changesOf([] { Controller::play(false); }), (Changes{{"startTime", "7.5"},
                                                                   {"startFrame", "33"},
                                                                   {"pt", "4"},
                                                                   {"playing", "true"},
                                                                   {"reverse", "false"}}));
    prepare();
    EXPECT_EQ(changesOf([] { Controller::playGlobal(false, false, false); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "33"},
                       {"pt", "3"},
                       {"playing", "true"},
                       {"reverse", "false"},
                       {"connectedGlobalSlider", "false"},
                       {"ignoreActivity", "false"}}));
}

TEST_F(Transport, fastPlaybackLeavesEveryOtherFlag) {
    raiseAllFlags();
    EXPECT_EQ(changesOf([] { Controller::fastForward(); }), (Changes{{"fps", "75"}}));
    EXPECT_EQ(changesOf([] { Controller::fastBackward(); }), (Changes{{"fps", "225"}}));
}

TEST_F(Transport, resetsAndItemJumpsLeaveEveryFlagButTheFourThatTheyClear) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    kvAnimationClip* const clip = makeClip();
    clip->addBlock(new kvAnimationBlock(node, "b"));
    clip->getLastInsertedBlock()->addCurve(makeRamp(node, 11.0F, 41.0F));
    clip->updateBounds();
    const auto changes = [&](auto operation) {
        raiseAllFlags();
        kvAnimationManager2::setActualFrame(33.0F);
        Access::values().replace().resize(9);
        return changesOf(operation);
    };
    const Changes stopped = {{"playing", "false"},
                             {"reverse", "false"},
                             {"ignoreActivity", "false"},
                             {"blocking", "false"}};
    const auto and_ = [&](Changes more) {
        more.insert(stopped.begin(), stopped.end());
        return more;
    };
    EXPECT_EQ(changes([&] { Controller::reset(block); }), and_({{"values", "1"}}));
    EXPECT_EQ(changes([&] { Controller::reset(clip); }),
              and_({{"values", "1"}, {"manager.actualFrame", "11"}}));
    EXPECT_EQ(changes([&] { Controller::gotoStart(block); }),
              and_({{"manager.actualFrame", "10"}}));
    EXPECT_EQ(changes([&] { Controller::gotoEnd(block); }), and_({{"manager.actualFrame", "40"}}));
    EXPECT_EQ(changes([&] { Controller::gotoStart(clip); }), and_({{"manager.actualFrame", "11"}}));
    EXPECT_EQ(changes([&] { Controller::gotoEnd(clip); }), and_({{"manager.actualFrame", "41"}}));
}

TEST_F(Transport, playOfNullChangesNothing) {
    EXPECT_THAT(
        changesOf([] {
            Controller::play(static_cast<kvAnimationBlock*>(nullptr), true, true);
            Controller::play(static_cast<kvAnimationBlock*>(nullptr), 1.0F, 2.0F, true, true);
            Controller::play(static_cast<kvAnimationClip*>(nullptr), true, true);
            Controller::play(static_cast<kvAnimationClip*>(nullptr), 1.0F, 2.0F, true, true);
            Controller::play(static_cast<kvAnimationSequence2*>(nullptr), true);
        }),
        IsEmpty());
}

TEST_F(Transport, playNodeStartsLocalPlaybackAtTheManagersFrame) {
    EXPECT_EQ(changesOf([&] { Controller::play(node, true); }), (Changes{{"startTime", "7.5"},
                                                                         {"startFrame", "33"},
                                                                         {"duration", "-1"},
                                                                         {"node", text(node)},
                                                                         {"pt", "4"},
                                                                         {"playing", "true"},
                                                                         {"reverse", "true"}}));
}

TEST_F(Transport, playOfANullNodeIsStoredLikeAnyOther) {
    Access::node() = node;
    const Changes changes = changesOf([] { Controller::play(osg::NodePtr(osg::NullFC), false); });
    EXPECT_EQ(changes.at("node"), "null");
    EXPECT_EQ(changes.at("playing"), "true");
}

TEST_F(Transport, playNodeWhilePausedOnlyResumes) {
    Controller::pause();
    EXPECT_EQ(changesOf([&] { Controller::play(node, true); }),
              (Changes{{"playing", "true"}, {"pausing", "false"}}));
}

TEST_F(Transport, playNodeTakesBackOneStepOfSpeedOnEveryCall) {
    Controller::fastForward();
    Controller::fastForward();
    EXPECT_EQ(Controller::getFPS(), 225.0F);
    Controller::play(node, false);
    EXPECT_EQ(Controller::getFPS(), 75.0F);
    EXPECT_TRUE(Access::ffw()) << "the flag is never cleared";
    Controller::play(node, false);
    EXPECT_EQ(Controller::getFPS(), 25.0F);
    Controller::pause();
    Controller::play(node, false);
    EXPECT_FLOAT_EQ(Controller::getFPS(), 25.0F / 3.0F) << "resuming divides, too";
}

TEST_F(Transport, playWithoutItemIsLocalAndKeepsNodeDurationAndPause) {
    Access::pausing() = true;
    Access::ffw() = true;
    EXPECT_EQ(changesOf([] { Controller::play(true); }), (Changes{{"startTime", "7.5"},
                                                                  {"startFrame", "33"},
                                                                  {"pt", "4"},
                                                                  {"playing", "true"},
                                                                  {"reverse", "true"}}));
}

TEST_F(Transport, playGlobalStartsAtTheManagersFrame) {
    EXPECT_EQ(changesOf([] { Controller::playGlobal(true, true, true); }),
              (Changes{{"startTime", "7.5"},
                       {"startFrame", "33"},
                       {"pt", "3"},
                       {"playing", "true"},
                       {"reverse", "true"},
                       {"connectedGlobalSlider", "true"},
                       {"ignoreActivity", "true"}}));
    EXPECT_EQ(changesOf([] { Controller::playGlobal(false, false, false); }),
              (Changes{{"reverse", "false"},
                       {"connectedGlobalSlider", "false"},
                       {"ignoreActivity", "false"}}));
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
