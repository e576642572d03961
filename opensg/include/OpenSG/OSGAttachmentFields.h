#pragma once

/// @file
/// The fields SFAttachmentPtr and MFAttachmentPtr.

#include <OpenSG/OSGFieldContainerFields.h>

namespace osg {

template <>
struct FieldDataTraits<AttachmentPtr> : public detail::PrintedPointerTraits<AttachmentPtr> {
    static DataType _type;

    static DataType& getType() { return _type; }
    static const Char8* getSName() { return "SFAttachmentPtr"; }
    static const Char8* getMName() { return "MFAttachmentPtr"; }
};

typedef SField<AttachmentPtr> SFAttachmentPtr;
typedef MField<AttachmentPtr> MFAttachmentPtr;

extern template class SField<AttachmentPtr, 0>;
extern template class MField<AttachmentPtr, 0>;

} // namespace osg

#include <OpenSG/OSGAttachment.h>
