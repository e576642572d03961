// The rotation of a node as angles.
#include "OSGTransformAttachment.h"

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(TransformAttachment, Attachment, KV_TRANSFORM_ATTACHMENT_FIELDS)

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

OSG_END_NAMESPACE
