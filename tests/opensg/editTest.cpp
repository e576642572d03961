// Edits: when containers are told, and what.
#include "opensg/held.h"
#include "opensg/testContainers.h"

#include <gtest/gtest.h>

namespace {

using namespace osg;

class Edit : public ::testing::Test {
  protected:
    void SetUp() override { TestShotList::changes.clear(); }

    typedef std::vector<std::pair<BitVector, UInt32>> Changes;
    static const Changes& changes() { return TestShotList::changes; }
    static Changes one(BitVector mask, UInt32 origin) {
        return Changes(1, std::make_pair(mask, origin));
    }

    Held<TestShotListPtr> list{TestShotList::create()};
};

TEST_F(Edit, containerIsToldAtTheEnd) {
    beginEditCP(list.get(), TestShotList::PaceFieldMask);
    list->setPace(2.f);
    EXPECT_EQ(changes(), Changes());
    endEditCP(list.get(), TestShotList::PaceFieldMask);
    EXPECT_EQ(changes(), one(TestShotList::PaceFieldMask, 1));
}

TEST_F(Edit, isOfAllFieldsByTheProgramUnlessToldOtherwise) {
    beginEditCP(list.get());
    endEditCP(list.get());
    EXPECT_EQ(changes(), one(FieldBits::AllFields, ChangedOrigin::External));
}

TEST_F(Edit, carriesItsOriginAlong) {
    beginEditCP(list.get(), TestShotList::PaceFieldMask, ChangedOrigin::Child);
    endEditCP(list.get(), TestShotList::PaceFieldMask, ChangedOrigin::Child);
    EXPECT_EQ(changes(), one(TestShotList::PaceFieldMask, 4));
}

TEST_F(Edit, writingWithoutOneTellsNobody) {
    list->setPace(3.f);
    EXPECT_EQ(changes(), Changes());
}

TEST_F(Edit, changedAloneTells) {
    changedCP(list.get(), TestShotList::HeadingFieldMask);
    EXPECT_EQ(changes(), one(TestShotList::HeadingFieldMask, 1));
}

TEST_F(Edit, endedAsNotChangedTellsNobody) {
    beginEditCP(list.get());
    endEditNotChangedCP(list.get());
    EXPECT_EQ(changes(), Changes());
}

TEST_F(Edit, ofNullDoesNothing) {
    beginEditCP(NullFC);
    endEditCP(NullFC);
    changedCP(NullFC);
    endEditNotChangedCP(NullFC);
    EXPECT_EQ(changes(), Changes());
}

TEST_F(Edit, lastsAsLongAsItsEditor) {
    {
        CPEditor editor(list.get(), TestShotList::HeadingFieldMask);
        list->setHeading("Dusk");
        EXPECT_EQ(changes(), Changes());
    }
    EXPECT_EQ(changes(), one(TestShotList::HeadingFieldMask, 1));
}

TEST_F(Edit, takesPointersOfAnyType) {
    const AttachmentPtr attachment = list.get();
    const FieldContainerPtr container = list.get();
    beginEditCP(attachment, TestShotList::PaceFieldMask);
    endEditCP(container, TestShotList::PaceFieldMask);
    EXPECT_EQ(changes().size(), 1u);
}

TEST(ChangedOriginBits, haveTheirNumbers) {
    EXPECT_EQ(UInt32(ChangedOrigin::External), 1u);
    EXPECT_EQ(UInt32(ChangedOrigin::Sync), 2u);
    EXPECT_EQ(UInt32(ChangedOrigin::Child), 4u);
    EXPECT_EQ(UInt32(ChangedOrigin::Abstract), 8u);
    EXPECT_EQ(UInt32(ChangedOrigin::AbstrIgnoreCore), 0x100u);
    EXPECT_EQ(UInt32(ChangedOrigin::AbstrIgnoreChild), 0x200u);
    EXPECT_EQ(UInt32(ChangedOrigin::AbstrCheckValid), 0x400u);
    EXPECT_EQ(UInt32(ChangedOrigin::AbstrIncRefCount), 0x800u);
}

// What a reader of files does: it fills fields and ends the edit as Abstract.
TEST_F(Edit, abstractOneCountsWhatFieldsWereFilledWith) {
    Held<NodePtr> subject(Node::create());
    Held<TestCaptionPtr> caption(TestCaption::create());
    list->editSubject().setValue(subject);
    list->getCaptions().push_back(caption);
    EXPECT_EQ(subject.get().getRefCount(), 1);
    endEditCP(list.get(), FieldBits::AllFields,
              ChangedOrigin::Abstract | ChangedOrigin::AbstrIgnoreCore |
                  ChangedOrigin::AbstrIgnoreChild);
    EXPECT_EQ(subject.get().getRefCount(), 2);
    EXPECT_EQ(caption.get().getRefCount(), 2);
}

} // namespace
