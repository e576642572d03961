// Nodes where OpenSG 1.8 is less careful: a child that is replaced by its sibling is counted once
// too few, and its readers set back pointers in another way.
#include "opensg/childrenFixture.h"
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <OpenSG/OSGLog.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace osg;

using EmbeddedChildren = Children;

TEST_F(EmbeddedChildren, replacedByASiblingLeaveOneOfThem) {
    Held<NodePtr> held(c);
    EXPECT_TRUE(root->replaceChildBy(c, a));
    EXPECT_EQ(childrenOf(root), "ba");
    EXPECT_TRUE(c->getParent() == NullFC);
    EXPECT_EQ(a.getRefCount(), 1);
}

// What a reader of files may do: fill the fields of a node and end the edit as Abstract.
TEST(EmbeddedAbstractEdit, givesChildrenAndCoreTheirBackPointers) {
    const UInt32 origin =
        ChangedOrigin::Abstract | ChangedOrigin::AbstrIgnoreCore | ChangedOrigin::AbstrIgnoreChild;
    NodePtr root = Node::create();
    addRefCP(root);
    const NodePtr child = Node::create(), other = Node::create();
    const NodeCorePtr core = TestShelf::create();
    const UInt32 ids[] = {getContainerId(child), getContainerId(other), getContainerId(core)};

    root->getMFChildren()->push_back(child);
    root->getMFChildren()->push_back(other);
    root->getSFCore()->setValue(core);
    EXPECT_EQ(child.getRefCount(), 0);
    endEditCP(root, FieldBits::AllFields, origin);

    EXPECT_EQ(root->getNChildren(), 2u);
    EXPECT_EQ(child.getRefCount(), 1);
    EXPECT_TRUE(child->getParent() == root);
    EXPECT_EQ(core.getRefCount(), 1);
    ASSERT_EQ(core->getParents().size(), 1u);
    EXPECT_TRUE(core->getParents()[0] == root);

    subRefCP(root);
    for (UInt32 id : ids)
        EXPECT_FALSE(isAlive(id));
}

} // namespace
