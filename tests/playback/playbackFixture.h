#pragma once

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationController2.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>
#include <kvAnimationSequence2.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace kv::test {

/// A transport in its start state, a clock that only the test moves, and a small scene.
///
/// Curves made here rise by one a frame: their value is the frame, so that what a node shows tells
/// which frame was evaluated. Everything made here is destroyed at the end of the test.
class PlaybackFixture : public ::testing::Test {
  public:
    PlaybackFixture();
    ~PlaybackFixture() override;

    /// Sets the clock, in seconds.
    static void setTime(double seconds);

    /// A node with a ComponentTransform core, held by the fixture.
    osg::NodePtr makeMover();
    /// Holds any node or other container until the end of the test.
    void hold(const osg::FieldContainerPtr& container);

    /// A curve from (first, first) to (last, last), bound to one component of the node's
    /// translation.
    static kvAnimationCurve* makeRamp(const osg::NodePtr& node, float first, float last,
                                      unsigned component = 0);
    /// The same between any two values.
    static kvAnimationCurve* makeLine(const osg::NodePtr& node, float first, float firstValue,
                                      float last, float lastValue, unsigned component = 0);

    /// A block with one ramp on x.
    kvAnimationBlock* makeBlock(const osg::NodePtr& node, float first, float last);
    /// An empty clip, not registered.
    kvAnimationClip* makeClip();
    /// A sequence item for a track of a clip, which then owns it.
    static kvAnimationSequence2* makeSequence(const std::string& text, float first, float last);

    /// Component x of the node's translation: the frame that was shown last.
    static float shown(const osg::NodePtr& node, unsigned component = 0);

    /// Texts of the sequences that the host was asked to run.
    static std::vector<std::string>& executed();

    /// Sets the clock and ticks.
    static void tickAt(double seconds);

  protected:
    osg::NodePtr node;

  private:
    std::vector<osg::FieldContainerPtr> _held;
    std::vector<std::unique_ptr<kvAnimationBlock>> _blocks;
    std::vector<std::unique_ptr<kvAnimationClip>> _clips;
};

} // namespace kv::test
