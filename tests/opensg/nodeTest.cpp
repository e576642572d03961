// The tree: children, parents, visibility, places in space, copies.
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

/// Keeps warnings that a test provokes out of its output.
class QuietLog {
  public:
    QuietLog() : _type(osgLog().getLogType()) { osgLog().setLogType(LOG_NONE); }
    ~QuietLog() { osgLog().setLogType(_type); }

  private:
    LogType _type;
};

TEST_F(Children, standInTheOrderOfAdding) {
    EXPECT_EQ(root->getNChildren(), 3u);
    EXPECT_EQ(childrenOf(root), "abc");
    EXPECT_TRUE(a->getParent() == root.get());
    EXPECT_TRUE(root->getParent() == NullFC);
    EXPECT_EQ(root->getMFChildren()->size(), 3u);
}

TEST_F(Children, areFoundByTheirIndex) {
    EXPECT_EQ(root->findChild(a), 0);
    EXPECT_EQ(root->findChild(b), 1);
    EXPECT_EQ(root->findChild(c), 2);
    EXPECT_EQ(a->findChild(b), -1);
    EXPECT_EQ(root->findChild(root), -1);
}

TEST_F(Children, addedAgainMoveToTheEnd) {
    root->addChild(a);
    EXPECT_EQ(childrenOf(root), "bca");
    EXPECT_EQ(a.getRefCount(), 1);
}

TEST_F(Children, areInsertedBeforeAnIndex) {
    root->insertChild(1, named("x"));
    EXPECT_EQ(childrenOf(root), "axbc");
    root->insertChild(0, named("y"));
    EXPECT_EQ(childrenOf(root), "yaxbc");
    root->insertChild(5, named("z"));
    EXPECT_EQ(childrenOf(root), "yaxbcz");
}

TEST_F(Children, areReplacedByIndex) {
    const UInt32 id = getContainerId(b);
    const NodePtr x = named("x");
    root->replaceChild(1, x);
    EXPECT_EQ(childrenOf(root), "axc");
    EXPECT_FALSE(isAlive(id));
    EXPECT_TRUE(x->getParent() == root.get());
    EXPECT_EQ(x.getRefCount(), 1);
}

TEST_F(Children, areReplacedByThemselves) {
    const NodePtr x = named("x");
    EXPECT_TRUE(root->replaceChildBy(c, x));
    EXPECT_EQ(childrenOf(root), "abx");
    Held<NodePtr> stranger(named("s"));
    Held<NodePtr> y(named("y"));
    EXPECT_FALSE(root->replaceChildBy(stranger, y));
    EXPECT_EQ(childrenOf(root), "abx");
    EXPECT_EQ(y.get().getRefCount(), 1);
}

TEST_F(Children, areRemovedByPointerAndIndex) {
    root->subChild(b);
    EXPECT_EQ(childrenOf(root), "ac");
    root->subChild(0u);
    EXPECT_EQ(childrenOf(root), "c");
}

TEST_F(Children, thatAreNoneStayUntouched) {
    const QuietLog quiet;
    Held<NodePtr> stranger(named("s"));
    root->subChild(stranger);
    root->subChild(NodePtr());
    EXPECT_EQ(childrenOf(root), "abc");
    EXPECT_EQ(stranger.get().getRefCount(), 1);
}

TEST_F(Children, nullIsIgnored) {
    root->addChild(NullFC);
    root->insertChild(0, NullFC);
    root->replaceChild(0, NullFC);
    EXPECT_EQ(childrenOf(root), "abc");
}

TEST_F(Children, moveBetweenParentsWithTheirOwnChildren) {
    b->addChild(a);
    EXPECT_EQ(childrenOf(root), "bc");
    c->addChild(b);
    EXPECT_EQ(childrenOf(root), "c");
    EXPECT_EQ(childrenOf(c), "b");
    EXPECT_EQ(childrenOf(b), "a");
    EXPECT_TRUE(a->getParent() == b);
}

TEST_F(Children, areFoundWhereverTheirSiblingsWent) {
    for (int i = 0; i < 40; ++i)
        root->addChild(named("x"));
    const NodePtr last = root->getChild(42);
    while (root->getChild(0) != last)
        root->subChild(0u);
    EXPECT_EQ(root->findChild(last), 0);
    for (int i = 0; i < 40; ++i)
        root->insertChild(0, named("y"));
    EXPECT_EQ(root->findChild(last), 40);
}

#if !defined(NDEBUG)
TEST(NodeDeathTest, childOutOfRangeStopsADebugBuild) {
    Held<NodePtr> node(Node::create());
    EXPECT_DEATH(node->getChild(0), "");
}
#endif

TEST(Node, isActiveWithAllBitsOfItsMask) {
    Held<NodePtr> node(Node::create());
    EXPECT_TRUE(node->getActive());
    EXPECT_EQ(node->getTravMask(), 0xFFFFFFFFu);
    node->setActive(false);
    EXPECT_EQ(node->getTravMask(), 0u);
    EXPECT_FALSE(node->getActive());
    node->setTravMask(5);
    EXPECT_FALSE(node->getActive());
    node->setActive(true);
    EXPECT_EQ(node->getTravMask(), 0xFFFFFFFFu);
}

TEST(Node, isMadeForACore) {
    TestShelfPtr core = TestShelf::create();
    Held<NodePtr> node(makeNodeFor(core));
    EXPECT_TRUE(node->getCore() == core);
    EXPECT_EQ(core.getRefCount(), 1);
    EXPECT_EQ(node.get().getRefCount(), 1);
}

TEST(Node, derivedOneIsANodeWithAFieldMore) {
    Held<TestMarkedNodePtr> marked(TestMarkedNode::create());
    marked->setMark(7);
    Held<NodePtr> parent(Node::create());
    parent->addChild(marked);
    EXPECT_EQ(TestMarkedNodePtr::dcast(parent->getChild(0))->getMark(), 7u);
    EXPECT_EQ(marked->getType().getNumFieldDescs(), 7u);
    parent->subChild(marked);
}

NodePtr shelfAt(Real32 x, Real32 y, Real32 z) {
    TestShelfPtr core = TestShelf::create();
    core->setOffset(Vec3f(x, y, z));
    return makeNodeFor(core);
}

TEST(ToWorld, multipliesTheCoresFromTheRootDown) {
    Held<NodePtr> root(shelfAt(1, 0, 0));
    const NodePtr middle = Node::create();
    const NodePtr leaf = shelfAt(0, 2, 0);
    root->addChild(middle);
    middle->addChild(leaf);
    Matrix world = leaf->getToWorld();
    EXPECT_EQ(world[3][0], 1.f);
    EXPECT_EQ(world[3][1], 2.f);
    middle->getToWorld(world);
    EXPECT_EQ(world[3][0], 1.f);
    EXPECT_EQ(world[3][1], 0.f);
}

TEST(ToWorld, ofAChainLongerThanUsual) {
    Held<NodePtr> root(shelfAt(1, 0, 0));
    NodePtr node = root;
    for (int i = 0; i < 200; ++i) {
        const NodePtr child = shelfAt(1, 0, 0);
        node->addChild(child);
        node = child;
    }
    EXPECT_EQ(node->getToWorld()[3][0], 201.f);
}

void boundsOf(const NodePtr& node, Pnt3f& low, Pnt3f& high) {
    node->updateVolume();
    node->getVolume(true).getBounds(low, high);
}

TEST(NodeVolume, containsTheCoreAndTheChildren) {
    Held<NodePtr> root(shelfAt(0, 0, 0));
    const NodePtr child = shelfAt(5, 0, 0);
    beginEditCP(root.get(), Node::ChildrenFieldMask);
    root->addChild(child);
    endEditCP(root.get(), Node::ChildrenFieldMask);
    Pnt3f low, high;
    boundsOf(root, low, high);
    EXPECT_EQ(low, Pnt3f(-1, -1, -1));
    EXPECT_EQ(high, Pnt3f(6, 1, 1));
}

TEST(NodeVolume, followsEditsBelow) {
    Held<NodePtr> root(shelfAt(0, 0, 0));
    TestShelfPtr core = TestShelf::create();
    const NodePtr child = makeNodeFor(core);
    beginEditCP(root.get(), Node::ChildrenFieldMask);
    root->addChild(child);
    endEditCP(root.get(), Node::ChildrenFieldMask);
    Pnt3f low, high;
    boundsOf(root, low, high);
    EXPECT_EQ(high, Pnt3f(1, 1, 1));

    beginEditCP(core, TestShelf::OffsetFieldMask);
    core->setOffset(Vec3f(0, 9, 0));
    endEditCP(core, TestShelf::OffsetFieldMask);
    boundsOf(root, low, high);
    EXPECT_EQ(high, Pnt3f(1, 10, 1));

    beginEditCP(root.get(), Node::ChildrenFieldMask);
    root->subChild(child);
    endEditCP(root.get(), Node::ChildrenFieldMask);
    boundsOf(root, low, high);
    EXPECT_EQ(high, Pnt3f(1, 1, 1));
}

TEST(NodeVolume, leavesInvisibleChildrenOut) {
    Held<NodePtr> root(shelfAt(0, 0, 0));
    const NodePtr child = shelfAt(5, 0, 0);
    beginEditCP(root.get(), Node::ChildrenFieldMask);
    root->addChild(child);
    endEditCP(root.get(), Node::ChildrenFieldMask);
    beginEditCP(child, Node::TravMaskFieldMask);
    child->setActive(false);
    endEditCP(child, Node::TravMaskFieldMask);
    Pnt3f low, high;
    boundsOf(root, low, high);
    EXPECT_EQ(high, Pnt3f(1, 1, 1));
}

TEST(CloneTree, copiesNodesAndSharesCores) {
    Held<NodePtr> root(shelfAt(1, 2, 3));
    setName(root.get(), std::string("original"));
    const NodePtr child = shelfAt(0, 0, 0);
    root->addChild(Node::create());
    root->addChild(child);
    child->addChild(Node::create());

    Held<NodePtr> copy(cloneTree(root));
    EXPECT_TRUE(copy.get() != root.get());
    EXPECT_TRUE(copy->getCore() == root->getCore());
    EXPECT_EQ(root->getCore().getRefCount(), 2);
    EXPECT_TRUE(getName(copy.get()) == NULL);
    EXPECT_TRUE(copy->getParent() == NullFC);
    ASSERT_EQ(copy->getNChildren(), 2u);
    EXPECT_EQ(copy->getChild(0)->getNChildren(), 0u);
    EXPECT_TRUE(copy->getChild(1)->getCore() == child->getCore());
    EXPECT_TRUE(copy->getChild(1) != child);
    EXPECT_EQ(copy->getChild(1)->getNChildren(), 1u);
    EXPECT_EQ(copy.get().getRefCount(), 1);
}

} // namespace
