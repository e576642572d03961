// A program's own containers: copies, binary form, pointer fields.
#include "opensg/bytesInMemory.h"
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGLog.h>
#include <OpenSG/OSGNodeCoreFields.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace osg;

TEST(CustomContainer, isCopiedWithItsValuesAndCountsThem) {
    Held<TestShotListPtr> list(TestShotList::create());
    Held<NodePtr> subject(Node::create());
    Held<TestCaptionPtr> caption(TestCaption::create());
    list->setHeading("Noon");
    list->setPace(0.5f);
    list->setSubject(subject);
    list->addCaption(caption);

    TestShotListPtr copy = TestShotListPtr::dcast(list->shallowCopy());
    ASSERT_TRUE(copy != NullFC);
    EXPECT_EQ(copy.getRefCount(), 0);
    EXPECT_NE(getContainerId(copy), getContainerId(list.get()));
    EXPECT_EQ(copy->getHeading(), "Noon");
    EXPECT_EQ(copy->getPace(), 0.5f);
    EXPECT_TRUE(copy->getSubject() == subject.get());
    EXPECT_EQ(subject.get().getRefCount(), 3);
    EXPECT_EQ(caption.get().getRefCount(), 3);
    subRefCP(copy);
    EXPECT_EQ(subject.get().getRefCount(), 2);
    EXPECT_EQ(caption.get().getRefCount(), 2);
}

TEST(CustomContainer, copyOfAnAttachedOneIsNotAttached) {
    Held<NodePtr> node(Node::create());
    const TestShotListPtr list = TestShotList::create();
    node->addAttachment(list);
    FieldContainerPtr copy = list->shallowCopy();
    EXPECT_EQ(TestShotListPtr::dcast(copy)->getParents().size(), 0u);
    subRefCP(copy);
}

TEST(CustomContainer, typeOfADerivedOneIsItsOwn) {
    Held<TestReelPtr> reel(TestReel::create());
    const TestShotListPtr list = reel.get();
    EXPECT_EQ(std::string(list->getTypeName()), "TestReel");
    FieldContainerPtr copy = list->shallowCopy();
    EXPECT_TRUE(TestReelPtr::dcast(copy) != NullFC);
    subRefCP(copy);
}

TEST(CustomContainer, binaryFormHoldsTheFieldsOfTheMask) {
    Held<TestShotListPtr> list(TestShotList::create());
    EXPECT_EQ(list->getBinSize(FieldBits::NoField), 0u);
    EXPECT_EQ(list->getBinSize(TestShotList::PaceFieldMask), 4u);
    EXPECT_EQ(list->getBinSize(TestShotList::PaceFieldMask | TestShotList::SubjectFieldMask), 8u);
}

TEST(CustomContainer, comesBackFromItsBinaryForm) {
    Held<TestShotListPtr> list(TestShotList::create());
    Held<NodePtr> subject(Node::create());
    Held<TestCaptionPtr> first(TestCaption::create());
    Held<TestCaptionPtr> second(TestCaption::create());
    list->setHeading("A \"quoted\" heading");
    list->setPace(1.f / 3.f);
    list->setSubject(subject);
    list->addCaption(first);
    list->addCaption(second);
    list->addCaption(first);

    const BitVector mask = FieldBits::AllFields & ~TestShotList::ParentsFieldMask;
    BytesInMemory stream;
    list->copyToBin(stream, mask);
    EXPECT_EQ(stream.getBytes().size(), list->getBinSize(mask));
    // internal 1, heading 4 + 18 + 1, subject 4, pace 4, captions 4 + 3 * 4
    EXPECT_EQ(stream.getBytes().size(), 1u + 23u + 4u + 4u + 16u);

    Held<TestShotListPtr> other(TestShotList::create());
    other->copyFromBin(stream, mask);
    EXPECT_EQ(other->getHeading(), "A \"quoted\" heading");
    EXPECT_EQ(other->getPace(), 1.f / 3.f);
    EXPECT_TRUE(other->getSubject() == subject.get());
    ASSERT_EQ(other->getCaptions().size(), 3u);
    EXPECT_TRUE(other->getCaptions()[0] == first.get());
    EXPECT_TRUE(other->getCaptions()[1] == second.get());
    EXPECT_TRUE(other->getCaptions()[2] == first.get());
    // The stream's pointers are not counted: the container is told to.
    EXPECT_EQ(subject.get().getRefCount(), 2);
    endEditCP(other.get(), mask, ChangedOrigin::Abstract | ChangedOrigin::AbstrIncRefCount);
    EXPECT_EQ(subject.get().getRefCount(), 3);
}

TEST(PointerFields, mayBeUsedAsFieldsOfAnyPointer) {
    Held<TestShotListPtr> list(TestShotList::create());
    Held<NodePtr> subject(Node::create());
    Held<TestCaptionPtr> caption(TestCaption::create());

    Field* single = list->getField("subject");
    static_cast<SFFieldContainerPtr*>(single)->setValue(subject.get());
    EXPECT_TRUE(list->getSubject() == subject.get());
    EXPECT_TRUE(static_cast<SFFieldContainerPtr*>(single)->getValue() == subject.get());

    Field* multi = list->getField("captions");
    MFFieldContainerPtr* any = static_cast<MFFieldContainerPtr*>(multi);
    any->push_back(caption.get());
    any->push_back(NullFC);
    EXPECT_EQ(any->size(), 2u);
    EXPECT_EQ(list->getCaptions().size(), 2u);
    EXPECT_TRUE(list->getCaptions()[0] == caption.get());
    EXPECT_TRUE((*any)[0] == caption.get());
    EXPECT_EQ(multi->getSize(), 2u);
    any->clear();
    static_cast<SFFieldContainerPtr*>(single)->setValue(NullFC);
    EXPECT_TRUE(list->getCaptions().empty());
}

TEST(PointerFields, keepTheirOwnType) {
    Held<NodePtr> node(Node::create());
    Field* core = node->getField("core");
    EXPECT_TRUE(core->getType() == SFNodeCorePtr::getClassType());
    EXPECT_TRUE(core->getType() != SFFieldContainerPtr::getClassType());
    EXPECT_EQ(std::string(core->getContentType().getCName()), "NodeCorePtr");
    EXPECT_TRUE(dynamic_cast<SFNodeCorePtr*>(core) != NULL);
    EXPECT_TRUE(dynamic_cast<SFNodePtr*>(core) == NULL);
    EXPECT_TRUE(dynamic_cast<MFNodePtr*>(node->getField("children")) != NULL);
}

TEST(PointerFields, haveTheListsInterface) {
    Held<NodePtr> a(Node::create());
    Held<NodePtr> b(Node::create());
    Held<NodePtr> c(Node::create());
    MFNodePtr list;
    EXPECT_TRUE(list.empty());
    list.push_back(a);
    list.push_back(c);
    MFNodePtr::iterator at = list.insert(list.begin() + 1, b);
    EXPECT_TRUE(*at == b.get());
    EXPECT_TRUE(list.front() == a.get());
    EXPECT_TRUE(list.back() == c.get());
    EXPECT_TRUE(list.find(b) == list.begin() + 1);
    EXPECT_TRUE(list.find(NodePtr()) == list.end());
    at = list.erase(list.begin());
    EXPECT_TRUE(*at == b.get());
    EXPECT_EQ(list.size(), 2u);
    UInt32 nodes = 0;
    for (MFNodePtr::iterator it = list.begin(); it != list.end(); ++it)
        nodes += (*it)->getNChildren() + 1;
    EXPECT_EQ(nodes, 2u);
    list.resize(3);
    EXPECT_TRUE(list[2] == NullFC);
    MFNodePtr other;
    other.setValues(list);
    EXPECT_EQ(other.size(), 3u);
    list.clear();
    EXPECT_EQ(other.size(), 3u);
}

TEST(PointerFields, showAnAddressOrNil) {
    SFNodePtr field;
    std::string text = "before";
    EXPECT_EQ(field.getValueByStr(text), "(nil)");
    Held<NodePtr> node(Node::create());
    field.setValue(node);
    std::ostringstream address;
    address << static_cast<const void*>(node.get().getCPtr());
    EXPECT_EQ(field.getValueByStr(text), address.str());
}

TEST(PointerFields, withoutTextFormChangeNothingAndSaySo) {
    SFTestCaptionPtr field;
    std::string text = "before";
    ::testing::internal::CaptureStderr();
    field.getValueByStr(text);
    field.pushValueByStr("0x1234");
    const std::string log = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(text, "before");
    EXPECT_TRUE(field.getValue() == NullFC);
    EXPECT_NE(log.find("LOG"), std::string::npos) << log;
    EXPECT_NE(log.find("String Conversion not available for"), std::string::npos) << log;
}

TEST(Fields, copyEachOtherWhenOfOneType) {
    Held<NodePtr> node(Node::create());
    SFNodePtr source, target;
    source.setValue(node);
    target.setAbstrValue(source);
    EXPECT_TRUE(target.getValue() == node.get());

    SFNodeCorePtr other;
    other.setAbstrValue(source);
    EXPECT_TRUE(other.getValue() == NullFC);

    MFNodePtr many, copies;
    many.push_back(node);
    copies.setAbstrValue(many);
    EXPECT_EQ(copies.size(), 1u);
    target.setAbstrValue(many);
    EXPECT_TRUE(target.getValue() == node.get());
}

} // namespace
