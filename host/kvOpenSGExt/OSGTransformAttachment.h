#pragma once

/// @file
/// The rotation of a node as angles.

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGInt32Fields.h>
#include <OpenSG/OSGVec3fFields.h>

#include "OSGContainerTable.h"

OSG_BEGIN_NAMESPACE

class TransformAttachment;
typedef FCPtr<AttachmentPtr, TransformAttachment> TransformAttachmentPtr;

#define KV_TRANSFORM_ATTACHMENT_FIELDS(VALUE, VALUES, POINTER, LIST)                               \
    VALUE(SFVec3f, RotationAngles, "rotationAngles")                                               \
    VALUE(SFInt32, RotationOrder, "rotationOrder")

/// Remembers the angles, in degrees, from which a node's rotation was made, and their order, which
/// the rotation itself does not tell. kvNodeUtils keeps it up to date.
class KV_OPENSG_EXT_API TransformAttachment : public Attachment {
    KV_CONTAINER_DECL(TransformAttachment, Attachment, KV_TRANSFORM_ATTACHMENT_FIELDS)

    /// The axis that turns first stands first: XYZ is the rotation qz * qy * qx.
    enum Order { XYZ = 0, XZY, YXZ, YZX, ZXY, ZYX, OrderCount };

    /// The attachment of a container, or null. Null for null.
    static TransformAttachmentPtr find(const AttachmentContainerPtr& container) {
        if (container == NullFC) return NullFC;
        return TransformAttachmentPtr::dcast(
            container->findAttachment(getClassType().getGroupId()));
    }

    /// The attachment of a container, created and added (in an edit of the attachments) when there
    /// is none. Null for null.
    static TransformAttachmentPtr findOrCreate(const AttachmentContainerPtr& container);

    /// Sets angles and order within one edit.
    void set(const Vec3f& degrees, Int32 order) {
        const TransformAttachmentPtr self(*this);
        beginEditCP(self, RotationAnglesFieldMask | RotationOrderFieldMask);
        setRotationAngles(degrees);
        setRotationOrder(order);
        endEditCP(self, RotationAnglesFieldMask | RotationOrderFieldMask);
    }
};

KV_CONTAINER_INLINE(TransformAttachment)

OSG_END_NAMESPACE
