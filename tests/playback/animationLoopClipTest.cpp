// The tick of clips and of script sequences: what is shown, which sequences run, whom it tells.

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
