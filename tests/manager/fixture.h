#pragma once

// The ground of the manager's tests: an empty registry before and after each test, and makers of
// curves, blocks, clips and nodes that clean up behind themselves.

#include <OpenSG/OSGConfig.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include "support/access/kvAnimationManager2.h"

#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kv::test {

using Access = kvTestAccess<kvAnimationManager2>;
using Keys = std::vector<std::pair<float, float>>; // frame, value

/// Adds keys whose handles lie on them, which makes every segment a held one: the curve's value at
/// a frame is that of the last key at or before it (the first key's before all keys).
inline void addHeldKeys(kvAnimationCurve& curve, const Keys& keys) {
    for (const auto& [frame, value] : keys)
        curve.importControlPoint(frame, value, frame, value, frame, value, 6);
}

/// A held curve that belongs to the caller.
inline kvAnimationCurve* newCurve(const std::string& attribute, const Keys& keys) {
    auto* curve = new kvAnimationCurve(attribute);
    addHeldKeys(*curve, keys);
    return curve;
}

/// A block with one held curve over the frames from `start` to `end`.
inline kvAnimationBlock* newBlock(const std::string& name, float start, float end) {
    auto* block = new kvAnimationBlock(name);
    block->addCurve(newCurve(name, {{start, 1.0F}, {end, 2.0F}}));
    return block;
}

inline kvAnimationSequence2* newSequence(const std::string& text, float start, float end) {
    auto* item = new kvAnimationSequence2(text);
    item->setStartFrame(start);
    item->setEndFrame(end);
    return item;
}

/// A new child of `parent` with the core.
inline osg::NodePtr addNode(const osg::NodePtr& parent, const osg::NodeCorePtr& core) {
    osg::NodePtr node = osg::Node::create();
    osg::beginEditCP(node, osg::Node::CoreFieldMask);
    node->setCore(core);
    osg::endEditCP(node, osg::Node::CoreFieldMask);
    osg::beginEditCP(parent, osg::Node::ChildrenFieldMask);
    parent->addChild(node);
    osg::endEditCP(parent, osg::Node::ChildrenFieldMask);
    return node;
}

inline void removeNode(const osg::NodePtr& parent, const osg::NodePtr& node) {
    osg::beginEditCP(parent, osg::Node::ChildrenFieldMask);
    parent->subChild(node);
    osg::endEditCP(parent, osg::Node::ChildrenFieldMask);
}

class ManagerTest : public ::testing::Test {
  protected:
    ManagerTest() { reset(); }
    ~ManagerTest() override { reset(); }

    /// A held curve that lives as long as the test; not registered.
    kvAnimationCurve* curve(const std::string& attribute, const Keys& keys) {
        return keep(newCurve(attribute, keys));
    }

    /// The same, in the curve list.
    kvAnimationCurve* registeredCurve(const std::string& attribute, const Keys& keys) {
        kvAnimationCurve* made = curve(attribute, keys);
        manager.addCurve(made);
        return made;
    }

    kvAnimationBlock* block(const std::string& name, float start, float end) {
        return keep(newBlock(name, start, end));
    }

    kvAnimationCurve* keep(kvAnimationCurve* made) {
        _curves.emplace_back(made);
        return made;
    }

    kvAnimationBlock* keep(kvAnimationBlock* made) {
        _blocks.emplace_back(made);
        return made;
    }

    kvAnimationClip* keep(kvAnimationClip* made) {
        _clips.emplace_back(made);
        return made;
    }

    kvAnimationClip* clip(const std::string& name) { return keep(new kvAnimationClip(name)); }

    kvAnimationManager2& manager = kvAnimationManager2::_the;

  private:
    void reset() {
        manager.clear(true);
        manager.setDirty(true);
        Access::actualNode(manager) = 0;
        Access::resetHost();
        Access::forgetLight();
    }

    // Clips own blocks, and blocks own curves: what a test puts into one of them must be made with
    // the new... functions instead.
    std::vector<std::unique_ptr<kvAnimationCurve>> _curves;
    std::vector<std::unique_ptr<kvAnimationBlock>> _blocks;
    std::vector<std::unique_ptr<kvAnimationClip>> _clips;
};

/// A scene whose root holds itself alive for the test.
class SceneTest : public ManagerTest {
  protected:
    SceneTest();
    ~SceneTest() override;

    osg::NodePtr root;
};

} // namespace kv::test
