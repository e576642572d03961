#pragma once

/// @file
/// Rotations from three angles and back.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGQuaternion.h>
#include <OpenSG/OSGVector.h>

#include "kvOpenSGExtApi.h"

OSG_BEGIN_NAMESPACE

/// Angles in degrees, in an order of TransformAttachment::Order; another number counts as XYZ.
struct KV_OPENSG_EXT_API EulerAngles {
    /// The rotation about the axes one after the other, each about the fixed axis.
    static Quaternion toQuaternion(const Vec3f& degrees, Int32 order);

    /// Angles that make the rotation. Of the infinitely many, those with the middle angle from -90
    /// to 90 and the others from -180 to 180; where the middle one is +-90 the last angle is 0.
    static Vec3f fromQuaternion(const Quaternion& rotation, Int32 order);
};

/// EulerAngles::toQuaternion, to the last bit, for angles that change one at a time: the sine and
/// cosine of an angle are computed when it differs from the one before.
class KV_OPENSG_EXT_API EulerRotation {
  public:
    Quaternion toQuaternion(const Vec3f& degrees, Int32 order);

    /// Of half the angle, about one axis.
    struct HalfTurn {
        double sine = 0.0;
        double cosine = 1.0;
    };

  private:
    Vec3f _degrees;
    HalfTurn _turns[3];
};

OSG_END_NAMESPACE
