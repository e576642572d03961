#pragma once

/// @file
/// One stored track of a clip.

#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGInt32Fields.h>

#include "OSGAnimationBlock.h"

OSG_BEGIN_NAMESPACE

class AnimationTrack;
typedef FCPtr<FieldContainerPtr, AnimationTrack> AnimationTrackPtr;

KV_POINTER_FIELD_DECL(AnimationTrack)

/// `Number` records the track's number at saving and carries no meaning on reading. The elements of
/// `clips` are AnimationClips; their pointers are plain because clips contain tracks.
#define KV_ANIMATION_TRACK_FIELDS(VALUE, VALUES, POINTER, LIST)                                    \
    VALUE(SFInt32, Number, "Number")                                                               \
    VALUE(SFBool, Active, "Active")                                                                \
    VALUE(SFBool, MotionBlur, "MotionBlur")                                                        \
    VALUE(SFBool, Fliped, "Fliped")                                                                \
    LIST(MFAnimationBlockPtr, Block, Blocks, "blocks")                                             \
    LIST(MFAnimationBlockPtr, Sequence, Sequences, "sequences")                                    \
    LIST(MFFieldContainerPtr, Clip, Clips, "clips")

/// The blocks, sequence items and nested clips of one track.
class KV_OPENSG_EXT_API AnimationTrack : public FieldContainer {
    KV_CONTAINER_DECL(AnimationTrack, FieldContainer, KV_ANIMATION_TRACK_FIELDS)

    void dump(UInt32 = 0, const BitVector = 0) const override {}
};

KV_CONTAINER_INLINE(AnimationTrack)

OSG_END_NAMESPACE
