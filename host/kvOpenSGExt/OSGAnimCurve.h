#pragma once

/// @file
/// The core of a curve's node.

#include <OpenSG/OSGColor3fFields.h>
#include <OpenSG/OSGReal32Fields.h>
#include <OpenSG/OSGUInt32Fields.h>
#include <OpenSG/OSGUInt8Fields.h>
#include <OpenSG/OSGVec2fFields.h>

#include "OSGAnimObject.h"

OSG_BEGIN_NAMESPACE

class AnimCurve;
typedef FCPtr<AnimObjectPtr, AnimCurve> AnimCurvePtr;

/// Name, suffix and value index are those of the channel that the curve drives. The points lie in
/// seven lists of equal length, one for each argument of `addPoint`, because a container for each
/// point would cost ten times the memory; flags are bytes, which every reader of files understands.
#define KV_ANIM_CURVE_FIELDS(VALUE, VALUES, POINTER, LIST)                                         \
    VALUE(SFString, Suffix, "suffix")                                                              \
    VALUE(SFUInt32, ValueIndex, "valueIndex")                                                      \
    VALUE(SFColor3f, Color, "color")                                                               \
    VALUES(MFVec2f, ControlPoints, "controlPoints")                                                \
    VALUES(MFVec2f, InTangents, "inTangents")                                                      \
    VALUES(MFVec2f, OutTangents, "outTangents")                                                    \
    VALUES(MFReal32, InWeights, "inWeights")                                                       \
    VALUES(MFReal32, OutWeights, "outWeights")                                                     \
    VALUES(MFUInt8, BrokenFlags, "brokenFlags")                                                    \
    VALUES(MFUInt8, WeightedFlags, "weightedFlags")

/// A curve over seconds with handles as offsets from their points.
class KV_OPENSG_EXT_API AnimCurve : public AnimObject {
    KV_CONTAINER_DECL(AnimCurve, AnimObject, KV_ANIM_CURVE_FIELDS)

    struct Point {
        Vec2f point;      ///< x in seconds, y the value
        Vec2f inTangent;  ///< offset of the incoming handle
        Vec2f outTangent; ///< offset of the outgoing handle
        Real32 inWeight;
        Real32 outWeight;
        bool broken;   ///< the handles move independently
        bool weighted; ///< the handles have lengths of their own
    };

    /// Appends a point; the seven arguments are stored as they come. The caller edits
    /// ControlPointsFieldMask.
    void addPoint(const Vec2f& point, const Vec2f& inTangent, const Vec2f& outTangent,
                  Real32 inWeight, Real32 outWeight, bool broken, bool weighted);

    UInt32 getNPoints(void) const { return getControlPoints().getSize(); }

    /// The point at an index. What a file left short reads as zero; beyond the last point all is
    /// zero.
    Point getPoint(UInt32 index) const;

    void clearPoints(void);
};

KV_CONTAINER_INLINE(AnimCurve)

OSG_END_NAMESPACE
