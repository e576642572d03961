#pragma once

/// @file
/// A transform with rotation angles.

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGVec3fFields.h>

#include "OSGContainerTable.h"
#include "OSGEulerAngles.h"

OSG_BEGIN_NAMESPACE

class Transform3D;
typedef FCPtr<ComponentTransformPtr, Transform3D> Transform3DPtr;

#define KV_TRANSFORM_3D_FIELDS(VALUE, VALUES, POINTER, LIST) VALUE(SFVec3f, EulerR, "eulerR")

/// The angles that the rotation was made from last are no field: they tell an edit that changed the
/// angles from one that only named them.
#define KV_TRANSFORM_3D_INITIALISERS() , _applied(source._applied)

/// A component transform whose rotation can also be given as three angles in degrees.
///
/// When an edit ends that changed `eulerR`, the rotation and the matrix follow, and so do the
/// TransformAttachments of the nodes that carry this core (they get one when they have none). The
/// order of the angles is the one stored there, else x before y before z. An edit that leaves
/// `eulerR` as it is changes nothing of this, not even when it writes the rotation: the angles are
/// then stale until they are set again, and `describesRotation` says so.
class KV_OPENSG_EXT_API Transform3D : public ComponentTransform {
    KV_REACTING_CONTAINER_DECL(Transform3D, ComponentTransform, KV_TRANSFORM_3D_FIELDS,
                               KV_TRANSFORM_3D_INITIALISERS)

    /// Sets the angles, the rotation that they make in the given order (TransformAttachment::Order;
    /// another number counts as XYZ), and the TransformAttachments. The caller edits
    /// EulerRFieldMask and RotationFieldMask; the matrix follows when that edit ends.
    void setRotationAngles(const Vec3f& degrees, Int32 order);

    /// Whether the angles, in the given order (TransformAttachment::Order), make the rotation that
    /// is set, within 1e-5 for each component of the quaternion.
    bool describesRotation(Int32 order);

  private:
    Int32 findOrder(void);
    bool isRead(void);

    Vec3f _applied;
    EulerRotation _rotation; // copies start anew
};

KV_CONTAINER_INLINE(Transform3D)

OSG_END_NAMESPACE
