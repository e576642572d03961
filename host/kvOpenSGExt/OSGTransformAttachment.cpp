// The rotation of a node as angles.
#include "OSGTransformAttachment.h"

#include <OpenSG/OSGAttachmentContainer.h>

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(TransformAttachment, Attachment, KV_TRANSFORM_ATTACHMENT_FIELDS)

TransformAttachmentPtr TransformAttachment::find(const AttachmentContainerPtr& container) {
    if (container == NullFC) return NullFC;
    return TransformAttachmentPtr::dcast(container->findAttachment(getClassType().getGroupId()));
}

TransformAttachmentPtr TransformAttachment::findOrCreate(const AttachmentContainerPtr& container) {
    TransformAttachmentPtr attachment = find(container);
    if (attachment != NullFC || container == NullFC) return attachment;
    attachment = create();
    if (attachment == NullFC) return attachment;
    beginEditCP(container, AttachmentContainer::AttachmentsFieldMask);
    container->addAttachment(attachment);
    endEditCP(container, AttachmentContainer::AttachmentsFieldMask);
    return attachment;
}

void TransformAttachment::set(const Vec3f& degrees, Int32 order) {
    const TransformAttachmentPtr self(*this);
    beginEditCP(self, RotationAnglesFieldMask | RotationOrderFieldMask);
    setRotationAngles(degrees);
    setRotationOrder(order);
    endEditCP(self, RotationAnglesFieldMask | RotationOrderFieldMask);
}

OSG_END_NAMESPACE
