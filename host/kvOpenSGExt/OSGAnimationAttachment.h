#pragma once

/// @file
/// The animation that is stored on one node.

#include <OpenSG/OSGAttachment.h>

#include "OSGAnimationClip.h"

OSG_BEGIN_NAMESPACE

class AnimationAttachment;
typedef FCPtr<AttachmentPtr, AnimationAttachment> AnimationAttachmentPtr;

#define KV_ANIMATION_ATTACHMENT_FIELDS(VALUE, VALUES, POINTER, LIST)                               \
    LIST(MFAnimationCurvePtr, Curve, Curves, "curves")                                             \
    LIST(MFAnimationBlockPtr, Block, Blocks, "blocks")                                             \
    LIST(MFAnimationClipPtr, Clip, Clips, "clips")

/// The loose curves, the blocks and the clips of a node.
class KV_OPENSG_EXT_API AnimationAttachment : public Attachment {
    KV_CONTAINER_DECL(AnimationAttachment, Attachment, KV_ANIMATION_ATTACHMENT_FIELDS)

    /// Empties all three lists. May destroy the attachment itself, when a curve or block held the
    /// last reference to the node that carries it: keep a reference to that node during the call.
    void clear(void);
};

KV_CONTAINER_INLINE(AnimationAttachment)

OSG_END_NAMESPACE
