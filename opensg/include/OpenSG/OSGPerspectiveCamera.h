#pragma once

/// @file
/// Cameras as eyes are.

#include <OpenSG/OSGCamera.h>

namespace osg {

class PerspectiveCamera;
typedef FCPtr<CameraPtr, PerspectiveCamera> PerspectiveCameraPtr;

#define OSG_PERSPECTIVE_CAMERA_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                      \
    VALUE(SFReal32, Fov, "fov")                                                                    \
    VALUE(SFUInt32, FovMode, "fovMode")                                                            \
    VALUE(SFReal32, Aspect, "aspect", 1)

OSG_TABLE_BASE(PerspectiveCamera, Camera, OSG_PERSPECTIVE_CAMERA_FIELDS)

/// `fov` is the angle of view: radians, but a value above Pi means degrees.
class PerspectiveCamera : public PerspectiveCameraBase {
    OSG_TABLE_MEMBERS(PerspectiveCamera)
};

OSG_TABLE_INLINE(PerspectiveCamera)

} // namespace osg
