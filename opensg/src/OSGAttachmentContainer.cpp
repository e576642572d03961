// Carrying attachments: one for each group and binding, counted.
#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGLog.h>

namespace osg {

const BitVector AttachmentContainer::AttachmentsFieldMask = TypeTraits<BitVector>::One
                                                            << AttachmentsFieldId;

FieldDescription* AttachmentContainer::_desc[] = {new FieldDescription(
    SFAttachmentMap::getClassType(), "attachments", AttachmentsFieldId, AttachmentsFieldMask, false,
    static_cast<FieldAccessMethod>(&AttachmentContainer::fieldAttachments))};

FieldContainerType AttachmentContainer::_type("AttachmentContainer", "FieldContainer", nullptr,
                                              nullptr, nullptr, _desc, sizeof(_desc));
OSG_ABSTR_FIELD_CONTAINER_DEF(AttachmentContainer, AttachmentContainerPtr)

AttachmentContainer::AttachmentContainer(const AttachmentContainer& source) : Inherited(source) {}

AttachmentContainer::~AttachmentContainer() {
    AttachmentMap& map = _sfAttachments.getValue();
    while (!map.empty())
        release(map.begin());
}

void AttachmentContainer::addAttachment(const AttachmentPtr& attachment, UInt16 binding) {
    if (attachment == NullFC) return;
    // Copied: the argument may be a reference into the map.
    const AttachmentPtr added = attachment;
    AttachmentMap& map = _sfAttachments.getValue();
    const UInt32 place = placeOf(added->getGroupId(), binding);
    const auto found = map.find(place);
    if (found != map.end()) {
        if (found->second == added) return;
        // Counted first: the attachment there may own the one that replaces it.
        addRefCP(added);
        release(found);
    } else {
        addRefCP(added);
    }
    map[place] = added;
    added->addParent(AttachmentContainerPtr(*this));
}

void AttachmentContainer::subAttachment(const AttachmentPtr& attachment, UInt16 binding) {
    if (attachment == NullFC) return;
    AttachmentMap& map = _sfAttachments.getValue();
    const auto found = map.find(placeOf(attachment->getGroupId(), binding));
    if (found != map.end()) release(found);
}

void AttachmentContainer::release(AttachmentMap::iterator place) {
    const AttachmentPtr attachment = place->second;
    _sfAttachments.getValue().erase(place);
    if (attachment == NullFC) return;
    attachment->subParent(AttachmentContainerPtr(*this));
    subRefCP(attachment);
}

void AttachmentContainer::countRead(UInt32 origin) {
    const AttachmentContainerPtr self(*this);
    for (const auto& entry : _sfAttachments.getValue()) {
        const AttachmentPtr attachment = entry.second;
        if (attachment == NullFC) continue;
        if ((origin & ChangedOrigin::AbstrIncRefCount) != 0) {
            addRefCP(attachment);
        } else if (attachment->hasParent(self)) {
            // It came by addAttachment and is counted.
        } else {
            addUncounted(attachment);
        }
    }
}

// An attachment may be in the map in several places, for several bindings; each counts.
void AttachmentContainer::addUncounted(const AttachmentPtr& attachment) {
    const AttachmentContainerPtr self(*this);
    for (const auto& entry : _sfAttachments.getValue()) {
        if (entry.second != attachment) continue;
        addRefCP(attachment);
        attachment->addParent(self);
    }
}

UInt32 AttachmentContainer::getBinSize(const BitVector& whichField) {
    UInt32 size = Inherited::getBinSize(whichField);
    if ((whichField & AttachmentsFieldMask) != 0) size += _sfAttachments.getBinSize();
    return size;
}

void AttachmentContainer::copyToBin(BinaryDataHandler& memory, const BitVector& whichField) {
    Inherited::copyToBin(memory, whichField);
    if ((whichField & AttachmentsFieldMask) != 0) _sfAttachments.copyToBin(memory);
}

void AttachmentContainer::copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) {
    Inherited::copyFromBin(memory, whichField);
    if ((whichField & AttachmentsFieldMask) != 0) _sfAttachments.copyFromBin(memory);
}

void AttachmentContainer::dump(UInt32 indent, const BitVector) const {
    SLOG << std::string(indent, ' ') << getTypeName() << " with "
         << _sfAttachments.getValue().size() << " attachments" << std::endl;
}

void AttachmentContainer::executeSync(FieldContainer& other, const BitVector& whichField) {
    executeSyncImpl(static_cast<AttachmentContainer*>(&other), whichField);
}

void AttachmentContainer::executeSyncImpl(AttachmentContainer* other, const BitVector& whichField) {
    Inherited::executeSyncImpl(other, whichField);
    if ((whichField & AttachmentsFieldMask) != 0) _sfAttachments.syncWith(other->_sfAttachments);
}

} // namespace osg
