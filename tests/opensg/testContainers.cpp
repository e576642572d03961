// The containers of the tests' own.
#include "opensg/testContainers.h"

#include <OpenSG/OSGBinaryDataHandler.h>
#include <OpenSG/OSGMFieldTypeDef.inl>
#include <OpenSG/OSGSFieldTypeDef.inl>
#include <OpenSG/OSGVolume.h>

OSG_BEGIN_NAMESPACE

DataType FieldDataTraits<TestCaptionPtr>::_type("TestCaptionPtr", "FieldContainerPtr");
OSG_DLLEXPORT_SFIELD_DEF1(TestCaptionPtr, );
OSG_DLLEXPORT_MFIELD_DEF1(TestCaptionPtr, );

#define TEST_MASK(CLASS, FIELD)                                                                    \
    const BitVector CLASS::FIELD##FieldMask = TypeTraits<BitVector>::One << CLASS::FIELD##FieldId
#define TEST_DESC(CLASS, TYPE, FIELD, NAME)                                                        \
    new FieldDescription(TYPE::getClassType(), NAME, FIELD##FieldId, FIELD##FieldMask, false,      \
                         static_cast<FieldAccessMethod>(&CLASS::field##FIELD))

// TestCaption

TEST_MASK(TestCaption, Words);
TEST_MASK(TestCaption, Serial);
FieldDescription* TestCaption::_desc[] = {TEST_DESC(TestCaption, SFString, Words, "words"),
                                          TEST_DESC(TestCaption, SFIdent64, Serial, "serial")};
FieldContainerType TestCaption::_type("TestCaption", "FieldContainer", NULL,
                                      &TestCaption::makePrototype, NULL, _desc, sizeof(_desc));
OSG_FIELD_CONTAINER_DEF(TestCaption, TestCaptionPtr)

UInt32 TestCaption::getBinSize(const BitVector& which) {
    UInt32 size = Inherited::getBinSize(which);
    if (which & WordsFieldMask) size += _sfWords.getBinSize();
    if (which & SerialFieldMask) size += _sfSerial.getBinSize();
    return size;
}

void TestCaption::copyToBin(BinaryDataHandler& memory, const BitVector& which) {
    Inherited::copyToBin(memory, which);
    if (which & WordsFieldMask) _sfWords.copyToBin(memory);
    if (which & SerialFieldMask) _sfSerial.copyToBin(memory);
}

void TestCaption::copyFromBin(BinaryDataHandler& memory, const BitVector& which) {
    Inherited::copyFromBin(memory, which);
    if (which & WordsFieldMask) _sfWords.copyFromBin(memory);
    if (which & SerialFieldMask) _sfSerial.copyFromBin(memory);
}

void TestCaption::executeSync(FieldContainer& other, const BitVector& which) {
    TestCaption& source = static_cast<TestCaption&>(other);
    Inherited::executeSyncImpl(&source, which);
    if (which & WordsFieldMask) _sfWords.syncWith(source._sfWords);
    if (which & SerialFieldMask) _sfSerial.syncWith(source._sfSerial);
}

// TestShotList

TEST_MASK(TestShotList, Heading);
TEST_MASK(TestShotList, Subject);
TEST_MASK(TestShotList, Pace);
TEST_MASK(TestShotList, Captions);
FieldDescription* TestShotList::_desc[] = {
    TEST_DESC(TestShotList, SFString, Heading, "heading"),
    TEST_DESC(TestShotList, SFNodePtr, Subject, "subject"),
    TEST_DESC(TestShotList, SFReal32, Pace, "pace"),
    TEST_DESC(TestShotList, MFTestCaptionPtr, Captions, "captions")};
FieldContainerType TestShotList::_type("TestShotList", "Attachment", NULL,
                                       &TestShotList::makePrototype, NULL, _desc, sizeof(_desc));
OSG_FIELD_CONTAINER_DEF(TestShotList, TestShotListPtr)

std::vector<std::pair<BitVector, UInt32>> TestShotList::changes;
int TestShotList::created = 0;
int TestShotList::destroyed = 0;

void TestShotList::setSubject(const NodePtr& subject) {
    NodePtr next = subject;
    NodePtr previous = _sfSubject.getValue();
    addRefCP(next);
    _sfSubject.setValue(next);
    subRefCP(previous);
}

void TestShotList::addCaption(const TestCaptionPtr& caption) {
    if (caption == NullFC) return;
    addRefCP(caption);
    _mfCaptions.push_back(caption);
}

void TestShotList::clearCaptions(void) {
    for (UInt32 i = 0; i < _mfCaptions.size(); ++i) {
        TestCaptionPtr caption = _mfCaptions[i];
        subRefCP(caption);
    }
    _mfCaptions.clear();
}

void TestShotList::countUp(BitVector which) {
    if (which & SubjectFieldMask) addRefCP(_sfSubject.getValue());
    if (which & CaptionsFieldMask)
        for (UInt32 i = 0; i < _mfCaptions.size(); ++i)
            addRefCP(_mfCaptions[i]);
}

void TestShotList::changed(BitVector which, UInt32 origin) {
    changes.push_back(std::make_pair(which, origin));
    if (origin & ChangedOrigin::Abstract) countUp(which);
    Inherited::changed(which, origin);
}

void TestShotList::onCreate(const TestShotList* source) {
    ++created;
    if (source != NULL) countUp(FieldBits::AllFields);
}

void TestShotList::onDestroy(void) {
    ++destroyed;
    if (GlobalSystemState != Shutdown) {
        setSubject(NullFC);
        clearCaptions();
    }
    Inherited::onDestroy();
}

UInt32 TestShotList::getBinSize(const BitVector& which) {
    UInt32 size = Inherited::getBinSize(which);
    if (which & HeadingFieldMask) size += _sfHeading.getBinSize();
    if (which & SubjectFieldMask) size += _sfSubject.getBinSize();
    if (which & PaceFieldMask) size += _sfPace.getBinSize();
    if (which & CaptionsFieldMask) size += _mfCaptions.getBinSize();
    return size;
}

void TestShotList::copyToBin(BinaryDataHandler& memory, const BitVector& which) {
    Inherited::copyToBin(memory, which);
    if (which & HeadingFieldMask) _sfHeading.copyToBin(memory);
    if (which & SubjectFieldMask) _sfSubject.copyToBin(memory);
    if (which & PaceFieldMask) _sfPace.copyToBin(memory);
    if (which & CaptionsFieldMask) _mfCaptions.copyToBin(memory);
}

void TestShotList::copyFromBin(BinaryDataHandler& memory, const BitVector& which) {
    Inherited::copyFromBin(memory, which);
    if (which & HeadingFieldMask) _sfHeading.copyFromBin(memory);
    if (which & SubjectFieldMask) _sfSubject.copyFromBin(memory);
    if (which & PaceFieldMask) _sfPace.copyFromBin(memory);
    if (which & CaptionsFieldMask) _mfCaptions.copyFromBin(memory);
}

void TestShotList::executeSync(FieldContainer& other, const BitVector& which) {
    executeSyncImpl(static_cast<TestShotList*>(&other), which);
}

void TestShotList::executeSyncImpl(TestShotList* other, const BitVector& which) {
    Inherited::executeSyncImpl(other, which);
    if (which & HeadingFieldMask) _sfHeading.syncWith(other->_sfHeading);
    if (which & SubjectFieldMask) _sfSubject.syncWith(other->_sfSubject);
    if (which & PaceFieldMask) _sfPace.syncWith(other->_sfPace);
    if (which & CaptionsFieldMask) _mfCaptions.syncWith(other->_mfCaptions);
}

// TestReel and TestTrailer

FieldContainerType TestReel::_type("TestReel", "TestShotList", NULL, &TestReel::makePrototype, NULL,
                                   NULL, 0);
OSG_FIELD_CONTAINER_DEF(TestReel, TestReelPtr)

FieldContainerType TestTrailer::_type("TestTrailer", "TestShotList", "TestShotList",
                                      &TestTrailer::makePrototype, NULL, NULL, 0);
OSG_FIELD_CONTAINER_DEF(TestTrailer, TestTrailerPtr)

// TestShelf

TEST_MASK(TestShelf, Offset);
FieldDescription* TestShelf::_desc[] = {TEST_DESC(TestShelf, SFVec3f, Offset, "offset")};
FieldContainerType TestShelf::_type("TestShelf", "NodeCore", NULL, &TestShelf::makePrototype, NULL,
                                    _desc, sizeof(_desc));
OSG_FIELD_CONTAINER_DEF(TestShelf, TestShelfPtr)

void TestShelf::accumulateMatrix(Matrix& result) {
    Matrix own;
    own.setTranslate(_sfOffset.getValue());
    result.mult(own);
}

void TestShelf::adjustVolume(Volume& volume) {
    volume.extendBy(Pnt3f(-1, -1, -1));
    volume.extendBy(Pnt3f(1, 1, 1));
    Matrix own;
    own.setTranslate(_sfOffset.getValue());
    volume.transform(own);
}

void TestShelf::changed(BitVector which, UInt32 origin) {
    if (which & OffsetFieldMask) invalidateVolume();
    Inherited::changed(which, origin);
}

void TestShelf::executeSync(FieldContainer& other, const BitVector& which) {
    TestShelf& source = static_cast<TestShelf&>(other);
    Inherited::executeSyncImpl(&source, which);
    if (which & OffsetFieldMask) _sfOffset.syncWith(source._sfOffset);
}

// TestMarkedNode

TEST_MASK(TestMarkedNode, Mark);
FieldDescription* TestMarkedNode::_desc[] = {TEST_DESC(TestMarkedNode, SFUInt32, Mark, "mark")};
FieldContainerType TestMarkedNode::_type("TestMarkedNode", "Node", NULL,
                                         &TestMarkedNode::makePrototype, NULL, _desc,
                                         sizeof(_desc));
OSG_FIELD_CONTAINER_DEF(TestMarkedNode, TestMarkedNodePtr)

void TestMarkedNode::executeSync(FieldContainer& other, const BitVector& which) {
    TestMarkedNode& source = static_cast<TestMarkedNode&>(other);
    Inherited::executeSyncImpl(&source, which);
    if (which & MarkFieldMask) _sfMark.syncWith(source._sfMark);
}

OSG_END_NAMESPACE
