// Translation, rotation and scale of nodes. The setters run for every animated scalar of every
// tick: once a node has its attachment they allocate nothing and look nothing up by name.
#include "kvNodeUtils.h"

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGTransform.h>

#include <OSGEulerAngles.h>
#include <OSGTransform3D.h>
#include <OSGTransformAttachment.h>

#include <cmath>

using osg::ComponentTransformPtr;
using osg::NullFC;
using osg::Transform3DPtr;
using osg::TransformAttachment;
using osg::TransformAttachmentPtr;
using osg::TransformPtr;
using osg::UInt32;
using osg::Vec3f;

namespace {

/// The parts of a matrix, to change one and put them together again.
struct MatrixParts {
    Vec3f translation;
    osg::Quaternion rotation;
    Vec3f scale;
    osg::Quaternion scaleOrientation;
    Vec3f center;
};

bool isFinite(const MatrixParts& parts) {
    for (UInt32 i = 0; i < 3; ++i)
        if (!std::isfinite(parts.scale[i])) return false;
    for (UInt32 i = 0; i < 4; ++i)
        if (!std::isfinite(parts.rotation[i]) || !std::isfinite(parts.scaleOrientation[i]))
            return false;
    return true;
}

/// A matrix that cannot be taken apart (one that flattens space) counts as unrotated, with the
/// lengths of its columns as the scale.
MatrixParts partsOf(const TransformPtr& transform) {
    osg::Matrix matrix = transform->getMatrix();
    MatrixParts parts;
    matrix.getTransform(parts.translation, parts.rotation, parts.scale, parts.scaleOrientation,
                        parts.center);
    if (isFinite(parts)) return parts;
    parts = MatrixParts();
    for (UInt32 i = 0; i < 3; ++i) {
        parts.translation[i] = matrix[3][i];
        parts.scale[i] = Vec3f(matrix[i][0], matrix[i][1], matrix[i][2]).length();
    }
    return parts;
}

void setMatrix(const TransformPtr& transform, const osg::Matrix& matrix) {
    osg::beginEditCP(transform, osg::Transform::MatrixFieldMask);
    transform->setMatrix(matrix);
    osg::endEditCP(transform, osg::Transform::MatrixFieldMask);
}

void setParts(const TransformPtr& transform, const MatrixParts& parts) {
    osg::Matrix matrix;
    matrix.setTransform(parts.translation, parts.rotation, parts.scale, parts.scaleOrientation,
                        parts.center);
    setMatrix(transform, matrix);
}

TransformPtr ownTransform(const osg::NodePtr& node) {
    if (node == NullFC) return NullFC;
    const osg::NodeCorePtr core = node->getCore();
    // A cast to the very type of an object is quick, one to a base class looks for it.
    if (core != NullFC && &core->getType() == &osg::Transform3D::getClassType())
        return Transform3DPtr::dcast(core);
    return TransformPtr::dcast(core);
}

/// The transform core of a node or of its parent, and the node that carries it.
struct Transformed {
    osg::NodePtr node;
    TransformPtr core;
};

Transformed transformOf(const osg::NodePtr& node) {
    Transformed found;
    if (node == NullFC) return found;
    found.core = ownTransform(node);
    found.node = node;
    if (found.core == NullFC) {
        found.node = node->getParent();
        found.core = ownTransform(found.node);
    }
    if (found.core == NullFC) found.node = NullFC;
    return found;
}

void store(const Vec3f& from, float& x, float& y, float& z) {
    x = from[0];
    y = from[1];
    z = from[2];
}

/// The attachment that tells a node's rotation: its own, else that of the node with its transform.
TransformAttachmentPtr findAngles(const TransformAttachmentPtr& own, const osg::NodePtr& node,
                                  const osg::NodePtr& transformNode) {
    if (own != NullFC || transformNode == node) return own;
    return TransformAttachment::find(transformNode);
}

Vec3f anglesOfCore(const TransformPtr& core) {
    const Transform3DPtr transform3D = Transform3DPtr::dcast(core);
    if (transform3D != NullFC && transform3D->describesRotation(TransformAttachment::XYZ))
        return transform3D->getEulerR();
    const ComponentTransformPtr component = ComponentTransformPtr::dcast(core);
    if (component != NullFC)
        return osg::EulerAngles::fromQuaternion(component->getRotation(), TransformAttachment::XYZ);
    return osg::EulerAngles::fromQuaternion(partsOf(core).rotation, TransformAttachment::XYZ);
}

void setCoreRotation(const TransformPtr& core, const Vec3f& degrees, int order) {
    const Transform3DPtr transform3D = Transform3DPtr::dcast(core);
    if (transform3D != NullFC) {
        const osg::BitVector mask =
            osg::Transform3D::EulerRFieldMask | osg::ComponentTransform::RotationFieldMask;
        osg::beginEditCP(transform3D, mask);
        transform3D->setRotationAngles(degrees, order);
        osg::endEditCP(transform3D, mask);
        return;
    }
    const osg::Quaternion rotation = osg::EulerAngles::toQuaternion(degrees, order);
    const ComponentTransformPtr component = ComponentTransformPtr::dcast(core);
    if (component != NullFC) {
        osg::beginEditCP(component, osg::ComponentTransform::RotationFieldMask);
        component->setRotation(rotation);
        osg::endEditCP(component, osg::ComponentTransform::RotationFieldMask);
        return;
    }
    MatrixParts parts = partsOf(core);
    parts.rotation = rotation;
    setParts(core, parts);
}

} // namespace

osg::NodePtr kvNodeUtils::getTransformNode(const osg::NodePtr& node) {
    return transformOf(node).node;
}

bool kvNodeUtils::getTransformNodeTranslation(const osg::NodePtr& node, float& x, float& y,
                                              float& z) {
    const TransformPtr core = transformOf(node).core;
    store(Vec3f(0.0f, 0.0f, 0.0f), x, y, z);
    if (core == NullFC) return false;
    const ComponentTransformPtr component = ComponentTransformPtr::dcast(core);
    if (component != NullFC) {
        store(component->getTranslation(), x, y, z);
    } else {
        const osg::Matrix matrix = core->getMatrix();
        store(Vec3f(matrix[3][0], matrix[3][1], matrix[3][2]), x, y, z);
    }
    return true;
}

void kvNodeUtils::setTransformNodeTranslation(const osg::NodePtr& node, float x, float y, float z) {
    const TransformPtr core = transformOf(node).core;
    if (core == NullFC) return;
    const ComponentTransformPtr component = ComponentTransformPtr::dcast(core);
    if (component != NullFC) {
        osg::beginEditCP(component, osg::ComponentTransform::TranslationFieldMask);
        component->setTranslation(Vec3f(x, y, z));
        osg::endEditCP(component, osg::ComponentTransform::TranslationFieldMask);
        return;
    }
    osg::Matrix matrix = core->getMatrix();
    matrix[3][0] = x;
    matrix[3][1] = y;
    matrix[3][2] = z;
    setMatrix(core, matrix);
}

bool kvNodeUtils::getTransformNodeRotation(const osg::NodePtr& node, float& x, float& y, float& z) {
    const Transformed transformed = transformOf(node);
    const TransformAttachmentPtr attachment =
        findAngles(TransformAttachment::find(node), node, transformed.node);
    if (attachment != NullFC) {
        store(attachment->getRotationAngles(), x, y, z);
        return true;
    }
    if (transformed.core == NullFC) {
        store(Vec3f(0.0f, 0.0f, 0.0f), x, y, z);
        return false;
    }
    store(anglesOfCore(transformed.core), x, y, z);
    return true;
}

void kvNodeUtils::setTransformNodeRotation(const osg::NodePtr& node, float x, float y, float z,
                                           int order) {
    if (node == NullFC) return;
    const Transformed transformed = transformOf(node);
    const TransformAttachmentPtr own = TransformAttachment::find(node);
    if (order < 0 || order >= TransformAttachment::OrderCount) {
        const TransformAttachmentPtr known = findAngles(own, node, transformed.node);
        order = known != NullFC ? known->getRotationOrder() : int(TransformAttachment::XYZ);
    }
    const Vec3f degrees(x, y, z);
    const TransformAttachmentPtr attachment =
        own != NullFC ? own : TransformAttachment::findOrCreate(node);
    if (attachment != NullFC) attachment->set(degrees, order);
    if (transformed.core == NullFC) return;
    if (transformed.node != node) {
        const TransformAttachmentPtr other = TransformAttachment::find(transformed.node);
        if (other != NullFC) other->set(degrees, order);
    }
    setCoreRotation(transformed.core, degrees, order);
}

bool kvNodeUtils::getTransformNodeScale(const osg::NodePtr& node, float& x, float& y, float& z) {
    const TransformPtr core = transformOf(node).core;
    store(Vec3f(1.0f, 1.0f, 1.0f), x, y, z);
    if (core == NullFC) return false;
    const ComponentTransformPtr component = ComponentTransformPtr::dcast(core);
    store(component != NullFC ? component->getScale() : partsOf(core).scale, x, y, z);
    return true;
}

void kvNodeUtils::setTransformNodeScale(const osg::NodePtr& node, float x, float y, float z) {
    const TransformPtr core = transformOf(node).core;
    if (core == NullFC) return;
    const ComponentTransformPtr component = ComponentTransformPtr::dcast(core);
    if (component != NullFC) {
        osg::beginEditCP(component, osg::ComponentTransform::ScaleFieldMask);
        component->setScale(Vec3f(x, y, z));
        osg::endEditCP(component, osg::ComponentTransform::ScaleFieldMask);
        return;
    }
    MatrixParts parts = partsOf(core);
    parts.scale = Vec3f(x, y, z);
    setParts(core, parts);
}
