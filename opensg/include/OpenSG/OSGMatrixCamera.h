#pragma once

/// @file
/// Cameras given by matrices.

#include <OpenSG/OSGCamera.h>

namespace osg {

class MatrixCamera;
typedef FCPtr<CameraPtr, MatrixCamera> MatrixCameraPtr;

#define OSG_MATRIX_CAMERA_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                           \
    VALUE(SFMatrix, ProjectionMatrix, "projectionMatrix")                                          \
    VALUE(SFMatrix, ModelviewMatrix, "modelviewMatrix")

OSG_TABLE_BASE(MatrixCamera, Camera, OSG_MATRIX_CAMERA_FIELDS)

/// A camera given by its two matrices.
class MatrixCamera : public MatrixCameraBase {
    OSG_TABLE_MEMBERS(MatrixCamera)
};

OSG_TABLE_INLINE(MatrixCamera)

} // namespace osg
