#pragma once

/// @file
/// Cameras without perspective.

#include <OpenSG/OSGCamera.h>

namespace osg {

class OrthographicCamera;
typedef FCPtr<CameraPtr, OrthographicCamera> OrthographicCameraPtr;

#define OSG_ORTHOGRAPHIC_CAMERA_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                     \
    VALUE(SFReal32, VerticalSize, "verticalSize", 1)                                               \
    VALUE(SFReal32, Aspect, "aspect", 1)

OSG_TABLE_BASE(OrthographicCamera, Camera, OSG_ORTHOGRAPHIC_CAMERA_FIELDS)

/// A camera without perspective; `verticalSize` is the height of what is seen.
class OrthographicCamera : public OrthographicCameraBase {
    OSG_TABLE_MEMBERS(OrthographicCamera)
};

OSG_TABLE_INLINE(OrthographicCamera)

} // namespace osg
