#pragma once

/// @file
/// One stored animation curve.

#include <OpenSG/OSGBoolFields.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeFields.h>
#include <OpenSG/OSGReal32Fields.h>
#include <OpenSG/OSGStringFields.h>
#include <OpenSG/OSGUInt16Fields.h>
#include <OpenSG/OSGUInt32Fields.h>

#include "OSGAnimationControlPoint.h"
#include "OSGIdent64Field.h"

OSG_BEGIN_NAMESPACE

class AnimationCurve;
typedef FCPtr<FieldContainerPtr, AnimationCurve> AnimationCurvePtr;

KV_POINTER_FIELD_DECL(AnimationCurve)

/// `Id` records the identifier at saving and carries no meaning on reading. The fields that begin
/// with AF are the curve's field binding. The keys stand in frame order.
#define KV_ANIMATION_CURVE_FIELDS(VALUE, VALUES, POINTER, LIST)                                    \
    VALUE(SFIdent64, Id, "Id")                                                                     \
    VALUE(SFString, Belongs2Attribute, "Belongs2Attribute")                                        \
    POINTER(SFNodePtr, AppropriateNode, "AppropriateNode")                                         \
    POINTER(SFNodePtr, AFAppNode, "AFAppNode")                                                     \
    VALUE(SFUInt32, AFFcId, "AFFcId")                                                              \
    VALUE(SFString, AFFieldName, "AFFieldName")                                                    \
    VALUE(SFString, AFGlobalFieldName, "AFGlobalFieldName")                                        \
    VALUE(SFReal32, AFValue, "AFValue")                                                            \
    VALUE(SFUInt16, AFValuePosition, "AFValuePosition")                                            \
    VALUE(SFBool, AFDirty, "AFDirty")                                                              \
    LIST(MFAnimationControlPointPtr, CurvePoint, ControlPoints, "controlPoints")

/// One animated scalar with its keys.
///
/// Both node pointers count. A curve that hangs, through blocks and attachment, on the node that it
/// names is therefore a cycle: that node lives until the curve is taken out of its list.
class KV_OPENSG_EXT_API AnimationCurve : public FieldContainer {
    KV_CONTAINER_DECL(AnimationCurve, FieldContainer, KV_ANIMATION_CURVE_FIELDS)

    void dump(UInt32 = 0, const BitVector = 0) const override {}
};

KV_CONTAINER_INLINE(AnimationCurve)

OSG_END_NAMESPACE
