// The cores that hold, move and choose among the children of their nodes.

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGLightEnv.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGSwitch.h>
#include <OpenSG/OSGTransform.h>

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

osg::Matrix ComponentTransform::postponedMatrix() const {
    osg::Matrix matrix;
    matrix.setTransform(_edited.translation, _edited.rotation, _edited.scale,
                        _edited.scaleOrientation, _edited.center);
    return matrix;
}

void ComponentTransform::takeMatrixApart() {
    getMatrix().getTransform(editTranslation(), editRotation(), editScale(), editScaleOrientation(),
                             getCenter());
}

} // namespace osg
