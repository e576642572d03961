// Containers by number, types by number and name.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>

namespace {

using namespace osg;

FieldContainerFactory& factory() {
    return *FieldContainerFactory::the();
}

TEST(ContainerId, isNeverZeroAndGrows) {
    Held<NodePtr> first(Node::create());
    Held<NodePtr> second(Node::create());
    EXPECT_GT(getContainerId(first.get()), 0u);
    EXPECT_GT(getContainerId(second.get()), getContainerId(first.get()));
    EXPECT_EQ(first.get().getFieldContainerId(), getContainerId(first.get()));
}

TEST(ContainerId, isNotGivenAgain) {
    NodePtr node = Node::create();
    const UInt32 id = getContainerId(node);
    subRefCP(node);
    Held<NodePtr> next(Node::create());
    EXPECT_GT(getContainerId(next.get()), id);
    EXPECT_FALSE(isAlive(id));
}

TEST(ContainerId, prototypesComeFirst) {
    Held<NodePtr> node(Node::create());
    EXPECT_LT(getContainerId(Node::getClassType().getPrototype()), getContainerId(node.get()));
}

TEST(Factory, findsLivingContainersByNumber) {
    Held<NodePtr> node(Node::create());
    const FieldContainerPtr found = factory().getContainer(getContainerId(node.get()));
    EXPECT_TRUE(found == node.get());
    EXPECT_TRUE(NodePtr::dcast(found) == node.get());
}

TEST(Factory, findsNothingForZeroUnknownAndDestroyedNumbers) {
    EXPECT_TRUE(factory().getContainer(0) == NullFC);
    EXPECT_TRUE(factory().getContainer((std::numeric_limits<UInt32>::max)()) == NullFC);
    Held<NodePtr> last(Node::create());
    EXPECT_TRUE(factory().getContainer(getContainerId(last.get()) + 1) == NullFC);
}

TEST(Factory, findsTypesByNameWithItsCase) {
    ASSERT_TRUE(factory().findType("Node") != NULL);
    EXPECT_TRUE(*factory().findType("Node") == Node::getClassType());
    EXPECT_TRUE(factory().findType("node") == NULL);
    EXPECT_TRUE(factory().findType("NoSuchType") == NULL);
    EXPECT_TRUE(factory().findType("") == NULL);
    EXPECT_EQ(std::string(factory().findType("Name")->getCName()), "Name");
}

TEST(Factory, findsTypesByNumber) {
    EXPECT_TRUE(factory().findType(Node::getClassTypeId()) == &Node::getClassType());
    EXPECT_TRUE(factory().findType((std::numeric_limits<UInt32>::max)()) == NULL);
}

TEST(Factory, knowsGroupsByNumberAndName) {
    const UInt16 group = factory().findGroupId("Node");
    EXPECT_EQ(group, Node::getClassType().getGroupId());
    EXPECT_EQ(std::string(factory().findGroupName(group)), "Node");
    EXPECT_EQ(factory().findGroupId("NoSuchGroup"), 0);
    EXPECT_TRUE(factory().findGroupName((std::numeric_limits<UInt16>::max)()) == NULL);
}

TEST(Factory, createsByName) {
    FieldContainerPtr container = factory().createFieldContainer("TestCaption");
    ASSERT_TRUE(container != NullFC);
    EXPECT_EQ(container.getRefCount(), 0);
    EXPECT_EQ(std::string(container->getTypeName()), "TestCaption");
    subRefCP(container);

    NodePtr node = factory().createNode("Node");
    EXPECT_TRUE(node != NullFC);
    subRefCP(node);
    NodeCorePtr core = factory().createNodeCore("TestShelf");
    EXPECT_TRUE(core != NullFC);
    subRefCP(core);
    AttachmentPtr attachment = factory().createAttachment("Name");
    EXPECT_TRUE(attachment != NullFC);
    subRefCP(attachment);
}

TEST(Factory, createsNothingFromUnknownAndAbstractTypes) {
    EXPECT_TRUE(factory().createFieldContainer("NoSuchType") == NullFC);
    EXPECT_TRUE(factory().createFieldContainer("Attachment") == NullFC);
    EXPECT_TRUE(factory().createFieldContainer("NodeCore") == NullFC);
    EXPECT_TRUE(factory().createFieldContainer("AttachmentContainer") == NullFC);
    EXPECT_TRUE(factory().createFieldContainer("FieldContainer") == NullFC);
}

TEST(Factory, walksAllTypes) {
    std::set<std::string> names;
    for (auto it = factory().beginTypes(); it != factory().endTypes(); ++it) {
        EXPECT_EQ(it->first, it->second->getId());
        names.insert(it->second->getCName());
    }
    for (const char* name : {"FieldContainer", "Node", "NodeCore", "Attachment", "Name",
                             "TestCaption", "TestShotList", "TestMarkedNode"})
        EXPECT_EQ(names.count(name), 1u) << name;
}

TEST(Factory, typesThatComeLaterWaitUntilAskedFor) {
    static FieldContainerType late("TestLateAttachment", "TestLateParent", NULL, NULL, NULL, NULL,
                                   0);
    static FieldContainerType parent("TestLateParent", "Attachment", NULL, NULL, NULL, NULL, 0);
    EXPECT_TRUE(factory().findType("TestLateAttachment") == NULL);
    EXPECT_TRUE(late.getParent() == NULL);
    EXPECT_EQ(late.getNumFieldDescs(), 0u);

    EXPECT_TRUE(factory().initializePendingTypes());
    EXPECT_TRUE(factory().findType("TestLateAttachment") == &late);
    EXPECT_TRUE(late.getParent() == &parent);
    EXPECT_TRUE(parent.getParent() == &Attachment::getClassType());
    EXPECT_EQ(late.getNumFieldDescs(), 2u);
    EXPECT_TRUE(late.isAttachment());
    EXPECT_TRUE(late.isAbstract());
    EXPECT_TRUE(factory().initializePendingTypes());
}

TEST(Factory, secondTypeOfANameIsNotFound) {
    ::testing::internal::CaptureStderr();
    static FieldContainerType second("Node", "NodeCore", NULL, NULL, NULL, NULL, 0);
    EXPECT_TRUE(FieldContainerFactory::the()->initializePendingTypes());
    EXPECT_TRUE(FieldContainerFactory::the()->findType("Node") == &Node::getClassType());
    EXPECT_TRUE(second.getParent() == NULL);
    ::testing::internal::GetCapturedStderr();
}

TEST(Factory, forgetsTypesThatEnd) {
    {
        FieldContainerType passing("TestPassing", "Attachment", NULL, NULL, NULL, NULL, 0);
        FieldContainerFactory::the()->initializePendingTypes();
        EXPECT_TRUE(FieldContainerFactory::the()->findType("TestPassing") == &passing);
    }
    EXPECT_TRUE(FieldContainerFactory::the()->findType("TestPassing") == NULL);
}

} // namespace
