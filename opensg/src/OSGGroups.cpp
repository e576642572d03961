// The cores that hold, move and choose among the children of their nodes.

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGLightEnv.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGSwitch.h>
#include <OpenSG/OSGTransform.h>

#include <cmath>

namespace osg {

OSG_TABLE_DEF(Group, NodeCore, OSG_NO_FIELDS)
OSG_WATCHED_TABLE_DEF(Transform, Group, OSG_TRANSFORM_FIELDS)
OSG_TABLE_DEF(ComponentTransform, Transform, OSG_COMPONENT_TRANSFORM_FIELDS)
OSG_TABLE_DEF(Switch, Group, OSG_SWITCH_FIELDS)
OSG_TABLE_DEF(MaterialGroup, Group, OSG_MATERIAL_GROUP_FIELDS)
OSG_TABLE_DEF(LightEnv, NodeCore, OSG_NO_FIELDS)

void Transform::accumulateMatrix(osg::Matrix& result) {
    result.mult(getMatrix());
}

void Transform::adjustVolume(Volume& volume) {
    Inherited::adjustVolume(volume);
    volume.transform(getMatrix());
}

void Transform::copyToBin(BinaryDataHandler& memory, const BitVector& whichField) {
    finishMatrix();
    Inherited::copyToBin(memory, whichField);
}

void Transform::copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) {
    finishMatrix();
    Inherited::copyFromBin(memory, whichField);
}

void Transform::executeSyncImpl(Transform* other, const BitVector& whichField) {
    finishMatrix();
    other->finishMatrix();
    Inherited::executeSyncImpl(other, whichField);
}

Field* Transform::fieldMatrix() {
    finishMatrix();
    _fieldIsKnown.isSet = true;
    return Inherited::fieldMatrix();
}

osg::Matrix Transform::postponedMatrix() const {
    return Inherited::getMatrix();
}

void Transform::makeMatrix() {
    _isPostponed = false;
    Inherited::setMatrix(postponedMatrix());
}

namespace {

/// Whether the scale acts along the axes themselves, exactly, and its product with the turns there
/// and back is plainly that of the scale.
bool isUnturned(const Vec3f& scale, const Quaternion& scaleOrientation) {
    for (UInt32 i = 0; i < 3; ++i)
        if (scaleOrientation[i] != 0 || !std::isfinite(scale[i])) return false;
    return scaleOrientation[3] == 1;
}

} // namespace

osg::Matrix ComponentTransform::postponedMatrix() const {
    osg::Matrix matrix;
    if (isUnturned(_edited.scale, _edited.scaleOrientation)) {
        // What setTransform makes, to the last bit: it adds a positive zero to each number of the
        // scale, and all others of that matrix are positive zeros.
        osg::Matrix part;
        part.setScale(_edited.scale[0] + 0.F, _edited.scale[1] + 0.F, _edited.scale[2] + 0.F);
        matrix.setTransform(_edited.translation + _edited.center, _edited.rotation);
        matrix.mult(part);
        part.setTransform(-_edited.center);
        matrix.mult(part);
        return matrix;
    }
    matrix.setTransform(_edited.translation, _edited.rotation, _edited.scale,
                        _edited.scaleOrientation, _edited.center);
    return matrix;
}

void ComponentTransform::takeMatrixApart() {
    getMatrix().getTransform(editTranslation(), editRotation(), editScale(), editScaleOrientation(),
                             getCenter());
}

} // namespace osg
