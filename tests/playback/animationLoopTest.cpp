// The tick: which frame it makes of the clock, what it evaluates and writes, whom it tells, and
// what is left when a range ends. Curves rise by one a frame, so a node shows the frame it was
// given.

#include "playback/playbackFixture.h"
#include "support/access/kvAnimationController2.h"
#include "support/recordingListener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

using Controller = kvAnimationController2;
using Access = kvTestAccess<kvAnimationController2>;
using testing::ElementsAre;
using testing::IsEmpty;

// 25 frames a second: a time of 0.04 is one frame.
class Tick : public kv::test::PlaybackFixture {
  protected:
    static float managerFrame() { return kvAnimationManager2::getActualFrame(); }

    // A tick that brings playback `frames` away from its start.
    static void tick(double frames) { tickAt(frames / 25.0); }

    kvAnimationClip* clipOver(float first, float last) {
        kvAnimationClip* const clip = makeClip();
        auto* const block = new kvAnimationBlock(node, "b");
        block->addCurve(makeRamp(node, first, last));
        clip->addBlock(block);
        return clip;
    }

    kvAnimationBlock* sceneBlock(const osg::NodePtr& mover, float first, float last) {
        kvAnimationBlock* const block = makeBlock(mover, first, last);
        kvAnimationManager2::_animationBlocks.push_back(block);
        return block;
    }

    void expectStopped() {
        EXPECT_FALSE(Access::playing());
        EXPECT_FALSE(Access::reverse());
        EXPECT_FALSE(Access::ignoreActivity());
        EXPECT_FALSE(Access::blocking());
    }

    kv::test::NotificationLog log;
    kv::test::RecordingListener listener{log};
};

constexpr float kNear = 1e-4F;

// --- the frame

TEST_F(Tick, doesNothingUnlessPlaying) {
    Access::actualFrame() = 3.0F;
    kvAnimationManager2::setActualFrame(4.0F);
    tick(10);
    EXPECT_EQ(Controller::getActualFrame(), 3.0F);
    EXPECT_EQ(managerFrame(), 4.0F);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(Tick, countsFramesFromTheStartFrameForwardsAndBackwards) {
    Access::playing() = true;
    Access::startFrame() = 10.0F;
    Controller::setPlayType(99);
    tickAt(2.0);
    EXPECT_EQ(Controller::getActualFrame(), 60.0F);
    EXPECT_EQ(managerFrame(), 60.0F) << "set for unknown play types, too";
    EXPECT_EQ(Access::timeDiff(), 2.0);
    Access::reverse() = true;
    tickAt(2.0);
    EXPECT_EQ(Controller::getActualFrame(), -40.0F);
    EXPECT_EQ(managerFrame(), -40.0F);
    EXPECT_TRUE(Access::playing());
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(Tick, measuresFromTheTimeAtWhichPlaybackStarted) {
    setTime(100.0);
    Controller::play(makeBlock(node, 0.0F, 100.0F), false, false);
    tickAt(100.5);
    EXPECT_EQ(Controller::getActualFrame(), 12.5F) << "continuous, not rounded";
    EXPECT_NEAR(shown(node), 12.5F, kNear);
}

TEST_F(Tick, roundsTheFrameToSinglePrecisionOnceAtTheEnd) {
    Access::playing() = true;
    Controller::setPlayType(99);
    Controller::setFPS(29.97F);
    Access::startFrame() = 0.1F;
    tickAt(1.0 / 3.0);
    const double exact = static_cast<double>(29.97F) * (1.0 / 3.0) + static_cast<double>(0.1F);
    EXPECT_EQ(Controller::getActualFrame(), static_cast<float>(exact));
}

// --- block

TEST_F(Tick, blockPlaysItsFramesWithoutNotifications) {
    Controller::play(makeBlock(node, 10.0F, 40.0F), false, false);
    tick(5);
    EXPECT_NEAR(shown(node), 15.0F, kNear);
    EXPECT_EQ(managerFrame(), 15.0F);
    EXPECT_EQ(Controller::getValues().size(), 1U);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_TRUE(Access::playing());
}

TEST_F(Tick, blockIsStillInsideExactlyAtItsEnd) {
    Controller::play(makeBlock(node, 10.0F, 40.0F), false, false);
    tick(30);
    EXPECT_TRUE(Access::playing());
    EXPECT_EQ(shown(node), 40.0F);
}

TEST_F(Tick, blockPastItsEndIsEvaluatedThereOnceAndStops) {
    Controller::play(makeBlock(node, 10.0F, 40.0F), false, false);
    Controller::blockCalls(true);
    tick(31);
    EXPECT_EQ(shown(node), 40.0F);
    EXPECT_EQ(managerFrame(), 40.0F) << "the frame that was evaluated";
    EXPECT_EQ(Controller::getActualFrame(), 41.0F) << "the overshoot";
    expectStopped();
    EXPECT_THAT(log, IsEmpty());

    kvAnimationManager2::setActualFrame(1.0F);
    tick(32);
    EXPECT_EQ(managerFrame(), 1.0F) << "nothing happens any more";
}

TEST_F(Tick, blockInReverseRunsDownToItsStart) {
    Controller::play(makeBlock(node, 10.0F, 40.0F), true, false);
    tick(5);
    EXPECT_NEAR(shown(node), 35.0F, kNear);
    tick(30);
    EXPECT_TRUE(Access::playing());
    tick(30.5);
    EXPECT_EQ(shown(node), 10.0F);
    EXPECT_EQ(Controller::getActualFrame(), 9.5F);
    EXPECT_EQ(managerFrame(), 10.0F);
    expectStopped();
}

TEST_F(Tick, blockHasOnlyTheBoundThatItRunsTowards) {
    // Before its start a block plays on, holding its first value.
    Controller::play(makeBlock(node, 10.0F, 40.0F), false, false);
    Controller::setStartFrame(-5.0F);
    tick(1);
    EXPECT_TRUE(Access::playing());
    EXPECT_EQ(managerFrame(), -4.0F);
    EXPECT_EQ(shown(node), 10.0F);
}

TEST_F(Tick, repeatingBlockWrapsIntoItsRange) {
    kvAnimationBlock* const block = makeBlock(node, 0.0F, 10.0F);
    block->setRepeat(true);
    Controller::play(block, false, false);
    tick(23);
    EXPECT_EQ(Controller::getActualFrame(), 3.0F);
    EXPECT_EQ(managerFrame(), 3.0F);
    EXPECT_NEAR(shown(node), 3.0F, kNear);
    EXPECT_TRUE(Access::playing());
    tick(10);
    EXPECT_EQ(Controller::getActualFrame(), 0.0F) << "the end is the next start";
}

TEST_F(Tick, repeatingBlockInReverseFollowsTheFormulaUpwards) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    block->setRepeat(true);
    Controller::play(block, true, false);
    tick(5);
    EXPECT_EQ(Controller::getActualFrame(), 65.0F);
    EXPECT_EQ(shown(node), 40.0F) << "held: 65 lies behind the block's end";
    EXPECT_TRUE(Access::playing());
}

TEST_F(Tick, repeatingPartOfABlockWrapsByTheLengthOfTheBlock) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    block->setRepeat(true);
    Controller::play(block, 0.0F, 5.0F, false, false);
    tick(31);
    EXPECT_EQ(Controller::getActualFrame(), 1.0F);
    tick(6);
    expectStopped(); // 6 lies within 30 frames, but behind frame 5
    EXPECT_EQ(managerFrame(), 5.0F);
}

TEST_F(Tick, repeatingBlockWithoutLengthEndsAtItsEnd) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    block->setRepeat(true);
    Controller::play(block, false, false);
    Access::duration() = 0.0F;
    tick(0); // 0 / 0
    EXPECT_TRUE(std::isnan(Controller::getActualFrame()));
    expectStopped();
    EXPECT_EQ(shown(node), 40.0F);
}

TEST_F(Tick, inactiveBlockPlaysOnlyWhenActivityIsIgnored) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    block->setActive(false);
    Controller::play(block, false, false);
    tick(5);
    EXPECT_EQ(shown(node), 0.0F);
    EXPECT_THAT(Controller::getValues(), IsEmpty());
    setTime(0.0);
    Controller::play(block, false, true);
    tick(5);
    EXPECT_NEAR(shown(node), 15.0F, kNear);
}

TEST_F(Tick, lastFrameOfABlockStillIgnoresActivity) {
    kvAnimationBlock* const block = makeBlock(node, 10.0F, 40.0F);
    block->setActive(false);
    Controller::play(block, false, true);
    tick(50);
    EXPECT_EQ(shown(node), 40.0F);
    expectStopped();
}

TEST_F(Tick, withoutItsItemATickStillSetsTheManagersFrame) {
    Access::playing() = true;
    Access::endFrame() = 100.0F;
    for (const auto type : {Controller::PT_BLOCK, Controller::PT_CLIP, Controller::PT_SEQUENCE}) {
        Controller::setPlayType(type);
        kvAnimationManager2::setActualFrame(-1.0F);
        tick(7);
        EXPECT_EQ(managerFrame(), 7.0F) << type;
        EXPECT_TRUE(Access::playing());
    }
    EXPECT_THAT(Controller::getValues(), IsEmpty());
}

TEST_F(Tick, withoutAManagerNothingIsEvaluated) {
    kvAnimationBlock* const block = sceneBlock(node, 10.0F, 40.0F);
    Controller::setAnimationManager(nullptr);
    Controller::setMaxFrame(100.0F);
    Controller::play(block, false, false);
    tick(5);
    Controller::playGlobal(false, true, false);
    tick(5);
    Controller::play(false);
    tick(5);
    kvAnimationClip* const clip = clipOver(10.0F, 40.0F);
    clip->addSequence(makeSequence("go", 11.0F, 12.0F));
    Controller::play(clip, false, false);
    tick(5);
    Controller::reset(block);
    Controller::gotoStart(block);
    Controller::gotoEnd(Controller::PT_GLOBAL);
    EXPECT_EQ(shown(node), 0.0F);
    EXPECT_THAT(Controller::getValues(), IsEmpty());
    EXPECT_THAT(executed(), IsEmpty());
}

// --- clip

TEST_F(Tick, clipPlaysAndTellsTheClipMaker) {
    Controller::play(clipOver(10.0F, 40.0F), false, false);
    tick(5);
    EXPECT_NEAR(shown(node), 15.0F, kNear);
    EXPECT_EQ(managerFrame(), 15.0F);
    EXPECT_THAT(log, ElementsAre("updateCMFrame"));
}

TEST_F(Tick, clipPastItsEndStopsAndNotifiesEvenWhenCallsWereBlocked) {
    Controller::play(clipOver(10.0F, 40.0F), false, false);
    Controller::blockCalls(true);
    tick(5);
    EXPECT_THAT(log, IsEmpty());
    tick(31);
    EXPECT_THAT(log, ElementsAre("updateCMFrame"));
    EXPECT_EQ(shown(node), 40.0F);
    EXPECT_EQ(managerFrame(), 40.0F);
    EXPECT_EQ(Controller::getActualFrame(), 41.0F);
    expectStopped();
}

TEST_F(Tick, lastFrameOfAClipHeedsActivityAgain) {
    kvAnimationClip* const clip = clipOver(10.0F, 40.0F);
    clip->getLastInsertedBlock()->setActive(false);
    Controller::play(clip, false, true);
    tick(5);
    EXPECT_NEAR(shown(node), 15.0F, kNear);
    tick(31);
    EXPECT_NEAR(shown(node), 15.0F, kNear) << "the inactive block is left out at the end";
    EXPECT_THAT(Controller::getValues(), IsEmpty());
}

TEST_F(Tick, repeatingClipWraps) {
    kvAnimationClip* const clip = clipOver(10.0F, 40.0F);
    clip->setRepeat(true);
    Controller::play(clip, false, false);
    tick(35);
    EXPECT_EQ(Controller::getActualFrame(), 15.0F);
    EXPECT_NEAR(shown(node), 15.0F, kNear);
    EXPECT_TRUE(Access::playing());
}

TEST_F(Tick, clipRunsSequencesOncePerWholeFrame) {
    kvAnimationClip* const clip = clipOver(0.0F, 40.0F);
    clip->addSequence(makeSequence("go", 3.0F, 6.0F));
    Controller::play(clip, false, false);
    tick(4.4); // whole frame 4: in range
    EXPECT_THAT(executed(), ElementsAre("go"));
    tick(4.45);
    EXPECT_THAT(executed(), ElementsAre("go")) << "the same whole frame";
    tick(4.6); // whole frame 5: runs again, although no longer dirty
    EXPECT_THAT(executed(), ElementsAre("go", "go"));
    tick(5.2); // still 5
    EXPECT_THAT(executed(), ElementsAre("go", "go"));
    EXPECT_EQ(Access::oldFrame(), 5.0F);
}

TEST_F(Tick, wholeFramesRoundHalvesAwayFromZero) {
    kvAnimationClip* const clip = clipOver(-10.0F, 40.0F);
    Controller::play(clip, false, false);
    tick(9.5);
    EXPECT_EQ(Controller::getActualFrame(), -0.5F);
    EXPECT_EQ(Access::oldFrame(), -1.0F);
    tick(10.5);
    EXPECT_EQ(Access::oldFrame(), 1.0F);
}

TEST_F(Tick, clipFiresTheSequencesThatItJumpedOverInOrder) {
    kvAnimationClip* const clip = clipOver(0.0F, 200.0F);
    clip->addSequence(makeSequence("fifty", 50.0F, 55.0F));
    clip->addSequence(makeSequence("ten", 10.0F, 15.0F));
    clip->addSequence(makeSequence("hundred", 100.0F, 150.0F));
    Controller::play(clip, false, false);
    tick(100);
    // In range first, dirty or not, then the ones left behind.
    EXPECT_THAT(executed(), ElementsAre("hundred", "ten", "fifty"));
    executed().clear();
    tick(101);
    EXPECT_THAT(executed(), ElementsAre("hundred"));
}

TEST_F(Tick, clipRunsSequencesAfterTheValuesAreWritten) {
    static float seen;
    static osg::NodePtr watched;
    watched = node;
    seen = -1.0F;
    kvAnimationManager2::setExecuteSequenceCB([](std::string) { seen = shown(watched); });
    kvAnimationClip* const clip = clipOver(0.0F, 40.0F);
    clip->addSequence(makeSequence("go", 3.0F, 6.0F));
    Controller::play(clip, false, false);
    tick(4);
    EXPECT_NEAR(seen, 4.0F, kNear);
}

TEST_F(Tick, clipEndFiresOnlySkippedSequencesAtTheUnroundedEnd) {
    kvAnimationClip* const clip = clipOver(0.0F, 40.0F);
    clip->addSequence(makeSequence("inRange", 38.0F, 45.0F));
    clip->addSequence(makeSequence("justBefore", 40.2F, 45.0F));
    clip->addSequence(makeSequence("after", 40.3F, 45.0F));
    Controller::play(clip, 0.0F, 40.25F, false, false);
    clip->getSequences(false, false).at(0)->setDirty(false);
    tick(41);
    EXPECT_THAT(executed(), ElementsAre("justBefore"));
    EXPECT_EQ(Access::oldFrame(), 0.0F) << "the end does not count as a whole frame";
}

TEST_F(Tick, playingAClipAgainArmsItsSequences) {
    kvAnimationClip* const clip = clipOver(0.0F, 100.0F);
    clip->addSequence(makeSequence("go", 10.0F, 12.0F));
    Controller::play(clip, false, false);
    tick(50);
    tick(60);
    EXPECT_THAT(executed(), ElementsAre("go"));
    setTime(0.0);
    Controller::play(clip, false, false);
    tick(50);
    EXPECT_THAT(executed(), ElementsAre("go", "go"));
}

// --- global

TEST_F(Tick, globalPlaysAllSceneBlocksAndTellsTwoViews) {
    const osg::NodePtr other = makeMover();
    sceneBlock(node, 0.0F, 100.0F);
    sceneBlock(other, 0.0F, 100.0F);
    Controller::setMaxFrame(100.0F);
    kvAnimationManager2::setActualFrame(20.0F);
    Controller::playGlobal(false, false, false);
    tick(5);
    EXPECT_NEAR(shown(node), 25.0F, kNear);
    EXPECT_NEAR(shown(other), 25.0F, kNear);
    EXPECT_EQ(managerFrame(), 25.0F);
    EXPECT_THAT(log, ElementsAre("updateGlobal", "updateCEFrame"));
    EXPECT_TRUE(Access::playing());
}

TEST_F(Tick, globalDoesNotPlayTheBlocksOfTheBlockList) {
    kvAnimationManager2::_the.addAnimationBlock(makeBlock(node, 0.0F, 100.0F));
    Controller::setMaxFrame(100.0F);
    Controller::playGlobal(false, false, false);
    tick(5);
    EXPECT_EQ(shown(node), 0.0F);
    kvAnimationManager2::_the.clear(true);
}

TEST_F(Tick, globalStopsBehindTheMaximumFrame) {
    sceneBlock(node, 0.0F, 100.0F);
    Controller::setMinFrame(5.0F);
    Controller::setMaxFrame(50.0F);
    Controller::playGlobal(false, false, false);
    Controller::blockCalls(true);
    tick(50);
    EXPECT_TRUE(Access::playing());
    EXPECT_NEAR(shown(node), 50.0F, kNear);
    EXPECT_THAT(log, IsEmpty());
    tick(51);
    expectStopped();
    EXPECT_EQ(managerFrame(), 50.0F);
    EXPECT_EQ(Controller::getActualFrame(), 51.0F);
    EXPECT_THAT(log, ElementsAre("updateGlobal", "updateCEFrame")) << "the last tick notifies";
}

TEST_F(Tick, globalInReverseStopsBelowTheMinimumFrame) {
    sceneBlock(node, 0.0F, 100.0F);
    Controller::setMinFrame(5.0F);
    Controller::setMaxFrame(50.0F);
    kvAnimationManager2::setActualFrame(60.0F); // above the maximum: no bound in reverse
    Controller::playGlobal(true, false, false);
    tick(1);
    EXPECT_TRUE(Access::playing());
    EXPECT_NEAR(shown(node), 59.0F, kNear);
    tick(56);
    expectStopped();
    EXPECT_NEAR(shown(node), 5.0F, kNear);
    EXPECT_EQ(managerFrame(), 5.0F);
}

TEST_F(Tick, globalDoesNotRepeat) {
    sceneBlock(node, 0.0F, 100.0F)->setRepeat(true);
    Access::repeating() = true;
    Access::duration() = 10.0F;
    Controller::setMaxFrame(50.0F);
    Controller::playGlobal(false, false, false);
    tick(51);
    expectStopped();
}

TEST_F(Tick, connectedSliderAddsTheSelectedCurvesBehindTheBlocks) {
    const std::unique_ptr<kvAnimationCurve> curve(makeLine(node, 0.0F, 1000.0F, 100.0F, 1100.0F));
    kvAnimationManager2::_the.setSelectedCurves({curve.get()});
    sceneBlock(node, 0.0F, 100.0F);
    Controller::setMaxFrame(100.0F);
    Controller::playGlobal(false, false, false);
    tick(5);
    EXPECT_NEAR(shown(node), 5.0F, kNear);
    setTime(0.0);
    kvAnimationManager2::setActualFrame(0.0F);
    Controller::playGlobal(false, true, false);
    tick(6);
    EXPECT_NEAR(shown(node), 1006.0F, 1e-2F) << "the selected curve comes last and wins";
    kvAnimationManager2::_the.clearCurveLists();
}

TEST_F(Tick, lastGlobalFrameStillIgnoresActivity) {
    sceneBlock(node, 0.0F, 100.0F)->setActive(false);
    Controller::setMaxFrame(50.0F);
    Controller::playGlobal(false, false, true);
    tick(51);
    EXPECT_NEAR(shown(node), 50.0F, kNear);
    expectStopped();
}

// --- local

TEST_F(Tick, localPlaysTheSelectedCurvesAndTellsTwoViews) {
    const std::unique_ptr<kvAnimationCurve> curve(makeRamp(node, 0.0F, 100.0F));
    kvAnimationManager2::_the.setSelectedCurves({curve.get()});
    Controller::setMaxFrame(50.0F);
    Controller::play(false);
    tick(5);
    EXPECT_NEAR(shown(node), 5.0F, kNear);
    EXPECT_THAT(log, ElementsAre("updateLocal", "updateCEFrame"));
    EXPECT_EQ(Controller::getValues().size(), 1U);
    log.clear();
    Controller::blockCalls(true);
    tick(6);
    EXPECT_THAT(log, IsEmpty());
    tick(51);
    EXPECT_THAT(log, ElementsAre("updateLocal", "updateCEFrame"));
    EXPECT_NEAR(shown(node), 50.0F, kNear);
    EXPECT_EQ(managerFrame(), 50.0F);
    expectStopped();
    kvAnimationManager2::_the.clearCurveLists();
}

TEST_F(Tick, localInReverseStopsBelowTheMinimumFrame) {
    const std::unique_ptr<kvAnimationCurve> curve(makeRamp(node, 0.0F, 100.0F));
    kvAnimationManager2::_the.setSelectedCurves({curve.get()});
    Controller::setMinFrame(10.0F);
    kvAnimationManager2::setActualFrame(20.0F);
    Controller::play(node, true);
    tick(10);
    EXPECT_TRUE(Access::playing());
    tick(10.5);
    expectStopped();
    EXPECT_NEAR(shown(node), 10.0F, kNear);
    EXPECT_EQ(Controller::getActualFrame(), 9.5F);
    kvAnimationManager2::_the.clearCurveLists();
}

TEST_F(Tick, pausingDoesNotHoldTheTick) {
    const std::unique_ptr<kvAnimationCurve> curve(makeRamp(node, 0.0F, 100.0F));
    kvAnimationManager2::_the.setSelectedCurves({curve.get()});
    Controller::setMaxFrame(50.0F);
    Controller::play(node, false);
    Controller::pause();
    tick(5);
    EXPECT_NEAR(shown(node), 5.0F, kNear);
    Controller::play(node, false); // resumes: the start time stays
    tick(6);
    EXPECT_NEAR(shown(node), 6.0F, kNear);
    kvAnimationManager2::_the.clearCurveLists();
}

// --- sequence

TEST_F(Tick, sequenceRunsAtEveryNewWholeFrame) {
    const std::unique_ptr<kvAnimationSequence2> item(makeSequence("go", 5.0F, 9.0F));
    Controller::play(item.get(), false);
    tick(0.2);
    EXPECT_THAT(executed(), ElementsAre("go"));
    tick(0.3);
    EXPECT_THAT(executed(), ElementsAre("go"));
    tick(1);
    EXPECT_THAT(executed(), ElementsAre("go", "go"));
    EXPECT_THAT(log, ElementsAre("updateCMFrame", "updateCMFrame", "updateCMFrame"));
    EXPECT_EQ(Access::oldFrame(), 6.0F);
}

TEST_F(Tick, sequencePastItsEndStopsWithoutRunningAndAlwaysNotifies) {
    const std::unique_ptr<kvAnimationSequence2> item(makeSequence("go", 5.0F, 9.0F));
    Controller::play(item.get(), false);
    tick(4); // frame 9: still inside
    EXPECT_TRUE(Access::playing());
    executed().clear();
    log.clear();
    Controller::blockCalls(true);
    tick(4.5);
    EXPECT_THAT(executed(), IsEmpty());
    EXPECT_THAT(log, ElementsAre("updateCMFrame"));
    EXPECT_EQ(managerFrame(), 9.0F);
    EXPECT_EQ(Controller::getActualFrame(), 9.5F);
    expectStopped();
}

TEST_F(Tick, sequenceInReverseRunsDownToItsStart) {
    const std::unique_ptr<kvAnimationSequence2> item(makeSequence("go", 5.0F, 9.0F));
    Controller::play(item.get(), true);
    tick(4);
    EXPECT_TRUE(Access::playing());
    tick(4.1);
    expectStopped();
    EXPECT_EQ(managerFrame(), 5.0F);
}

TEST_F(Tick, blockedSequencePlaysWithoutNotification) {
    const std::unique_ptr<kvAnimationSequence2> item(makeSequence("go", 5.0F, 9.0F));
    Controller::play(item.get(), false);
    Controller::blockCalls(true);
    tick(1);
    EXPECT_THAT(executed(), ElementsAre("go"));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(Tick, clipsAndSequencesShareTheLastWholeFrame) {
    const std::unique_ptr<kvAnimationSequence2> item(makeSequence("alone", 5.0F, 9.0F));
    Controller::play(item.get(), false);
    tick(1);
    EXPECT_THAT(executed(), ElementsAre("alone")); // at frame 6
    kvAnimationClip* const clip = clipOver(0.0F, 40.0F);
    clip->addSequence(makeSequence("inClip", 6.0F, 6.0F));
    setTime(0.0);
    Controller::play(clip, false, false);
    tick(6);
    EXPECT_THAT(executed(), ElementsAre("alone")) << "frame 6 has been";
}

TEST_F(Tick, sequenceWithANaNFrameRunsEveryTime) {
    const std::unique_ptr<kvAnimationSequence2> item(makeSequence("go", 5.0F, 9.0F));
    Controller::play(item.get(), false);
    Controller::setFPS(std::numeric_limits<float>::quiet_NaN());
    tick(1);
    tick(1);
    EXPECT_THAT(executed(), ElementsAre("go", "go"));
    EXPECT_TRUE(Access::playing());
}

} // namespace
