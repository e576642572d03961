// The transport: what each way to start playback sets, and that it leaves everything else alone.

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

} // namespace
