#pragma once

/// @file
/// A transformation that is given by its parts.

#include <OpenSG/OSGTransform.h>

namespace osg {

class ComponentTransform;
typedef FCPtr<TransformPtr, ComponentTransform> ComponentTransformPtr;

#define OSG_COMPONENT_TRANSFORM_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                     \
    VALUE(SFVec3f, Center, "center")                                                               \
    VALUE(SFQuaternion, Rotation, "rotation")                                                      \
    VALUE(SFVec3f, Scale, "scale", Vec3f(1, 1, 1))                                                 \
    VALUE(SFQuaternion, ScaleOrientation, "scaleOrientation")                                      \
    VALUE(SFVec3f, Translation, "translation")

OSG_TABLE_BASE(ComponentTransform, Transform, OSG_COMPONENT_TRANSFORM_FIELDS)

/// Scales about `center` along axes turned by `scaleOrientation`, rotates about `center`, then
/// translates.
///
/// The matrix and the parts are kept together at the end of an edit: when a part was edited the
/// matrix is computed from the parts, when only the matrix was edited (through a TransformPtr) the
/// parts are, with the center as it is.
class ComponentTransform : public ComponentTransformBase {
    OSG_TABLE_MEMBERS(ComponentTransform)

    /// Not for users: the parts are what is set here.
    using Transform::setMatrix;

  public:
    void changed(BitVector whichField, UInt32 origin) override {
        constexpr BitVector parts = CenterFieldMask | RotationFieldMask | ScaleFieldMask |
                                    ScaleOrientationFieldMask | TranslationFieldMask;
        if ((whichField & parts) != 0) {
            keepParts();
            postponeMatrix();
            whichField |= MatrixFieldMask;
        } else if ((whichField & MatrixFieldMask) != 0) {
            takeMatrixApart();
            whichField |= parts & ~CenterFieldMask;
        }
        Inherited::changed(whichField, origin);
    }

  protected:
    osg::Matrix postponedMatrix() const override;

  private:
    /// As they were when the last edit of any of them ended, while the matrix is not made of them:
    /// what is written to the fields before the next end of an edit is not to be seen in it.
    struct Parts {
        Vec3f translation;
        Quaternion rotation;
        Vec3f scale;
        Quaternion scaleOrientation;
        Vec3f center;
    };
    Parts _edited;

    // One by one: as a whole they would be put together elsewhere first.
    void keepParts() {
        _edited.translation = getTranslation();
        _edited.rotation = getRotation();
        _edited.scale = getScale();
        _edited.scaleOrientation = getScaleOrientation();
        _edited.center = getCenter();
    }
    void takeMatrixApart();
};

OSG_TABLE_INLINE(ComponentTransform)

} // namespace osg
