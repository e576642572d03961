// A transform with rotation angles.
#include "OSGTransform3D.h"

#include <OpenSG/OSGNode.h>

#include "OSGEulerAngles.h"
#include "OSGTransformAttachment.h"

#include <algorithm>
#include <cmath>

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(Transform3D, ComponentTransform, KV_TRANSFORM_3D_FIELDS)

namespace {

/// Exactly, where OpenSG's own comparison takes a millionth of a degree for nothing.
bool isSame(const Vec3f& a, const Vec3f& b) {
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
}

} // namespace

void Transform3D::changed(BitVector which, UInt32 origin) {
    countRead(which, origin);
    if ((which & EulerRFieldMask) && !isSame(getEulerR(), _applied)) {
        if ((origin & (ChangedOrigin::Abstract | ChangedOrigin::Sync)) || isRead()) {
            // From a file, or from another thread: rotation and attachments come along.
            _applied = getEulerR();
        } else {
            setRotationAngles(getEulerR(), findOrder());
            which |= RotationFieldMask;
        }
    }
    Inherited::changed(which, origin);
}

void Transform3D::setRotationAngles(const Vec3f& degrees, Int32 order) {
    // A copy: the argument may be the field itself.
    const Vec3f angles = degrees;
    setEulerR(angles);
    setRotation(_rotation.toQuaternion(angles, order));
    _applied = angles;
    for (UInt32 i = 0; i < getParents().size(); ++i) {
        const TransformAttachmentPtr attachment =
            TransformAttachment::findOrCreate(getParents()[i]);
        if (attachment == NullFC) continue;
        if (isSame(attachment->getRotationAngles(), angles) &&
            attachment->getRotationOrder() == order)
            continue;
        attachment->set(angles, order);
    }
}

/// OpenSG's reader of .osb says of its edits that a user made them, field by field: first the
/// rotation, then angles that agree with it in some order, and all that before the core has a node
/// that knows the order.
bool Transform3D::isRead(void) {
    if (!getParents().empty()) return false;
    for (Int32 order = TransformAttachment::XYZ; order < TransformAttachment::OrderCount; ++order)
        if (describesRotation(order)) return true;
    return false;
}

bool Transform3D::describesRotation(Int32 order) {
    const Quaternion described = EulerAngles::toQuaternion(getEulerR(), order);
    const Quaternion& actual = getRotation();
    // A quaternion and its negative are the same rotation.
    double same = 0.0, opposite = 0.0;
    for (UInt32 i = 0; i < 4; ++i) {
        same = (std::max)(same, std::fabs(double(described[i]) - actual[i]));
        opposite = (std::max)(opposite, std::fabs(double(described[i]) + actual[i]));
    }
    return (std::min)(same, opposite) <= 1e-5;
}

/// The order stored on the first node that has one.
Int32 Transform3D::findOrder(void) {
    for (UInt32 i = 0; i < getParents().size(); ++i) {
        const TransformAttachmentPtr attachment = TransformAttachment::find(getParents()[i]);
        if (attachment != NullFC) return attachment->getRotationOrder();
    }
    return TransformAttachment::XYZ;
}

OSG_END_NAMESPACE
