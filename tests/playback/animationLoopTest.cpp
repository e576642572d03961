// The tick: which frame it makes of the clock, what it evaluates and writes, whom it tells, and
// what is left when a range ends. Curves rise by one a frame, so a node shows the frame it was
// given.

#include "playback/tickFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

using Controller = kvAnimationController2;
using Access = kvTestAccess<kvAnimationController2>;
using kv::test::kNear;
using kv::test::Tick;
using testing::ElementsAre;
using testing::IsEmpty;

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

} // namespace
