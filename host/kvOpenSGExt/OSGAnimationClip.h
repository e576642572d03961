#pragma once

/// @file
/// One stored clip.

#include "OSGAnimationTrack.h"

OSG_BEGIN_NAMESPACE

class AnimationClip;
typedef FCPtr<FieldContainerPtr, AnimationClip> AnimationClipPtr;

KV_POINTER_FIELD_DECL(AnimationClip)

/// `blocks` and `subclips` (elements are AnimationClips) are the layout from before tracks existed;
/// readers take both.
#define KV_ANIMATION_CLIP_FIELDS(VALUE, VALUES, POINTER, LIST)                                     \
    VALUE(SFString, Name, "Name")                                                                  \
    VALUE(SFIdent64, Id, "Id")                                                                     \
    VALUE(SFBool, Fliped, "Fliped")                                                                \
    VALUE(SFBool, Repeated, "Repeated")                                                            \
    VALUE(SFBool, MotionBlur, "MotionBlur")                                                        \
    LIST(MFAnimationTrackPtr, Track, Tracks, "tracks")                                             \
    LIST(MFAnimationBlockPtr, Block, Blocks, "blocks")                                             \
    LIST(MFFieldContainerPtr, Subclip, Subclips, "subclips")

/// One clip with its tracks. A nested clip is stored in full wherever it is nested.
class KV_OPENSG_EXT_API AnimationClip : public FieldContainer {
    KV_CONTAINER_DECL(AnimationClip, FieldContainer, KV_ANIMATION_CLIP_FIELDS)

    void dump(UInt32 = 0, const BitVector = 0) const override {}
};

KV_CONTAINER_INLINE(AnimationClip)

OSG_END_NAMESPACE
