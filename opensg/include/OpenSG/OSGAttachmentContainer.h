#pragma once

/// @file
/// The base of nodes, cores, materials and cameras: a container that can carry attachments.

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGAttachmentMapFields.h>

namespace osg {

/// Carries attachments, one for each group of attachment types and binding. They are counted.
class AttachmentContainer : public FieldContainer {
    typedef FieldContainer Inherited;

  public:
    typedef AttachmentContainerPtr Ptr;
    enum { AttachmentsFieldId = Inherited::NextFieldId, NextFieldId };
    static const BitVector AttachmentsFieldMask;
    OSG_ABSTR_FIELD_CONTAINER_DECL(AttachmentContainerPtr)

    SFAttachmentMap* getSFAttachments() { return &_sfAttachments; }
    AttachmentMap& getAttachments() { return _sfAttachments.getValue(); }
    const AttachmentMap& getAttachments() const { return _sfAttachments.getValue(); }

    /// Puts an attachment into the place of its group; one that is there already is released.
    /// Nothing for null and for the one that is there.
    void addAttachment(const AttachmentPtr& attachment, UInt16 binding = 0);

    /// Releases whatever is in the place of the attachment's group. Nothing for null and when the
    /// place is empty.
    void subAttachment(const AttachmentPtr& attachment, UInt16 binding = 0);

    /// What is in the place of a group; null when it is empty. A group may hold types that derive
    /// from the one that names it, so `dcast` the result.
    AttachmentPtr findAttachment(UInt32 groupId, UInt16 binding = 0) {
        const AttachmentMap& map = _sfAttachments.getValue();
        const auto found = map.find(placeOf(groupId, binding));
        return found == map.end() ? AttachmentPtr() : found->second;
    }
    AttachmentPtr findAttachment(const FieldContainerType& type, UInt16 binding = 0) {
        return findAttachment(type.getGroupId(), binding);
    }

    /// With ChangedOrigin::Abstract: counts the attachments that were put into the map directly.
    void changed(BitVector whichField, UInt32 origin) override {
        if ((origin & ChangedOrigin::Abstract) != 0 && (whichField & AttachmentsFieldMask) != 0)
            countRead(origin);
        Inherited::changed(whichField, origin);
    }

    UInt32 getBinSize(const BitVector& whichField) override;
    void copyToBin(BinaryDataHandler& memory, const BitVector& whichField) override;
    void copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) override;
    void dump(UInt32 indent = 0, const BitVector flags = 0) const override;

  protected:
    AttachmentContainer() = default;
    /// A copy has no attachments.
    AttachmentContainer(const AttachmentContainer& source);
    ~AttachmentContainer() override;

    void executeSync(FieldContainer& other, const BitVector& whichField) override;
    void executeSyncImpl(AttachmentContainer* other, const BitVector& whichField);

    SFAttachmentMap _sfAttachments;

  private:
    friend class FieldContainer;

    static UInt32 placeOf(UInt32 groupId, UInt16 binding) { return groupId << 16 | binding; }
    void release(AttachmentMap::iterator place);
    void countRead(UInt32 origin);
    void addUncounted(const AttachmentPtr& attachment);

    Field* fieldAttachments() { return &_sfAttachments; }

    static FieldDescription* _desc[];
    static FieldContainerType _type;
};

inline AttachmentContainerPtr::AttachmentContainerPtr(const AttachmentContainer* object)
    : FieldContainerPtr(const_cast<AttachmentContainer*>(object)) {}
inline AttachmentContainerPtr::AttachmentContainerPtr(const AttachmentContainer& object)
    : AttachmentContainerPtr(&object) {}
inline AttachmentContainerPtr AttachmentContainerPtr::dcast(const FieldContainerPtrBase& other) {
    return AttachmentContainerPtr(detail::castContainer<AttachmentContainer>(objectOf(other)));
}
inline AttachmentContainer* AttachmentContainerPtr::operator->() const {
    return static_cast<AttachmentContainer*>(checked());
}
inline AttachmentContainer& AttachmentContainerPtr::operator*() const {
    return *static_cast<AttachmentContainer*>(checked());
}
inline AttachmentContainer* AttachmentContainerPtr::getCPtr() const {
    return static_cast<AttachmentContainer*>(objectOf(*this));
}

OSG_ABSTR_FIELD_CONTAINER_INL_DEF(AttachmentContainer, AttachmentContainerPtr)

} // namespace osg

#include <OpenSG/OSGAttachmentContainerFields.h>
