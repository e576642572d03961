#pragma once

/// @file
/// Attachments with one field, and the one of them that everybody uses: names.

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGStringFields.h>

#include <string>

namespace osg {

/// An attachment with one field. `Desc` supplies `FieldTypeT` (the field), and as static functions
/// `getTypeName()`, `getParentTypeName()`, `getGroupName()`, `getFieldName()`.
///
/// The source file that owns the type instantiates it: `template class SimpleAttachment<Desc>;`.
template <class Desc>
class SimpleAttachment : public Attachment {
    typedef Attachment Inherited;
    typedef SimpleAttachment<Desc> Self;

  public:
    typedef typename Desc::FieldTypeT FieldTypeT;
    typedef FCPtr<AttachmentPtr, Self> PtrType;
    typedef PtrType Ptr;
    enum { SimpleFieldId = Inherited::NextFieldId, NextFieldId };
    static constexpr BitVector SimpleFieldMask = BitVector(1) << SimpleFieldId;

    static FieldContainerType& getClassType() { return _type; }
    static UInt32 getClassTypeId() { return _type.getId(); }
    static UInt16 getClassGroupId() { return _type.getGroupId(); }
    static PtrType create() {
        if (GlobalSystemState != Running) return NullFC;
        return PtrType::dcast(_type.createFieldContainer());
    }
    static PtrType createEmpty() {
        PtrType result;
        FieldContainer::newPtr(result);
        return result;
    }

    FieldContainerType& getType() override { return _type; }
    const FieldContainerType& getType() const override { return _type; }
    UInt32 getContainerSize() const override { return static_cast<UInt32>(sizeof(Self)); }
    FieldContainerPtr shallowCopy() const override {
        PtrType result;
        FieldContainer::newPtr(result, this);
        return result;
    }

    /// The field; owned by the attachment.
    FieldTypeT* getFieldPtr() { return &_field; }
    const FieldTypeT* getFieldPtr() const { return &_field; }

    UInt32 getBinSize(const BitVector& whichField) override {
        return Inherited::getBinSize(whichField) +
               ((whichField & SimpleFieldMask) != 0 ? _field.getBinSize() : 0);
    }
    void copyToBin(BinaryDataHandler& memory, const BitVector& whichField) override {
        Inherited::copyToBin(memory, whichField);
        if ((whichField & SimpleFieldMask) != 0) _field.copyToBin(memory);
    }
    void copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) override {
        Inherited::copyFromBin(memory, whichField);
        if ((whichField & SimpleFieldMask) != 0) _field.copyFromBin(memory);
    }

  protected:
    SimpleAttachment() = default;
    SimpleAttachment(const SimpleAttachment& source) : Inherited(source), _field(source._field) {}
    ~SimpleAttachment() override = default;

    void executeSync(FieldContainer& other, const BitVector& whichField) override {
        Self& source = static_cast<Self&>(other);
        Inherited::executeSyncImpl(&source, whichField);
        if ((whichField & SimpleFieldMask) != 0) _field.syncWith(source._field);
    }

  private:
    friend class FieldContainer;

    static FieldContainerPtr makePrototype() { return createEmpty(); }
    Field* fieldSimple() { return &_field; }

    static FieldDescription* _desc[];
    static FieldContainerType _type;

    FieldTypeT _field;
};

/// What makes an attachment a name.
struct NameAttachmentDesc {
    typedef SFString FieldTypeT;

    static const Char8* getTypeName() { return "Name"; }
    static const Char8* getParentTypeName() { return "Attachment"; }
    static const Char8* getGroupName() { return "name"; }
    static const Char8* getFieldName() { return "name"; }
};

/// The name of a container: `name->getFieldPtr()->getValue()`.
typedef SimpleAttachment<NameAttachmentDesc> Name;
typedef Name::PtrType NamePtr;

extern template class SimpleAttachment<NameAttachmentDesc>;

/// The name of a container. Null when it has none or the container is null. The text belongs to the
/// name attachment and lives until the name is changed or removed.
const Char8* getName(const AttachmentContainerPtr& container);

/// Gives a container a name; null removes it. Nothing for a null container.
void setName(const AttachmentContainerPtr& container, const std::string& name);
void setName(const AttachmentContainerPtr& container, const Char8* name);

} // namespace osg
