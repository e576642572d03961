// Who counts references, and what happens when the last one goes.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <gtest/gtest.h>

namespace {

using namespace osg;

TEST(ReferenceCount, startsAtZero) {
    NodePtr node = Node::create();
    EXPECT_EQ(node.getRefCount(), 0);
    subRefCP(node);
}

TEST(ReferenceCount, firstSubRefDestroysWhatNobodyCounted) {
    NodePtr node = Node::create();
    const UInt32 id = getContainerId(node);
    subRefCP(node);
    EXPECT_TRUE(node == NullFC);
    EXPECT_FALSE(isAlive(id));
}

TEST(ReferenceCount, goesUpAndDownByOne) {
    NodePtr node = Node::create();
    addRefCP(node);
    addRef(node);
    EXPECT_EQ(node.getRefCount(), 2);
    subRef(node);
    EXPECT_EQ(node.getRefCount(), 1);
    EXPECT_TRUE(node != NullFC);
    subRefCP(node);
    EXPECT_TRUE(node == NullFC);
}

TEST(ReferenceCount, ofNullIsZeroAndStaysSo) {
    NodePtr node;
    addRefCP(node);
    subRefCP(node);
    EXPECT_EQ(node.getRefCount(), 0);
    EXPECT_TRUE(node == NullFC);
}

TEST(ReferenceCount, clearRefMakesTheVariableNullWhoeverElseHolds) {
    NodePtr node = Node::create();
    addRefCP(node);
    NodePtr other = node;
    addRefCP(other);
    clearRefCP(node);
    EXPECT_TRUE(node == NullFC);
    EXPECT_EQ(other.getRefCount(), 1);
    clearRefCP(other);
    EXPECT_TRUE(other == NullFC);
    clearRefCP(other);
    EXPECT_TRUE(other == NullFC);
}

TEST(ReferenceCount, setRefdExchangesCountedPointers) {
    NodePtr a = Node::create(), b = Node::create(), variable;
    addRefCP(a);
    addRefCP(b);
    setRefdCP(variable, a);
    EXPECT_EQ(a.getRefCount(), 2);
    setRefdCP(variable, a);
    EXPECT_EQ(a.getRefCount(), 2);
    setRefdCP(variable, b);
    EXPECT_EQ(a.getRefCount(), 1);
    EXPECT_EQ(b.getRefCount(), 2);
    setRefdCP(variable, NodePtr(NullFC));
    EXPECT_EQ(b.getRefCount(), 1);
    EXPECT_TRUE(variable == NullFC);
    subRefCP(a);
    subRefCP(b);
}

TEST(ReferenceCount, nodeCountsItsCoreAndReleasesTheFormerOne) {
    Held<NodePtr> node(Node::create());
    Held<TestShelfPtr> first(TestShelf::create());
    Held<TestShelfPtr> second(TestShelf::create());
    node->setCore(first);
    EXPECT_EQ(first.get().getRefCount(), 2);
    EXPECT_EQ(first->getParents().size(), 1u);
    EXPECT_TRUE(first->getParents()[0] == node.get());

    node->setCore(first);
    EXPECT_EQ(first.get().getRefCount(), 2);
    EXPECT_EQ(first->getParents().size(), 1u);

    node->setCore(second);
    EXPECT_EQ(first.get().getRefCount(), 1);
    EXPECT_EQ(first->getParents().size(), 0u);
    EXPECT_EQ(second.get().getRefCount(), 2);

    node->setCore(NullFC);
    EXPECT_TRUE(node->getCore() == NullFC);
    EXPECT_EQ(second.get().getRefCount(), 1);
}

TEST(ReferenceCount, sharedCoreIsCountedByEveryNode) {
    Held<TestShelfPtr> core(TestShelf::create());
    NodePtr a = Node::create(), b = Node::create();
    addRefCP(a);
    addRefCP(b);
    a->setCore(core);
    b->setCore(core);
    EXPECT_EQ(core.get().getRefCount(), 3);
    ASSERT_EQ(core->getParents().size(), 2u);
    EXPECT_TRUE(core->getParents()[0] == a);
    EXPECT_TRUE(core->getParents()[1] == b);
    subRefCP(a);
    EXPECT_EQ(core.get().getRefCount(), 2);
    ASSERT_EQ(core->getParents().size(), 1u);
    EXPECT_TRUE(core->getParents()[0] == b);
    subRefCP(b);
    EXPECT_EQ(core.get().getRefCount(), 1);
}

TEST(ReferenceCount, nodeCountsItsChildren) {
    Held<NodePtr> parent(Node::create());
    Held<NodePtr> child(Node::create());
    parent->addChild(child);
    EXPECT_EQ(child.get().getRefCount(), 2);
    parent->subChild(child);
    EXPECT_EQ(child.get().getRefCount(), 1);
    EXPECT_TRUE(child->getParent() == NullFC);
}

TEST(ReferenceCount, childThatIsReleasedAsTheLastIsDestroyed) {
    Held<NodePtr> parent(Node::create());
    NodePtr child = Node::create();
    const UInt32 id = getContainerId(child);
    parent->addChild(child);
    parent->subChild(child);
    EXPECT_FALSE(isAlive(id));
    EXPECT_EQ(parent->getNChildren(), 0u);
}

TEST(ReferenceCount, movingAChildKeepsItAlive) {
    Held<NodePtr> first(Node::create());
    Held<NodePtr> second(Node::create());
    NodePtr child = Node::create();
    first->addChild(child);
    second->addChild(child);
    EXPECT_EQ(first->getNChildren(), 0u);
    EXPECT_EQ(child.getRefCount(), 1);
    EXPECT_TRUE(child->getParent() == second.get());
}

TEST(ReferenceCount, dyingNodeReleasesCoreAttachmentsAndChildren) {
    NodePtr root = Node::create(), child = Node::create(), grandchild = Node::create();
    TestShelfPtr core = TestShelf::create();
    TestShotListPtr list = TestShotList::create();
    addRefCP(root);
    root->addChild(child);
    child->addChild(grandchild);
    grandchild->setCore(core);
    child->addAttachment(list);
    const UInt32 ids[] = {getContainerId(root), getContainerId(child), getContainerId(grandchild),
                          getContainerId(core), getContainerId(list)};
    for (UInt32 id : ids)
        EXPECT_TRUE(isAlive(id));
    subRefCP(root);
    for (UInt32 id : ids)
        EXPECT_FALSE(isAlive(id));
}

TEST(ReferenceCount, childHeldElsewhereOutlivesItsParent) {
    NodePtr parent = Node::create();
    addRefCP(parent);
    Held<NodePtr> child(Node::create());
    Held<NodePtr> grandchild(Node::create());
    parent->addChild(child);
    child->addChild(grandchild);
    subRefCP(parent);
    EXPECT_EQ(child.get().getRefCount(), 1);
    EXPECT_TRUE(child->getParent() == NullFC);
    EXPECT_TRUE(grandchild->getParent() == child.get());
}

TEST(ReferenceCount, fieldsDoNotCount) {
    Held<NodePtr> node(Node::create());
    Held<TestShotListPtr> list(TestShotList::create());
    list->editSubject().setValue(node);
    EXPECT_EQ(node.get().getRefCount(), 1);
    list->editSubject().setValue(NullFC);

    Held<TestCaptionPtr> caption(TestCaption::create());
    list->getCaptions().push_back(caption);
    list->getCaptions().push_back(caption);
    EXPECT_EQ(caption.get().getRefCount(), 1);
    list->getCaptions().erase(list->getCaptions().begin());
    list->getCaptions().clear();
    EXPECT_EQ(caption.get().getRefCount(), 1);
}

TEST(ReferenceCount, attachmentThatCountsItsOwnNodeKeepsItAlive) {
    NodePtr node = Node::create();
    addRefCP(node);
    TestShotListPtr list = TestShotList::create();
    node->addAttachment(list);
    list->setSubject(node);
    EXPECT_EQ(node.getRefCount(), 2);

    const UInt32 id = getContainerId(node);
    NodePtr variable = node;
    subRefCP(variable);
    EXPECT_TRUE(isAlive(id));

    // The circle is opened: everything goes.
    list->setSubject(NullFC);
    EXPECT_FALSE(isAlive(id));
}

TEST(ReferenceCount, hooksRunOncePerContainer) {
    TestShotList::created = 0;
    TestShotList::destroyed = 0;
    TestShotListPtr list = TestShotList::create();
    EXPECT_EQ(TestShotList::created, 1);
    EXPECT_EQ(TestShotList::destroyed, 0);
    subRefCP(list);
    EXPECT_EQ(TestShotList::created, 1);
    EXPECT_EQ(TestShotList::destroyed, 1);
}

TEST(ReferenceCount, containerThatDiesReleasesWhatItCounted) {
    TestShotListPtr list = TestShotList::create();
    addRefCP(list);
    Held<NodePtr> subject(Node::create());
    TestCaptionPtr owned = TestCaption::create();
    Held<TestCaptionPtr> shared(TestCaption::create());
    list->setSubject(subject);
    list->addCaption(owned);
    list->addCaption(shared);
    list->addCaption(shared);
    EXPECT_EQ(subject.get().getRefCount(), 2);
    EXPECT_EQ(shared.get().getRefCount(), 3);
    const UInt32 id = getContainerId(owned);
    subRefCP(list);
    EXPECT_EQ(subject.get().getRefCount(), 1);
    EXPECT_EQ(shared.get().getRefCount(), 1);
    EXPECT_FALSE(isAlive(id));
}

// From the moment its count is 0 a container cannot be found, although what it held may follow.
TEST(Destruction, isOverWhenTheLastReleaseReturns) {
    TestShotListPtr list = TestShotList::create();
    addRefCP(list);
    TestShotListPtr inner = TestShotList::create();
    const NodePtr node = Node::create();
    node->addAttachment(inner);
    list->setSubject(node);
    TestShotList::destroyed = 0;
    subRefCP(list);
    EXPECT_EQ(TestShotList::destroyed, 2);
}

} // namespace
