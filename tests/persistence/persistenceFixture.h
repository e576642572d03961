#pragma once

#include <kvAnimationAttachmentInteraction.h>
#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <OSGAnimationAttachment.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGNode.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace kv::test {

/// A root with a transform, an empty manager, and helpers that build objects and records.
///
/// Whatever the manager's lists hold at the end of a test is destroyed, as are all nodes that were
/// held; records that refer to their own node are emptied first.
class PersistenceFixture : public ::testing::Test {
  public:
    using Interaction = kvAnimationAttachmentInteraction;

    PersistenceFixture();
    ~PersistenceFixture() override;

    /// Nodes that the fixture holds; `under` null makes a root.
    osg::NodePtr makeTransform(const osg::NodePtr& under = osg::NullFC);
    osg::NodePtr makeGroup(const osg::NodePtr& under = osg::NullFC);
    osg::NodePtr makeCamera();

    /// Destroyed with the test.
    kvAnimationCurve* keep(kvAnimationCurve* curve);
    kvAnimationBlock* keep(kvAnimationBlock* block);
    kvAnimationClip* keep(kvAnimationClip* clip);

    /// A curve of `node` with keys of type 6 at the frames, value = 10 * frame.
    static kvAnimationCurve* makeCurve(const osg::NodePtr& node, const std::string& attribute,
                                       const std::vector<float>& frames);
    /// A block with one such curve.
    static kvAnimationBlock* makeBlock(const osg::NodePtr& node, const std::string& name,
                                       const std::vector<float>& frames);

    /// Records, built by hand. References are counted by whoever takes them.
    static osg::AnimationCurvePtr curveRecord(const osg::NodePtr& node,
                                              const std::string& attribute,
                                              const std::vector<float>& frames);
    static osg::AnimationBlockPtr blockRecord(const osg::NodePtr& node, const std::string& name);

    /// The attachment of the node itself, made when there is none.
    static osg::AnimationAttachmentPtr attachment(const osg::NodePtr& node);

    static kvAnimationManager2& manager() { return kvAnimationManager2::_the; }

  protected:
    osg::NodePtr node;

  private:
    osg::NodePtr makeNode(const osg::NodeCorePtr& core, const osg::NodePtr& under);

    std::vector<std::uint32_t> _nodes;
    std::vector<std::unique_ptr<kvAnimationCurve>> _curves;
    std::vector<std::unique_ptr<kvAnimationBlock>> _blocks;
    std::vector<std::unique_ptr<kvAnimationClip>> _clips;
};

} // namespace kv::test
