// The cores that hold, move and choose among the children of their nodes.

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGLightEnv.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGSwitch.h>
#include <OpenSG/OSGTransform.h>

namespace osg {

OSG_TABLE_DEF(Group, NodeCore, OSG_NO_FIELDS)
OSG_TABLE_DEF(Transform, Group, OSG_TRANSFORM_FIELDS)
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

void Transform::changed(BitVector whichField, UInt32 origin) {
    if ((whichField & MatrixFieldMask) != 0) invalidateVolume();
    Inherited::changed(whichField, origin);
}

void ComponentTransform::changed(BitVector whichField, UInt32 origin) {
    constexpr BitVector parts = CenterFieldMask | RotationFieldMask | ScaleFieldMask |
                                ScaleOrientationFieldMask | TranslationFieldMask;
    if ((whichField & parts) != 0) {
        editMatrix().setTransform(getTranslation(), getRotation(), getScale(),
                                  getScaleOrientation(), getCenter());
        whichField |= MatrixFieldMask;
    } else if ((whichField & MatrixFieldMask) != 0) {
        getMatrix().getTransform(editTranslation(), editRotation(), editScale(),
                                 editScaleOrientation(), getCenter());
        whichField |= parts & ~CenterFieldMask;
    }
    Inherited::changed(whichField, origin);
}

} // namespace osg
