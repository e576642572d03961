#pragma once

// Containers of the tests' own: a plain one, an attachment that owns others, attachments derived
// from it, a node core and a kind of node. They are written as any program would write them, with
// everything that an installed OpenSG asks for.

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>
#include <OpenSG/OSGNodeFields.h>
#include <OpenSG/OSGReal32Fields.h>
#include <OpenSG/OSGStringFields.h>
#include <OpenSG/OSGUInt32Fields.h>
#include <OpenSG/OSGVec3fFields.h>

#include <OSGIdent64Field.h>

#include <utility>
#include <vector>

OSG_BEGIN_NAMESPACE

class TestCaption;
typedef FCPtr<FieldContainerPtr, TestCaption> TestCaptionPtr;
class TestShotList;
typedef FCPtr<AttachmentPtr, TestShotList> TestShotListPtr;
class TestReel;
typedef FCPtr<TestShotListPtr, TestReel> TestReelPtr;
class TestTrailer;
typedef FCPtr<TestShotListPtr, TestTrailer> TestTrailerPtr;
class TestShelf;
typedef FCPtr<NodeCorePtr, TestShelf> TestShelfPtr;
class TestMarkedNode;
typedef FCPtr<NodePtr, TestMarkedNode> TestMarkedNodePtr;

template <>
struct FieldDataTraits<TestCaptionPtr> : public FieldTraitsRecurseMapper<TestCaptionPtr, true> {
    static DataType _type;
    enum { StringConvertable = 0x00, bHasParent = 0x01 };
    static DataType& getType(void) { return _type; }
    static const Char8* getSName(void) { return "SFTestCaptionPtr"; }
    static const Char8* getMName(void) { return "MFTestCaptionPtr"; }
};
typedef SField<TestCaptionPtr> SFTestCaptionPtr;
typedef MField<TestCaptionPtr> MFTestCaptionPtr;

/// A line of text. Not an attachment: it lives in lists.
class TestCaption : public FieldContainer {
    typedef FieldContainer Inherited;

  public:
    typedef TestCaptionPtr Ptr;
    enum {
        WordsFieldId = Inherited::NextFieldId,
        SerialFieldId = WordsFieldId + 1,
        NextFieldId = SerialFieldId + 1
    };
    static const BitVector WordsFieldMask;
    static const BitVector SerialFieldMask;
    OSG_FIELD_CONTAINER_DECL(TestCaptionPtr)

    const std::string& getWords(void) const { return _sfWords.getValue(); }
    void setWords(const std::string& words) { _sfWords.setValue(words); }

    virtual UInt32 getBinSize(const BitVector& which);
    virtual void copyToBin(BinaryDataHandler& memory, const BitVector& which);
    virtual void copyFromBin(BinaryDataHandler& memory, const BitVector& which);
    virtual void dump(UInt32 = 0, const BitVector = 0) const {}

  protected:
    SFString _sfWords;
    SFIdent64 _sfSerial;

    Field* fieldWords(void) { return &_sfWords; }
    Field* fieldSerial(void) { return &_sfSerial; }

    TestCaption(void) {}
    TestCaption(const TestCaption& source)
        : Inherited(source), _sfWords(source._sfWords), _sfSerial(source._sfSerial) {}
    virtual ~TestCaption(void) {}
    virtual void executeSync(FieldContainer& other, const BitVector& which);

  private:
    friend class FieldContainer;
    static FieldDescription* _desc[];
    static FieldContainerType _type;
    static FieldContainerPtr makePrototype(void) { return createEmpty(); }
    void operator=(const TestCaption&);
};

/// An attachment that counts what it points at, and writes down what happens to it.
class TestShotList : public Attachment {
    typedef Attachment Inherited;

  public:
    typedef TestShotListPtr Ptr;
    enum {
        HeadingFieldId = Inherited::NextFieldId,
        SubjectFieldId,
        PaceFieldId,
        CaptionsFieldId,
        NextFieldId
    };
    static const BitVector HeadingFieldMask, SubjectFieldMask, PaceFieldMask, CaptionsFieldMask;
    OSG_FIELD_CONTAINER_DECL(TestShotListPtr)

    const std::string& getHeading(void) const { return _sfHeading.getValue(); }
    void setHeading(const std::string& heading) { _sfHeading.setValue(heading); }
    Real32 getPace(void) const { return _sfPace.getValue(); }
    void setPace(Real32 pace) { _sfPace.setValue(pace); }
    NodePtr getSubject(void) const { return _sfSubject.getValue(); }
    void setSubject(const NodePtr& subject);
    SFNodePtr& editSubject(void) { return _sfSubject; }
    MFTestCaptionPtr& getCaptions(void) { return _mfCaptions; }
    void addCaption(const TestCaptionPtr& caption);
    void clearCaptions(void);

    virtual void changed(BitVector which, UInt32 origin);
    virtual UInt32 getBinSize(const BitVector& which);
    virtual void copyToBin(BinaryDataHandler& memory, const BitVector& which);
    virtual void copyFromBin(BinaryDataHandler& memory, const BitVector& which);

    /// Mask and origin of every call of changed, of all objects.
    static std::vector<std::pair<BitVector, UInt32>> changes;
    /// How often the hooks ran since the test set them to 0.
    static int created;
    static int destroyed;

  protected:
    SFString _sfHeading;
    SFNodePtr _sfSubject;
    SFReal32 _sfPace;
    MFTestCaptionPtr _mfCaptions;

    Field* fieldHeading(void) { return &_sfHeading; }
    Field* fieldSubject(void) { return &_sfSubject; }
    Field* fieldPace(void) { return &_sfPace; }
    Field* fieldCaptions(void) { return &_mfCaptions; }

    TestShotList(void) {}
    TestShotList(const TestShotList& source)
        : Inherited(source), _sfHeading(source._sfHeading), _sfSubject(source._sfSubject),
          _sfPace(source._sfPace), _mfCaptions(source._mfCaptions) {}
    virtual ~TestShotList(void) {}
    void onCreate(const TestShotList* source = NULL);
    virtual void onDestroy(void);
    virtual void executeSync(FieldContainer& other, const BitVector& which);
    void executeSyncImpl(TestShotList* other, const BitVector& which);

  private:
    friend class FieldContainer;
    static FieldDescription* _desc[];
    static FieldContainerType _type;
    static FieldContainerPtr makePrototype(void) { return createEmpty(); }
    void countUp(BitVector which);
    void operator=(const TestShotList&);
};

/// Derived, without fields of its own, in a group of its own.
class TestReel : public TestShotList {
    typedef TestShotList Inherited;

  public:
    typedef TestReelPtr Ptr;
    OSG_FIELD_CONTAINER_DECL(TestReelPtr)

  protected:
    TestReel(void) {}
    TestReel(const TestReel& source) : Inherited(source) {}
    virtual ~TestReel(void) {}

  private:
    friend class FieldContainer;
    static FieldContainerType _type;
    static FieldContainerPtr makePrototype(void) { return createEmpty(); }
    void operator=(const TestReel&);
};

/// Derived, in the group of its parent.
class TestTrailer : public TestShotList {
    typedef TestShotList Inherited;

  public:
    typedef TestTrailerPtr Ptr;
    OSG_FIELD_CONTAINER_DECL(TestTrailerPtr)

  protected:
    TestTrailer(void) {}
    TestTrailer(const TestTrailer& source) : Inherited(source) {}
    virtual ~TestTrailer(void) {}

  private:
    friend class FieldContainer;
    static FieldContainerType _type;
    static FieldContainerPtr makePrototype(void) { return createEmpty(); }
    void operator=(const TestTrailer&);
};

/// A core that moves what is below it, and that fills a cube of side 2 around its place.
class TestShelf : public NodeCore {
    typedef NodeCore Inherited;

  public:
    typedef TestShelfPtr Ptr;
    enum { OffsetFieldId = Inherited::NextFieldId, NextFieldId = OffsetFieldId + 1 };
    static const BitVector OffsetFieldMask;
    OSG_FIELD_CONTAINER_DECL(TestShelfPtr)

    void setOffset(const Vec3f& offset) { _sfOffset.setValue(offset); }

    virtual void accumulateMatrix(Matrix& result);
    virtual void adjustVolume(Volume& volume);
    virtual void changed(BitVector which, UInt32 origin);
    virtual void dump(UInt32 = 0, const BitVector = 0) const {}

  protected:
    SFVec3f _sfOffset;
    Field* fieldOffset(void) { return &_sfOffset; }

    TestShelf(void) {}
    TestShelf(const TestShelf& source) : Inherited(source), _sfOffset(source._sfOffset) {}
    virtual ~TestShelf(void) {}
    virtual void executeSync(FieldContainer& other, const BitVector& which);

  private:
    friend class FieldContainer;
    static FieldDescription* _desc[];
    static FieldContainerType _type;
    static FieldContainerPtr makePrototype(void) { return createEmpty(); }
    void operator=(const TestShelf&);
};

/// A kind of node.
class TestMarkedNode : public Node {
    typedef Node Inherited;

  public:
    typedef TestMarkedNodePtr Ptr;
    enum { MarkFieldId = Inherited::NextFieldId, NextFieldId = MarkFieldId + 1 };
    static const BitVector MarkFieldMask;
    OSG_FIELD_CONTAINER_DECL(TestMarkedNodePtr)

    UInt32 getMark(void) const { return _sfMark.getValue(); }
    void setMark(UInt32 mark) { _sfMark.setValue(mark); }

  protected:
    SFUInt32 _sfMark;
    Field* fieldMark(void) { return &_sfMark; }

    TestMarkedNode(void) {}
    TestMarkedNode(const TestMarkedNode& source) : Inherited(source), _sfMark(source._sfMark) {}
    virtual ~TestMarkedNode(void) {}
    virtual void executeSync(FieldContainer& other, const BitVector& which);

  private:
    friend class FieldContainer;
    static FieldDescription* _desc[];
    static FieldContainerType _type;
    static FieldContainerPtr makePrototype(void) { return createEmpty(); }
    void operator=(const TestMarkedNode&);
};

OSG_FIELD_CONTAINER_INL_DEF(TestCaption, TestCaptionPtr)
OSG_FIELD_CONTAINER_INL_DEF(TestShotList, TestShotListPtr)
OSG_FIELD_CONTAINER_INL_DEF(TestReel, TestReelPtr)
OSG_FIELD_CONTAINER_INL_DEF(TestTrailer, TestTrailerPtr)
OSG_FIELD_CONTAINER_INL_DEF(TestShelf, TestShelfPtr)
OSG_FIELD_CONTAINER_INL_DEF(TestMarkedNode, TestMarkedNodePtr)

OSG_END_NAMESPACE
