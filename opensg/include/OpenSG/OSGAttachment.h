#pragma once

/// @file
/// The base of what can be attached to nodes, cores, materials and cameras.

#include <OpenSG/OSGBoolFields.h>
#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGFieldContainerFields.h>

namespace osg {

/// Extra data on an AttachmentContainer. One attachment may be on many containers.
class Attachment : public FieldContainer {
    typedef FieldContainer Inherited;

  public:
    typedef AttachmentPtr Ptr;
    enum { ParentsFieldId = Inherited::NextFieldId, InternalFieldId, NextFieldId };
    static const BitVector ParentsFieldMask;
    static const BitVector InternalFieldMask;
    OSG_ABSTR_FIELD_CONTAINER_DECL(AttachmentPtr)

    /// The containers that carry this attachment, once for each binding. Not counted.
    MFFieldContainerPtr& getParents() { return _mfParents; }
    const MFFieldContainerPtr& getParents() const { return _mfParents; }
    FieldContainerPtr& getParents(UInt32 index) { return _mfParents[index]; }
    MFFieldContainerPtr* getMFParents() { return &_mfParents; }

    /// Whether files leave the attachment out.
    const bool& getInternal() const { return _sfInternal.getValue(); }
    bool& getInternal() { return _sfInternal.getValue(); }
    void setInternal(const bool& internal) { _sfInternal.setValue(internal); }
    SFBool* getSFInternal() { return &_sfInternal; }

    /// Kept up to date by AttachmentContainer; nobody else calls these.
    void addParent(const FieldContainerPtr& parent);
    void subParent(const FieldContainerPtr& parent);
    bool hasParent(const FieldContainerPtr& parent) const;

    UInt32 getBinSize(const BitVector& whichField) override;
    void copyToBin(BinaryDataHandler& memory, const BitVector& whichField) override;
    void copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) override;
    void dump(UInt32 indent = 0, const BitVector flags = 0) const override;

  protected:
    Attachment() = default;
    /// A copy is not attached to anything.
    Attachment(const Attachment& source);
    ~Attachment() override = default;

    void executeSync(FieldContainer& other, const BitVector& whichField) override;
    void executeSyncImpl(Attachment* other, const BitVector& whichField);

    MFFieldContainerPtr _mfParents;
    SFBool _sfInternal;

  private:
    friend class FieldContainer;

    Field* fieldParents() { return &_mfParents; }
    Field* fieldInternal() { return &_sfInternal; }

    static FieldDescription* _desc[];
    static FieldContainerType _type;
};

inline AttachmentPtr::AttachmentPtr(const Attachment* object)
    : FieldContainerPtr(const_cast<Attachment*>(object)) {}
inline AttachmentPtr::AttachmentPtr(const Attachment& object) : AttachmentPtr(&object) {}
inline AttachmentPtr AttachmentPtr::dcast(const FieldContainerPtrBase& other) {
    return AttachmentPtr(detail::castContainer<Attachment>(objectOf(other)));
}
inline Attachment* AttachmentPtr::operator->() const {
    return static_cast<Attachment*>(checked());
}
inline Attachment& AttachmentPtr::operator*() const {
    return *static_cast<Attachment*>(checked());
}
inline Attachment* AttachmentPtr::getCPtr() const {
    return static_cast<Attachment*>(objectOf(*this));
}

OSG_ABSTR_FIELD_CONTAINER_INL_DEF(Attachment, AttachmentPtr)

} // namespace osg

#include <OpenSG/OSGAttachmentFields.h>
