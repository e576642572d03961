// What container types tell about themselves and their fields.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <OpenSG/OSGAttachmentFields.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGFieldFactory.h>
#include <OpenSG/OSGInt32Fields.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace osg;

/// Name, field type and whether internal, of all fields of a type.
std::vector<std::string> fieldsOf(const FieldContainerType& constType) {
    FieldContainerType& type = const_cast<FieldContainerType&>(constType);
    std::vector<std::string> result;
    for (UInt32 i = 1; i <= type.getNumFieldDescs(); ++i) {
        const FieldDescription* desc = type.getFieldDescription(i);
        // Of parents, OpenSG's description tells another type than the field has.
        const std::string name = desc->getCName();
        result.push_back(
            std::to_string(desc->getFieldId()) + " " + name +
            (name == "parents" ? "" : std::string(" ") + desc->getFieldType().getCName()) +
            (desc->isInternal() ? " *" : ""));
    }
    return result;
}

typedef std::vector<std::string> Lines;

TEST(ContainerType, hasNameNumberAndParent) {
    EXPECT_EQ(std::string(Node::getClassType().getCName()), "Node");
    EXPECT_EQ(std::string(Node::getClassType().getName().str()), "Node");
    EXPECT_EQ(Node::getClassTypeId(), Node::getClassType().getId());
    ASSERT_TRUE(Node::getClassType().getParent() != NULL);
    EXPECT_TRUE(*Node::getClassType().getParent() == AttachmentContainer::getClassType());
    EXPECT_TRUE(FieldContainer::getClassType().getParent() == NULL);
    EXPECT_TRUE(Node::getClassType() != NodeCore::getClassType());
}

TEST(ContainerType, ofAContainerIsThatOfItsClass) {
    Held<NodePtr> node(TestMarkedNode::create());
    EXPECT_TRUE(node->getType() == TestMarkedNode::getClassType());
    EXPECT_EQ(node->getTypeId(), TestMarkedNode::getClassTypeId());
    EXPECT_EQ(std::string(node->getTypeName()), "TestMarkedNode");
    EXPECT_EQ(node->getGroupId(), TestMarkedNode::getClassType().getGroupId());
}

TEST(ContainerType, isDerivedFromItselfAndItsParentsOnly) {
    FieldContainerType& type = TestMarkedNode::getClassType();
    EXPECT_TRUE(type.isDerivedFrom(TestMarkedNode::getClassType()));
    EXPECT_TRUE(type.isDerivedFrom(Node::getClassType()));
    EXPECT_TRUE(type.isDerivedFrom(AttachmentContainer::getClassType()));
    EXPECT_TRUE(type.isDerivedFrom(FieldContainer::getClassType()));
    EXPECT_FALSE(type.isDerivedFrom(NodeCore::getClassType()));
    EXPECT_FALSE(Node::getClassType().isDerivedFrom(type));
}

TEST(ContainerType, knowsItsKind) {
    EXPECT_TRUE(Node::getClassType().isNode());
    EXPECT_TRUE(TestMarkedNode::getClassType().isNode());
    EXPECT_FALSE(Node::getClassType().isNodeCore());
    EXPECT_FALSE(Node::getClassType().isAttachment());
    EXPECT_TRUE(TestShelf::getClassType().isNodeCore());
    EXPECT_FALSE(TestShelf::getClassType().isNode());
    EXPECT_TRUE(TestReel::getClassType().isAttachment());
    EXPECT_FALSE(TestCaption::getClassType().isAttachment());
    EXPECT_FALSE(FieldContainer::getClassType().isNode());
}

TEST(ContainerType, isAbstractWithoutPrototype) {
    EXPECT_TRUE(FieldContainer::getClassType().isAbstract());
    EXPECT_TRUE(Attachment::getClassType().isAbstract());
    EXPECT_TRUE(AttachmentContainer::getClassType().isAbstract());
    EXPECT_TRUE(NodeCore::getClassType().isAbstract());
    EXPECT_TRUE(NodeCore::getClassType().getPrototype() == NullFC);
    EXPECT_FALSE(Node::getClassType().isAbstract());
    EXPECT_TRUE(Node::getClassType().getPrototype() != NullFC);
}

TEST(ContainerType, createsOnlyItsOwnKind) {
    FieldContainerType& type = TestShelf::getClassType();
    NodeCorePtr core = type.createNodeCore();
    EXPECT_TRUE(core != NullFC);
    subRefCP(core);
    EXPECT_TRUE(type.createNode() == NullFC);
    EXPECT_TRUE(type.createAttachment() == NullFC);
    EXPECT_TRUE(NodeCore::getClassType().createFieldContainer() == NullFC);
    FieldContainerPtr caption = TestCaption::getClassType().createFieldContainer();
    EXPECT_TRUE(TestCaptionPtr::dcast(caption) != NullFC);
    subRefCP(caption);
}

TEST(ContainerType, isItsOwnGroupUnlessItNamesOne) {
    EXPECT_NE(TestReel::getClassType().getGroupId(), TestShotList::getClassType().getGroupId());
    EXPECT_EQ(TestTrailer::getClassType().getGroupId(), TestShotList::getClassType().getGroupId());
    EXPECT_NE(TestMarkedNode::getClassType().getGroupId(), Node::getClassType().getGroupId());
    EXPECT_EQ(Name::getClassType().getGroupId(), FieldContainerFactory::the()->findGroupId("name"));
}

TEST(FieldDescriptions, areCountedFromOne) {
    FieldContainerType& type = Node::getClassType();
    EXPECT_EQ(type.getNumFieldDescs(), 6u);
    EXPECT_TRUE(type.getFieldDescription(0) == NULL);
    EXPECT_TRUE(type.getFieldDescription(7) == NULL);
    for (UInt32 i = 1; i <= 6; ++i) {
        ASSERT_TRUE(type.getFieldDescription(i) != NULL);
        EXPECT_EQ(type.getFieldDescription(i)->getFieldId(), i);
        EXPECT_EQ(type.getFieldDescription(i)->getFieldMask(), BitVector(1) << i);
    }
}

TEST(FieldDescriptions, ofTheBasicTypes) {
    EXPECT_EQ(fieldsOf(FieldContainer::getClassType()), Lines());
    EXPECT_EQ(fieldsOf(AttachmentContainer::getClassType()),
              Lines({"1 attachments SFAttachmentMap"}));
    EXPECT_EQ(fieldsOf(Attachment::getClassType()), Lines({"1 parents *", "2 internal SFBool"}));
    EXPECT_EQ(fieldsOf(NodeCore::getClassType()),
              Lines({"1 attachments SFAttachmentMap", "2 parents *"}));
    EXPECT_EQ(fieldsOf(Name::getClassType()),
              Lines({"1 parents *", "2 internal SFBool", "3 name SFString"}));
    // The mask's description names a bool although the field is a number.
    EXPECT_EQ(
        fieldsOf(Node::getClassType()),
        Lines({"1 attachments SFAttachmentMap", "2 volume SFDynamicVolume", "3 travMask SFBool",
               "4 parent SFNodePtr *", "5 children MFNodePtr", "6 core SFNodeCorePtr"}));
}

TEST(FieldDescriptions, ofDerivedTypesContinueThoseOfTheParent) {
    EXPECT_EQ(fieldsOf(TestShotList::getClassType()),
              Lines({"1 parents *", "2 internal SFBool", "3 heading SFString",
                     "4 subject SFNodePtr", "5 pace SFReal32", "6 captions MFTestCaptionPtr"}));
    EXPECT_EQ(fieldsOf(TestReel::getClassType()), fieldsOf(TestShotList::getClassType()));
    EXPECT_EQ(TestMarkedNode::getClassType().getFieldDescription(7)->getName().str(),
              std::string("mark"));
}

TEST(FieldDescriptions, areFoundByNameWithItsCase) {
    FieldContainerType& type = Node::getClassType();
    ASSERT_TRUE(type.findFieldDescription("children") != NULL);
    EXPECT_EQ(type.findFieldDescription("children")->getFieldId(), 5u);
    EXPECT_EQ(type.findFieldDescription("attachments")->getFieldId(), 1u);
    EXPECT_TRUE(type.findFieldDescription("Children") == NULL);
    EXPECT_TRUE(type.findFieldDescription("nothing") == NULL);
}

TEST(FieldMasks, areOneShiftedByTheFieldId) {
    EXPECT_EQ(AttachmentContainer::AttachmentsFieldMask, BitVector(2));
    EXPECT_EQ(Node::AttachmentsFieldMask, BitVector(2));
    EXPECT_EQ(Node::TravMaskFieldMask, BitVector(8));
    EXPECT_EQ(Node::ChildrenFieldMask, BitVector(32));
    EXPECT_EQ(Node::CoreFieldMask, BitVector(64));
    EXPECT_EQ(FieldBits::AllFields, ~BitVector(0));
    EXPECT_EQ(FieldBits::NoField, BitVector(0));
}

TEST(ContainerFields, areFoundByNumberAndName) {
    Held<TestShotListPtr> list(TestShotList::create());
    list->setHeading("Dawn");
    Field* heading = list->getField(3);
    ASSERT_TRUE(heading != NULL);
    EXPECT_TRUE(list->getField("heading") == heading);
    EXPECT_TRUE(heading->getType() == SFString::getClassType());
    EXPECT_EQ(dynamic_cast<SFString*>(heading)->getValue(), "Dawn");
    EXPECT_TRUE(list->getField("Heading") == NULL);
    EXPECT_TRUE(list->getField(0u) == NULL);
    EXPECT_TRUE(list->getField(7) == NULL);
}

TEST(ContainerFields, theirTypeIsNotAlwaysThatOfTheDescription) {
    Held<NodePtr> node(Node::create());
    Field* mask = node->getField("travMask");
    ASSERT_TRUE(mask != NULL);
    EXPECT_EQ(std::string(mask->getType().getCName()), "SFUInt32");
    std::string text;
    EXPECT_EQ(mask->getValueByStr(text), "4294967295");
}

TEST(FieldTypes, tellNameContentAndCardinality) {
    const FieldType& single = SFNodePtr::getClassType();
    const FieldType& multi = MFNodePtr::getClassType();
    EXPECT_EQ(std::string(single.getCName()), "SFNodePtr");
    EXPECT_EQ(std::string(multi.getCName()), "MFNodePtr");
    EXPECT_EQ(std::string(single.getContentType().getCName()), "NodePtr");
    EXPECT_TRUE(single.getContentType() == multi.getContentType());
    EXPECT_EQ(single.getCardinality(), FieldType::SINGLE_FIELD);
    EXPECT_EQ(multi.getCardinality(), FieldType::MULTI_FIELD);
}

TEST(FieldTypes, areFoundByNameAndNumber) {
    FieldFactory& fields = FieldFactory::the();
    EXPECT_TRUE(fields.getFieldType("SFNodePtr") == &SFNodePtr::getClassType());
    EXPECT_TRUE(fields.getFieldType(MFFieldContainerPtr::getClassType().getId()) ==
                &MFFieldContainerPtr::getClassType());
    EXPECT_TRUE(fields.getFieldType("SFTestCaptionPtr") == &SFTestCaptionPtr::getClassType());
    EXPECT_TRUE(fields.getFieldType("SFNothing") == NULL);
}

TEST(SerialField, keepsAllBitsOfItsText) {
    Held<TestCaptionPtr> caption(TestCaption::create());
    Field* serial = caption->getField("serial");
    ASSERT_TRUE(serial != NULL);
    serial->pushValueByStr("18446744073709551615");
    std::string text;
    EXPECT_EQ(serial->getValueByStr(text), "18446744073709551615");
    EXPECT_EQ(dynamic_cast<SFIdent64*>(serial)->getValue(), 18446744073709551615ull);
    EXPECT_EQ(std::string(serial->getContentType().getCName()), "Ident64");
    EXPECT_EQ(std::string(serial->getType().getCName()), "SFIdent64");
    EXPECT_TRUE(serial->getType() != SFUInt64::getClassType());
}

TEST(SerialField, isScannedAsAnInt32) {
    EXPECT_EQ(SFIdent64::getClassType().getScanTypeId(), SFInt32::getClassType().getId());
    EXPECT_EQ(SFUInt64::getClassType().getScanTypeId(), SFUInt64::getClassType().getId());
}

} // namespace
