#pragma once

/// @file
/// The animation nodes of one scene node.

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNodeFields.h>

#include "OSGAnimNode.h"

OSG_BEGIN_NAMESPACE

class AnimAttachment;
typedef FCPtr<AttachmentPtr, AnimAttachment> AnimAttachmentPtr;

/// The elements are AnimNodes; an AnimNodePtr can be added as it is.
#define KV_ANIM_ATTACHMENT_FIELDS(VALUE, VALUES, POINTER, LIST)                                    \
    LIST(MFNodePtr, Animation, Animations, "animations")

/// The animation of a scene node: curve nodes by channel, and block nodes.
class KV_OPENSG_EXT_API AnimAttachment : public Attachment {
    KV_CONTAINER_DECL(AnimAttachment, Attachment, KV_ANIM_ATTACHMENT_FIELDS)
};

KV_CONTAINER_INLINE(AnimAttachment)

OSG_END_NAMESPACE
