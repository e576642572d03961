#pragma once

// Everything that a container leads to in a file.

#include "files/containerTypes.h"

#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGFieldContainerFields.h>

namespace osg::files {

/// Whether files leave an attachment out.
inline bool isLeftOut(const AttachmentPtr& attachment) {
    return attachment == NullFC || attachment->getInternal();
}

/// Calls `visit(target)` for all containers that the fields of a container point at, in the order
/// of the fields. Nulls, internal fields and internal attachments are passed over.
template <class Visit>
void forEachTarget(const FieldContainerPtr& container, const TypeInfo& type, const Visit& visit) {
    for (const FieldInfo& info : type.fields) {
        if (info.role == FieldRole::kAttachments) {
            for (const auto& entry : AttachmentContainerPtr::dcast(container)->getAttachments())
                if (!isLeftOut(entry.second)) visit(entry.second);
        } else if (info.isPointer()) {
            const Field& field = *container->getField(info.id);
            const UInt32 size = field.getSize();
            for (UInt32 i = 0; i < size; ++i) {
                const FieldContainerPtr target = pointerAt(field, info, i);
                if (target != NullFC) visit(target);
            }
        }
    }
}

} // namespace osg::files
