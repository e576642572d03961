// Attachments by group and binding, and names.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <OpenSG/OSGSimpleAttachments.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace osg;

TEST(Attachments, areCountedAndKnowTheirContainer) {
    Held<NodePtr> node(Node::create());
    Held<TestShotListPtr> list(TestShotList::create());
    node->addAttachment(list);
    EXPECT_EQ(list.get().getRefCount(), 2);
    ASSERT_EQ(list->getParents().size(), 1u);
    EXPECT_TRUE(list->getParents()[0] == node.get());
    EXPECT_TRUE(node->findAttachment(TestShotList::getClassType()) == list.get());

    node->subAttachment(list);
    EXPECT_EQ(list.get().getRefCount(), 1);
    EXPECT_EQ(list->getParents().size(), 0u);
    EXPECT_TRUE(node->findAttachment(TestShotList::getClassType()) == NullFC);
}

TEST(Attachments, addedAgainAreCountedOnce) {
    Held<NodePtr> node(Node::create());
    TestShotListPtr list = TestShotList::create();
    node->addAttachment(list);
    node->addAttachment(list);
    EXPECT_EQ(list.getRefCount(), 1);
    EXPECT_EQ(list->getParents().size(), 1u);
}

TEST(Attachments, takeThePlaceOfTheirGroup) {
    Held<NodePtr> node(Node::create());
    TestShotListPtr first = TestShotList::create();
    const UInt32 firstId = getContainerId(first);
    TestShotListPtr second = TestShotList::create();
    node->addAttachment(first);
    node->addAttachment(second);
    EXPECT_FALSE(isAlive(firstId));
    EXPECT_TRUE(node->findAttachment(TestShotList::getClassType()) == second);
    EXPECT_EQ(node->getSFAttachments()->getValue().size(), 1u);
}

TEST(Attachments, ofDerivedTypesHaveTheirOwnPlace) {
    Held<NodePtr> node(Node::create());
    TestShotListPtr list = TestShotList::create();
    TestReelPtr reel = TestReel::create();
    node->addAttachment(list);
    node->addAttachment(reel);
    EXPECT_TRUE(node->findAttachment(TestShotList::getClassType()) == list);
    EXPECT_TRUE(node->findAttachment(TestReel::getClassType()) == reel);
}

TEST(Attachments, thatShareAGroupShareThePlace) {
    Held<NodePtr> node(Node::create());
    TestTrailerPtr trailer = TestTrailer::create();
    node->addAttachment(trailer);
    const AttachmentPtr found = node->findAttachment(TestShotList::getClassType());
    EXPECT_TRUE(found == trailer);
    EXPECT_TRUE(TestReelPtr::dcast(found) == NullFC);
    EXPECT_TRUE(TestShotListPtr::dcast(found) != NullFC);

    Held<TestShotListPtr> other(TestShotList::create());
    node->subAttachment(other);
    EXPECT_TRUE(node->findAttachment(TestShotList::getClassType()) == NullFC);
    EXPECT_EQ(other.get().getRefCount(), 1);
}

TEST(Attachments, haveAPlaceForEachBinding) {
    Held<NodePtr> node(Node::create());
    TestShotListPtr zero = TestShotList::create(), nine = TestShotList::create();
    node->addAttachment(zero);
    node->addAttachment(nine, 9);
    const UInt32 group = TestShotList::getClassType().getGroupId();
    EXPECT_TRUE(node->findAttachment(group) == zero);
    EXPECT_TRUE(node->findAttachment(group, 9) == nine);
    EXPECT_TRUE(node->findAttachment(TestShotList::getClassType(), 9) == nine);
    EXPECT_TRUE(node->findAttachment(group, 8) == NullFC);

    const AttachmentMap& map = node->getSFAttachments()->getValue();
    ASSERT_EQ(map.size(), 2u);
    EXPECT_EQ(map.begin()->first, group << 16);
    EXPECT_EQ(map.rbegin()->first, (group << 16) | 9);

    node->subAttachment(zero, 9);
    EXPECT_TRUE(node->findAttachment(group, 9) == NullFC);
    EXPECT_TRUE(node->findAttachment(group) == zero);
}

TEST(Attachments, areSharedByContainers) {
    NodePtr a = Node::create(), b = Node::create();
    addRefCP(a);
    addRefCP(b);
    TestShotListPtr list = TestShotList::create();
    const UInt32 id = getContainerId(list);
    a->addAttachment(list);
    b->addAttachment(list);
    EXPECT_EQ(list.getRefCount(), 2);
    EXPECT_EQ(list->getParents().size(), 2u);
    subRefCP(a);
    EXPECT_TRUE(isAlive(id));
    ASSERT_EQ(list->getParents().size(), 1u);
    EXPECT_TRUE(list->getParents()[0] == b);
    subRefCP(b);
    EXPECT_FALSE(isAlive(id));
}

TEST(Attachments, goOnCoresToo) {
    Held<TestShelfPtr> core(TestShelf::create());
    TestShotListPtr list = TestShotList::create();
    core->addAttachment(list);
    EXPECT_TRUE(core->findAttachment(TestShotList::getClassType()) == list);
}

TEST(Attachments, nullIsIgnored) {
    Held<NodePtr> node(Node::create());
    node->addAttachment(NullFC);
    node->subAttachment(NullFC);
    EXPECT_TRUE(node->getSFAttachments()->getValue().empty());
}

TEST(Attachments, areWrittenToFilesUnlessInternal) {
    Held<TestShotListPtr> list(TestShotList::create());
    EXPECT_FALSE(list->getSFInternal()->getValue());
    list->setInternal(true);
    EXPECT_TRUE(list->getSFInternal()->getValue());
    std::string text;
    EXPECT_EQ(list->getField("internal")->getValueByStr(text), "TRUE");
}

TEST(Attachments, textOfTheMapIsItsType) {
    Held<NodePtr> node(Node::create());
    Field* map = node->getField("attachments");
    std::string text;
    EXPECT_EQ(map->getValueByStr(text), "AttachmentMap");
    EXPECT_EQ(std::string(map->getContentType().getCName()), "AttachmentMap");
}

TEST(Names, areMissingAtFirst) {
    Held<NodePtr> node(Node::create());
    EXPECT_TRUE(getName(node.get()) == NULL);
}

TEST(Names, areSetChangedAndRemoved) {
    Held<NodePtr> node(Node::create());
    setName(node.get(), std::string("arm"));
    ASSERT_TRUE(getName(node.get()) != NULL);
    EXPECT_EQ(std::string(getName(node.get())), "arm");
    const AttachmentPtr first = node->findAttachment(Name::getClassType());

    setName(node.get(), "leg");
    EXPECT_EQ(std::string(getName(node.get())), "leg");
    EXPECT_TRUE(node->findAttachment(Name::getClassType()) == first);

    setName(node.get(), static_cast<const Char8*>(NULL));
    EXPECT_TRUE(getName(node.get()) == NULL);
    EXPECT_TRUE(node->findAttachment(Name::getClassType()) == NullFC);
}

TEST(Names, mayBeEmpty) {
    Held<NodePtr> node(Node::create());
    setName(node.get(), std::string());
    ASSERT_TRUE(getName(node.get()) != NULL);
    EXPECT_EQ(std::string(getName(node.get())), "");
}

TEST(Names, areAttachmentsWithOneField) {
    Held<NodePtr> node(Node::create());
    setName(node.get(), std::string("head"));
    const NamePtr name = NamePtr::dcast(node->findAttachment(Name::getClassType()));
    ASSERT_TRUE(name != NullFC);
    EXPECT_EQ(name->getFieldPtr()->getValue(), "head");
    std::string text;
    EXPECT_EQ(AttachmentPtr(name)->getField("name")->getValueByStr(text), "\"head\"");
}

TEST(Names, ofNullDoNotExist) {
    EXPECT_TRUE(getName(NodePtr()) == NULL);
}

TEST(Names, goOnCores) {
    Held<TestShelfPtr> core(TestShelf::create());
    setName(core.get(), std::string("board"));
    EXPECT_EQ(std::string(getName(core.get())), "board");
}

TEST(Names, goWithTheirContainer) {
    NodePtr node = Node::create();
    setName(node, std::string("gone"));
    const UInt32 id = getContainerId(node->findAttachment(Name::getClassType()));
    subRefCP(node);
    EXPECT_FALSE(isAlive(id));
}

} // namespace
