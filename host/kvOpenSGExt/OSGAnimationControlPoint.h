#pragma once

/// @file
/// One stored key of an animation curve.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGUInt8Fields.h>
#include <OpenSG/OSGVec2fFields.h>

#include "OSGContainerTable.h"

OSG_BEGIN_NAMESPACE

class AnimationControlPoint;
typedef FCPtr<FieldContainerPtr, AnimationControlPoint> AnimationControlPointPtr;

KV_POINTER_FIELD_DECL(AnimationControlPoint)

/// x is a frame, y a value in all three vectors; the handles are positions, not offsets from the
/// key. `TangentType` is the number of the key's tangent type.
#define KV_ANIMATION_CONTROL_POINT_FIELDS(VALUE, VALUES, POINTER, LIST)                            \
    VALUE(SFVec2f, ControlPoint, "ControlPoint")                                                   \
    VALUE(SFVec2f, InTangent, "InTangent")                                                         \
    VALUE(SFVec2f, OutTangent, "OutTangent")                                                       \
    VALUE(SFUInt8, TangentType, "TangentType")

/// One key of a stored curve. Scenes hold up to a million of these, so that it keeps to its fields.
class KV_OPENSG_EXT_API AnimationControlPoint : public FieldContainer {
    KV_CONTAINER_DECL(AnimationControlPoint, FieldContainer, KV_ANIMATION_CONTROL_POINT_FIELDS)

    void dump(UInt32 = 0, const BitVector = 0) const override {}
};

KV_CONTAINER_INLINE(AnimationControlPoint)

OSG_END_NAMESPACE
