// What attachments have in common.
#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGLog.h>

namespace osg {

const BitVector Attachment::ParentsFieldMask = TypeTraits<BitVector>::One << ParentsFieldId;
const BitVector Attachment::InternalFieldMask = TypeTraits<BitVector>::One << InternalFieldId;

FieldDescription* Attachment::_desc[] = {
    new FieldDescription(MFFieldContainerPtr::getClassType(), "parents", ParentsFieldId,
                         ParentsFieldMask, true,
                         static_cast<FieldAccessMethod>(&Attachment::fieldParents)),
    new FieldDescription(SFBool::getClassType(), "internal", InternalFieldId, InternalFieldMask,
                         false, static_cast<FieldAccessMethod>(&Attachment::fieldInternal),
                         "FALSE")};

FieldContainerType Attachment::_type("Attachment", "FieldContainer", nullptr, nullptr, nullptr,
                                     _desc, sizeof(_desc));
OSG_ABSTR_FIELD_CONTAINER_DEF(Attachment, AttachmentPtr)

Attachment::Attachment(const Attachment& source)
    : Inherited(source), _sfInternal(source._sfInternal) {}

void Attachment::addParent(const FieldContainerPtr& parent) {
    _mfParents.push_back(parent);
}

// From the back: trees die from the back, and what was attached last is often detached first.
void Attachment::subParent(const FieldContainerPtr& parent) {
    for (std::size_t i = _mfParents.size(); i-- > 0;) {
        if (_mfParents[i] != parent) continue;
        _mfParents.erase(_mfParents.begin() + static_cast<std::ptrdiff_t>(i));
        return;
    }
}

bool Attachment::hasParent(const FieldContainerPtr& parent) const {
    return std::find(_mfParents.rbegin(), _mfParents.rend(), parent) != _mfParents.rend();
}

UInt32 Attachment::getBinSize(const BitVector& whichField) {
    UInt32 size = Inherited::getBinSize(whichField);
    if ((whichField & ParentsFieldMask) != 0) size += _mfParents.getBinSize();
    if ((whichField & InternalFieldMask) != 0) size += _sfInternal.getBinSize();
    return size;
}

void Attachment::copyToBin(BinaryDataHandler& memory, const BitVector& whichField) {
    Inherited::copyToBin(memory, whichField);
    if ((whichField & ParentsFieldMask) != 0) _mfParents.copyToBin(memory);
    if ((whichField & InternalFieldMask) != 0) _sfInternal.copyToBin(memory);
}

void Attachment::copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) {
    Inherited::copyFromBin(memory, whichField);
    if ((whichField & ParentsFieldMask) != 0) _mfParents.copyFromBin(memory);
    if ((whichField & InternalFieldMask) != 0) _sfInternal.copyFromBin(memory);
}

void Attachment::dump(UInt32 indent, const BitVector) const {
    SLOG << std::string(indent, ' ') << getTypeName() << " on " << _mfParents.size()
         << " containers" << std::endl;
}

void Attachment::executeSync(FieldContainer& other, const BitVector& whichField) {
    executeSyncImpl(static_cast<Attachment*>(&other), whichField);
}

void Attachment::executeSyncImpl(Attachment* other, const BitVector& whichField) {
    Inherited::executeSyncImpl(other, whichField);
    if ((whichField & ParentsFieldMask) != 0) _mfParents.syncWith(other->_mfParents);
    if ((whichField & InternalFieldMask) != 0) _sfInternal.syncWith(other->_sfInternal);
}

} // namespace osg
