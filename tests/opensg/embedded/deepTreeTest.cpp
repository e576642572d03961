// Trees as deep as no call stack would bear: OpenSG recurses when it traverses, clones, measures
// and destroys them.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <OpenSG/OSGAction.h>

#include <gtest/gtest.h>

namespace {

using namespace osg;

constexpr UInt32 kMany = 1000000;
constexpr UInt32 kBroad = 100000;

NodePtr chain(UInt32 length) {
    const NodePtr root = Node::create();
    NodePtr last = root;
    for (UInt32 i = 1; i < length; ++i) {
        const NodePtr next = Node::create();
        last->addChild(next);
        last = next;
    }
    return root;
}

UInt32 visited = 0;

Action::ResultE count(NodePtr&) {
    ++visited;
    return Action::Continue;
}

Action::ResultE countLeaving(NodePtr&, Action::ResultE result) {
    ++visited;
    return result;
}

TEST(DeepTree, isTraversedClonedMeasuredAndDestroyed) {
    NodePtr root = chain(kMany);
    addRefCP(root);
    const UInt32 rootId = getContainerId(root);

    visited = 0;
    EXPECT_EQ(traverse(root, osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(count)),
              Action::Continue);
    EXPECT_EQ(visited, kMany);
    traverse(
        root, osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(count),
        osgTypedFunctionFunctor2CPtrRef<Action::ResultE, NodePtr, Action::ResultE>(countLeaving));
    EXPECT_EQ(visited, 3 * kMany);

    NodePtr copy = cloneTree(root);
    addRefCP(copy);
    NodePtr leaf = copy;
    UInt32 depth = 1;
    while (leaf->getNChildren() > 0) {
        leaf = leaf->getChild(0);
        ++depth;
    }
    EXPECT_EQ(depth, kMany);
    EXPECT_TRUE(leaf->getToWorld().equals(Matrix(), 0));
    leaf->invalidateVolume();
    copy->updateVolume();
    EXPECT_TRUE(copy->getVolume(false).isValid());

    subRefCP(copy);
    subRefCP(root);
    EXPECT_FALSE(isAlive(rootId));
}

TEST(DeepTree, growsFromTheLeafUpAsWell) {
    NodePtr top = Node::create();
    for (UInt32 i = 1; i < kBroad; ++i) {
        const NodePtr above = Node::create();
        above->addChild(top);
        top = above;
    }
    addRefCP(top);
    visited = 0;
    traverse(top, osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(count));
    EXPECT_EQ(visited, kBroad);
    subRefCP(top);
}

TEST(DeepTree, chainOfContainersThatOwnEachOtherIsDestroyed) {
    TestShotListPtr first = TestShotList::create();
    addRefCP(first);
    TestShotListPtr last = first;
    for (UInt32 i = 0; i < kBroad; ++i) {
        const NodePtr node = Node::create();
        const TestShotListPtr next = TestShotList::create();
        node->addAttachment(next);
        last->setSubject(node);
        last = next;
    }
    const UInt32 id = getContainerId(last);
    subRefCP(first);
    EXPECT_FALSE(isAlive(id));
}

} // namespace
