// Trees that are broader than a squared cost would bear.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace osg;

constexpr UInt32 kBroad = 100000;

TEST(BroadTree, isBuiltAndDestroyed) {
    NodePtr root = Node::create();
    addRefCP(root);
    const TestShelfPtr shared = TestShelf::create();
    for (UInt32 i = 0; i < kBroad; ++i) {
        const NodePtr child = Node::create();
        child->setCore(shared);
        root->addChild(child);
    }
    EXPECT_EQ(shared.getRefCount(), Int32(kBroad));
    const UInt32 id = getContainerId(shared);
    subRefCP(root);
    EXPECT_FALSE(isAlive(id));
}

TEST(BroadTree, isEmptiedChildByChild) {
    Held<NodePtr> root(Node::create());
    std::vector<NodePtr> children;
    for (UInt32 i = 0; i < kBroad; ++i) {
        children.push_back(Node::create());
        root->addChild(children.back());
    }
    // Every second one from the front, then the others from the back.
    for (UInt32 i = 0; i < kBroad; i += 2)
        root->subChild(children[i]);
    EXPECT_EQ(root->getNChildren(), kBroad / 2);
    for (UInt32 i = kBroad; i > 0; i -= 2)
        root->subChild(children[i - 1]);
    EXPECT_EQ(root->getNChildren(), 0u);
}

} // namespace
