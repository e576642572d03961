#pragma once

/// @file
/// The fields SFAttachmentContainerPtr and MFAttachmentContainerPtr.

#include <OpenSG/OSGFieldContainerFields.h>

namespace osg {

template <>
struct FieldDataTraits<AttachmentContainerPtr>
    : public detail::PrintedPointerTraits<AttachmentContainerPtr> {
    static DataType _type;

    static DataType& getType() { return _type; }
    static const Char8* getSName() { return "SFAttachmentContainerPtr"; }
    static const Char8* getMName() { return "MFAttachmentContainerPtr"; }
};

typedef SField<AttachmentContainerPtr> SFAttachmentContainerPtr;
typedef MField<AttachmentContainerPtr> MFAttachmentContainerPtr;

extern template class SField<AttachmentContainerPtr, 0>;
extern template class MField<AttachmentContainerPtr, 0>;

} // namespace osg

#include <OpenSG/OSGAttachmentContainer.h>
