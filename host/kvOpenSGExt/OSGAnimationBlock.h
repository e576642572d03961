#pragma once

/// @file
/// One stored animation block, or one stored sequence item.

#include "OSGAnimationCurve.h"

OSG_BEGIN_NAMESPACE

class AnimationBlock;
typedef FCPtr<FieldContainerPtr, AnimationBlock> AnimationBlockPtr;

KV_POINTER_FIELD_DECL(AnimationBlock)

/// As a block: all but `Start` and `End`. As a sequence item of a track: `Name` (the command),
/// `Id`, `Start` and `End` (frames) only. "Fliped" is how files spell it.
#define KV_ANIMATION_BLOCK_FIELDS(VALUE, VALUES, POINTER, LIST)                                    \
    VALUE(SFString, Name, "Name")                                                                  \
    POINTER(SFNodePtr, AppropriateNode, "AppropriateNode")                                         \
    VALUE(SFIdent64, Id, "Id")                                                                     \
    VALUE(SFBool, CamBlock, "CamBlock")                                                            \
    VALUE(SFUInt8, AnimatedType, "AnimatedType")                                                   \
    VALUE(SFBool, Fliped, "Fliped")                                                                \
    VALUE(SFBool, Repeated, "Repeated")                                                            \
    VALUE(SFBool, MotionBlur, "MotionBlur")                                                        \
    VALUE(SFBool, Activity, "Activity")                                                            \
    VALUE(SFReal32, Start, "Start")                                                                \
    VALUE(SFReal32, End, "End")                                                                    \
    LIST(MFAnimationCurvePtr, Curve, Curves, "curves")

/// The curves of one node. The node pointer counts; see AnimationCurve for the cycle that this
/// makes.
class KV_OPENSG_EXT_API AnimationBlock : public FieldContainer {
    KV_CONTAINER_DECL(AnimationBlock, FieldContainer, KV_ANIMATION_BLOCK_FIELDS)

    void dump(UInt32 = 0, const BitVector = 0) const override {}
};

KV_CONTAINER_INLINE(AnimationBlock)

OSG_END_NAMESPACE
