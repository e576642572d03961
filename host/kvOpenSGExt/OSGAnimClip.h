#pragma once

/// @file
/// The core of a clip's node.

#include "OSGAnimObject.h"

OSG_BEGIN_NAMESPACE

class AnimClip;
typedef FCPtr<AnimObjectPtr, AnimClip> AnimClipPtr;

#define KV_ANIM_CLIP_FIELDS(VALUE, VALUES, POINTER, LIST)

/// A clip.
class KV_OPENSG_EXT_API AnimClip : public AnimObject {
    KV_CONTAINER_DECL(AnimClip, AnimObject, KV_ANIM_CLIP_FIELDS)
};

KV_CONTAINER_INLINE(AnimClip)

OSG_END_NAMESPACE
