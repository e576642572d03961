// Resets and jumps: which frame is shown, how many times it is written, and in which order writes
// and notifications come. A camera setting that is no viewpoint hands itself to the host at every
// write, so the host counts the writes.

#include "playback/playbackFixture.h"
#include "support/access/kvAnimationController2.h"
#include "support/recordingListener.h"

#include <OSGCameraSetting.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Controller = kvAnimationController2;
using Access = kvTestAccess<kvAnimationController2>;
using testing::ElementsAre;
using testing::IsEmpty;

class Jumps : public kv::test::PlaybackFixture {
  public:
    Jumps() {
        theLog = &log;
        kvAnimationManager2::setFromAtUpCB(
            [](int, const osg::Pnt3f& from, const osg::Pnt3f&, const osg::Vec3f&) {
                theLog->push_back("write " + std::to_string(static_cast<int>(from[0] + 0.5F)));
            });
        camera = osg::Node::create();
        hold(camera);
        camera->setCore(osg::CameraSetting::create());
    }
    ~Jumps() override {
        kvAnimationManager2::setFromAtUpCB(nullptr);
        kvAnimationManager2::_the.clearCurveLists();
    }

  protected:
    // A curve on the camera's from.x whose value is the frame.
    kvAnimationCurve* cameraRamp(float first, float last) {
        kvAnimationCurve* const curve = makeRamp(camera, first, last);
        kvAnimationUtils2::AnimationField field = curve->getAnimationField();
        field.fieldName = "fromX";
        field.globalFieldName = "from";
        curve->setAnimationField(field);
        return curve;
    }

    kvAnimationBlock* cameraBlock(float first, float last) {
        kvAnimationBlock* const block = makeBlock(camera, first, last);
        block->getBlockCurves()[0]->setAnimationField(
            std::unique_ptr<kvAnimationCurve>(cameraRamp(first, last))->getAnimationField());
        return block;
    }

    // A block that its clip owns.
    kvAnimationBlock* addCameraBlock(kvAnimationClip* clip, float first, float last) {
        auto* const block = new kvAnimationBlock(camera, "b");
        block->addCurve(cameraRamp(first, last));
        clip->addBlock(block);
        return block;
    }

    static std::vector<std::string> times(int n, const std::string& what) {
        return std::vector<std::string>(static_cast<std::size_t>(n), what);
    }

    osg::NodePtr camera;
    kv::test::NotificationLog log;
    kv::test::RecordingListener listener{log};

  private:
    static kv::test::NotificationLog* theLog;
};

kv::test::NotificationLog* Jumps::theLog = nullptr;

TEST_F(Jumps, resetWritesAnOrdinaryBlockOnceAndACameraBlockFiveTimes) {
    kvAnimationBlock* const block = cameraBlock(10.0F, 40.0F);
    Controller::reset(block);
    EXPECT_THAT(log, ElementsAre("write 10"));
    log.clear();
    block->setCameraBlock(true);
    Controller::reset(block);
    EXPECT_EQ(log, times(5, "write 10"));
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 0.0F) << "a block reset sets no frame";
}

TEST_F(Jumps, resetDoesNotIgnoreActivity) {
    kvAnimationBlock* const block = cameraBlock(10.0F, 40.0F);
    block->setActive(false);
    Access::ignoreActivity() = true;
    Controller::reset(block);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_THAT(Controller::getValues(), IsEmpty());
}

TEST_F(Jumps, resetOfAClipRunsBackwardsThroughItsActiveBlocks) {
    kvAnimationClip* const clip = makeClip();
    addCameraBlock(clip, 10.0F, 40.0F);
    addCameraBlock(clip, 20.0F, 50.0F)->setActive(false);
    addCameraBlock(clip, 30.0F, 60.0F);
    clip->setActive(false); // not asked
    Controller::reset(clip);
    EXPECT_THAT(log, ElementsAre("write 30", "write 10", "updateCMFrame"));
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 10.0F);
    EXPECT_EQ(Controller::getValues().size(), 1U) << "of the block that was reset last";
    EXPECT_NEAR(Controller::getValues()[0].value, 10.0F, 1e-4);
}

TEST_F(Jumps, resetOfAClipResetsSubclipsFirstAndEachOneNotifies) {
    kvAnimationClip* const clip = makeClip();
    addCameraBlock(clip, 1.0F, 90.0F);
    auto* const early = new kvAnimationClip;
    addCameraBlock(early, 10.0F, 40.0F);
    early->setActive(false); // reset all the same
    clip->addSubclip(early);
    auto* const late = new kvAnimationClip;
    addCameraBlock(late, 20.0F, 50.0F);
    clip->addSubclip(late);
    auto* const deep = new kvAnimationClip;
    addCameraBlock(deep, 25.0F, 50.0F);
    late->addSubclip(deep);

    Access::blocking() = true;
    Controller::reset(clip);
    EXPECT_THAT(log, ElementsAre("write 25", "updateCMFrame", // deep
                                 "write 20", "updateCMFrame", // late
                                 "write 10", "updateCMFrame", // early
                                 "write 1", "updateCMFrame"));
    EXPECT_FALSE(Access::blocking());
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 1.0F);
}

TEST_F(Jumps, gotoStartOfABlockWritesFiveTimesThenCallsThePlayListeners) {
    kvAnimationBlock* const block = cameraBlock(10.0F, 40.0F);
    Access::blocking() = true; // cleared before it could hold the listeners back
    std::vector<std::string> expected = times(5, "write 10");
    expected.push_back("listenToPlay");
    Controller::gotoStart(block);
    EXPECT_EQ(log, expected);
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 10.0F);
    EXPECT_THAT(Controller::getValues(), IsEmpty());
}

TEST_F(Jumps, gotoEndOfABlockWritesOnce) {
    Controller::gotoEnd(cameraBlock(10.0F, 40.0F));
    EXPECT_THAT(log, ElementsAre("write 40", "listenToPlay"));
}

TEST_F(Jumps, gotoStartAndEndOfAClipWriteOnce) {
    kvAnimationClip* const clip = makeClip();
    addCameraBlock(clip, 10.0F, 40.0F);
    clip->updateBounds();
    Controller::gotoStart(clip);
    Controller::gotoEnd(clip);
    EXPECT_THAT(log, ElementsAre("write 10", "listenToPlay", "write 40", "listenToPlay"));
}

TEST_F(Jumps, jumpsStopPlayback) {
    kvAnimationBlock* const block = cameraBlock(10.0F, 40.0F);
    for (const auto jump : {static_cast<void (*)(kvAnimationBlock*)>(&Controller::gotoStart),
                            static_cast<void (*)(kvAnimationBlock*)>(&Controller::gotoEnd),
                            static_cast<void (*)(kvAnimationBlock*)>(&Controller::reset)}) {
        Access::playing() = Access::reverse() = Access::ignoreActivity() = true;
        jump(block);
        EXPECT_FALSE(Access::playing() || Access::reverse() || Access::ignoreActivity());
    }
}

// Whatever playback ignored: the flag is cleared first, and evaluation heeds activity.
TEST_F(Jumps, everyJumpLeavesOutWhatIsInactive) {
    kvAnimationBlock* const block = cameraBlock(10.0F, 40.0F);
    block->setActive(false);
    kvAnimationClip* const clip = makeClip();
    addCameraBlock(clip, 10.0F, 40.0F)->setActive(false);
    clip->updateBounds();
    Access::playingBlock() = block;
    Access::playingClip() = clip;
    kvAnimationManager2::_animationBlocks = {block};
    const auto writesOf = [&](auto jump) {
        Access::ignoreActivity() = true;
        log.clear();
        jump();
        return std::count(log.begin(), log.end(), "write 10") +
               std::count(log.begin(), log.end(), "write 40");
    };
    EXPECT_EQ(writesOf([&] { Controller::gotoStart(block); }), 0);
    EXPECT_EQ(writesOf([&] { Controller::gotoEnd(block); }), 0);
    EXPECT_EQ(writesOf([&] { Controller::gotoStart(clip); }), 0);
    EXPECT_EQ(writesOf([&] { Controller::gotoEnd(clip); }), 0);
    for (const auto type : {Controller::PT_BLOCK, Controller::PT_CLIP, Controller::PT_GLOBAL}) {
        EXPECT_EQ(writesOf([&] { Controller::gotoStart(type); }), 0) << type;
        EXPECT_EQ(writesOf([&] { Controller::gotoEnd(type); }), 0) << type;
    }
    block->setActive(true);
    EXPECT_EQ(writesOf([&] { Controller::gotoStart(block); }), 5) << "the count itself";
    kvAnimationManager2::_animationBlocks.clear();
}

TEST_F(Jumps, aClipJumpWithoutItsClipStillTellsTheClipMaker) {
    Controller::gotoStart(Controller::PT_CLIP);
    Controller::gotoEnd(Controller::PT_CLIP);
    EXPECT_THAT(log, ElementsAre("updateCMFrame", "updateCMFrame"));
}

TEST_F(Jumps, jumpsOfThePlayingBlockWriteWithoutNotification) {
    Access::playingBlock() = cameraBlock(10.0F, 40.0F);
    Controller::gotoStart(Controller::PT_BLOCK);
    EXPECT_EQ(log, times(5, "write 10"));
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 10.0F);
    EXPECT_EQ(Controller::getValues().size(), 1U);
    log.clear();
    Controller::gotoEnd(Controller::PT_BLOCK);
    EXPECT_THAT(log, ElementsAre("write 40"));
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 40.0F);
}

TEST_F(Jumps, jumpsOfThePlayingClipNotifyBeforeTheyWrite) {
    kvAnimationClip* const clip = makeClip();
    addCameraBlock(clip, 10.0F, 40.0F);
    clip->updateBounds();
    Access::playingClip() = clip;
    std::vector<std::string> expected = {"updateCMFrame"};
    for (const std::string& write : times(5, "write 10"))
        expected.push_back(write);
    Controller::gotoStart(Controller::PT_CLIP);
    EXPECT_EQ(log, expected);
    log.clear();
    Controller::gotoEnd(Controller::PT_CLIP);
    EXPECT_THAT(log, ElementsAre("updateCMFrame", "write 40"));
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 40.0F);
}

TEST_F(Jumps, globalJumpsTakeEveryBlockAtItsOwnBound) {
    const osg::NodePtr other = makeMover();
    kvAnimationManager2::_animationBlocks = {makeBlock(node, 10.0F, 40.0F), nullptr,
                                             makeBlock(other, 15.0F, 45.0F)};
    Controller::setMinFrame(3.0F);
    Controller::setMaxFrame(4.0F);
    Controller::gotoStart(Controller::PT_GLOBAL);
    EXPECT_EQ(shown(node), 10.0F);
    EXPECT_EQ(shown(other), 15.0F);
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 3.0F);
    EXPECT_THAT(log, ElementsAre("updateGlobal", "updateCEFrame"));
    Controller::gotoEnd(Controller::PT_GLOBAL);
    EXPECT_EQ(shown(node), 40.0F);
    EXPECT_EQ(shown(other), 45.0F);
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 4.0F);
    EXPECT_EQ(Controller::getValues().size(), 4U) << "global jumps accumulate";
}

TEST_F(Jumps, globalJumpsNotifyThenWriteFiveTimesOrOnce) {
    kvAnimationManager2::_animationBlocks = {cameraBlock(10.0F, 40.0F)};
    Controller::gotoStart(Controller::PT_GLOBAL);
    std::vector<std::string> expected = {"updateGlobal", "updateCEFrame"};
    for (const std::string& write : times(5, "write 10"))
        expected.push_back(write);
    EXPECT_EQ(log, expected);
    log.clear();
    Controller::gotoEnd(Controller::PT_GLOBAL);
    EXPECT_THAT(log, ElementsAre("updateGlobal", "updateCEFrame", "write 40"));
}

TEST_F(Jumps, selectedCurvesAreTakenOneFrameBeforeTheMinimum) {
    const std::unique_ptr<kvAnimationCurve> curve(makeRamp(node, 0.0F, 100.0F));
    kvAnimationManager2::_the.setSelectedCurves({curve.get()});
    Controller::setMinFrame(20.0F);
    Controller::setMaxFrame(60.0F);
    Controller::gotoStart(Controller::PT_LOCAL);
    EXPECT_NEAR(shown(node), 19.0F, 1e-4);
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 20.0F);
    Controller::gotoEnd(Controller::PT_LOCAL);
    EXPECT_NEAR(shown(node), 60.0F, 1e-4);
    EXPECT_EQ(kvAnimationManager2::getActualFrame(), 60.0F);
    EXPECT_THAT(log, ElementsAre("updateLocal", "updateCEFrame", "updateLocal", "updateCEFrame"));

    Access::connectedGlobalSlider() = true;
    Controller::gotoStart(Controller::PT_GLOBAL);
    EXPECT_NEAR(shown(node), 19.0F, 1e-4);
    Controller::gotoEnd(Controller::PT_GLOBAL);
    EXPECT_NEAR(shown(node), 60.0F, 1e-4);
}

TEST_F(Jumps, localJumpsWriteFiveTimesOrOnce) {
    const std::unique_ptr<kvAnimationCurve> curve(cameraRamp(0.0F, 100.0F));
    kvAnimationManager2::_the.setSelectedCurves({curve.get()});
    Controller::setMinFrame(20.0F);
    Controller::setMaxFrame(60.0F);
    std::vector<std::string> expected = {"updateLocal", "updateCEFrame"};
    for (const std::string& write : times(5, "write 19"))
        expected.push_back(write);
    Controller::gotoStart(Controller::PT_LOCAL);
    EXPECT_EQ(log, expected);
    log.clear();
    Controller::gotoEnd(Controller::PT_LOCAL);
    EXPECT_THAT(log, ElementsAre("updateLocal", "updateCEFrame", "write 60"));
}

TEST_F(Jumps, unknownTypesWriteThePresentValuesAgain) {
    Controller::reset(cameraBlock(10.0F, 40.0F));
    log.clear();
    Controller::gotoStart(Controller::PT_SEQUENCE);
    EXPECT_EQ(log, times(5, "write 10"));
    log.clear();
    Controller::gotoEnd(Controller::PT_SEQUENCE);
    EXPECT_THAT(log, ElementsAre("write 10"));
}

} // namespace
