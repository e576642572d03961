#pragma once

#include "playback/playbackFixture.h"
#include "support/access/kvAnimationController2.h"
#include "support/recordingListener.h"

#include <gtest/gtest.h>

namespace kv::test {

// 25 frames a second: a time of 0.04 is one frame.
class Tick : public PlaybackFixture {
  protected:
    using Access = kvTestAccess<kvAnimationController2>;

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

    NotificationLog log;
    RecordingListener listener{log};
};

constexpr float kNear = 1e-4F;

} // namespace kv::test
