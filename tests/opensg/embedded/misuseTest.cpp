// What the embedded scene graph does where OpenSG leaves the outcome open.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <OpenSG/OSGAction.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGLog.h>
#include <OpenSG/OSGNodeCoreFields.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace osg;

#if !defined(NDEBUG)
TEST(MisuseDeathTest, useOfNullStopsADebugBuild) {
    NodePtr node;
    EXPECT_DEATH(node->setTravMask(1), "null pointer");
    EXPECT_DEATH(getContainerId(node), "null pointer");
    TestShelfPtr core;
    EXPECT_DEATH(core->setOffset(Vec3f()), "null pointer");
}

TEST(MisuseDeathTest, releaseOfADestroyedContainerStopsADebugBuild) {
    NodePtr node = Node::create();
    NodePtr dangling = node;
    subRefCP(node);
    EXPECT_DEATH(subRefCP(dangling), "");
    EXPECT_DEATH(addRefCP(dangling), "");
}
#endif

class Misuse : public ::testing::Test {
  protected:
    void SetUp() override { ::testing::internal::CaptureStderr(); }
    void TearDown() override {
        const std::string lines = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(lines.compare(0, 8, "WARNING:"), 0) << lines;
    }
};

TEST_F(Misuse, nodeIsNotPutBelowItself) {
    Held<NodePtr> root(Node::create());
    const NodePtr child = Node::create();
    const NodePtr grandchild = Node::create();
    root->addChild(child);
    child->addChild(grandchild);
    grandchild->addChild(root);
    grandchild->insertChild(0, child);
    root->addChild(root);
    child->replaceChild(0, root);
    EXPECT_TRUE(root->getParent() == NullFC);
    EXPECT_EQ(root->getNChildren(), 1u);
    EXPECT_EQ(grandchild->getNChildren(), 0u);
    EXPECT_TRUE(child->getChild(0) == grandchild);
    EXPECT_EQ(root.get().getRefCount(), 1);
    EXPECT_EQ(child.getRefCount(), 1);
}

TEST_F(Misuse, typeWaitsForItsParent) {
    static FieldContainerType orphan("TestOrphan", "TestLateGuardian", NULL, NULL, NULL, NULL, 0);
    EXPECT_TRUE(FieldContainerFactory::the()->initializePendingTypes());
    EXPECT_TRUE(FieldContainerFactory::the()->findType("TestOrphan") == NULL);

    static FieldContainerType parent("TestLateGuardian", "NodeCore", NULL, NULL, NULL, NULL, 0);
    EXPECT_TRUE(FieldContainerFactory::the()->initializePendingTypes());
    EXPECT_TRUE(FieldContainerFactory::the()->findType("TestOrphan") == &orphan);
    EXPECT_TRUE(orphan.isNodeCore());
}

TEST(EmbeddedFactory, tellsWhatPointersPointAt) {
    const FieldContainerFactory& factory = *FieldContainerFactory::the();
    EXPECT_TRUE(factory.findPointedType(SFNodeCorePtr::getClassType().getContentType()) ==
                &NodeCore::getClassType());
    EXPECT_TRUE(factory.findPointedType(MFTestCaptionPtr::getClassType().getContentType()) ==
                &TestCaption::getClassType());
    EXPECT_TRUE(factory.findPointedType(SFString::getClassType().getContentType()) == NULL);
}

TEST(EmbeddedPointerField, takesOnlyContainersOfItsTypeFromBytes) {
    Held<NodePtr> node(Node::create());
    Held<TestShelfPtr> core(TestShelf::create());
    MemoryDataHandler bytes;
    bytes.putValue(getContainerId(node.get()));
    bytes.putValue(getContainerId(core.get()));
    bytes.putValue(UInt32(0));
    bytes.putValue(~UInt32(0));

    SFNodeCorePtr field;
    field.setValue(core);
    field.copyFromBin(bytes);
    EXPECT_TRUE(field.getValue() == NullFC);
    field.copyFromBin(bytes);
    EXPECT_TRUE(field.getValue() == core.get());
    field.copyFromBin(bytes);
    EXPECT_TRUE(field.getValue() == NullFC);
    field.copyFromBin(bytes);
    EXPECT_TRUE(field.getValue() == NullFC);
}

int entered = 0;
int left = 0;

TEST(EmbeddedTraversal, entersAndLeavesANullRootOnce) {
    const auto enter = [](NodePtr& node) -> Action::ResultE {
        entered += node == NullFC ? 1 : 100;
        return Action::Continue;
    };
    const auto leave = [](NodePtr& node, Action::ResultE result) -> Action::ResultE {
        left += node == NullFC ? 1 : 100;
        return result;
    };
    EXPECT_EQ(
        traverse(NodePtr(), osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(enter),
                 osgTypedFunctionFunctor2CPtrRef<Action::ResultE, NodePtr, Action::ResultE>(leave)),
        Action::Continue);
    EXPECT_EQ(entered, 1);
    EXPECT_EQ(left, 1);
}

} // namespace
