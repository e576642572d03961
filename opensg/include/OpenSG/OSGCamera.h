#pragma once

/// @file
/// The base of cameras.

#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGFieldTable.h>

namespace osg {

class Camera;
typedef FCPtr<AttachmentContainerPtr, Camera> CameraPtr;
OSG_POINTER_FIELDS(Camera, FieldTraitsRecurseMapper)

#define OSG_CAMERA_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                                  \
    VALUE(SFNodePtr, Beacon, "beacon")                                                             \
    VALUE(SFReal32, Near, "near")                                                                  \
    VALUE(SFReal32, Far, "far")

OSG_ABSTR_TABLE_BASE(Camera, AttachmentContainer, OSG_CAMERA_FIELDS)

/// Looks along -z of its beacon, which is NOT counted: keep the node alive as long as the camera.
/// A camera is no node core.
class Camera : public CameraBase {
    OSG_TABLE_MEMBERS(Camera)
};

OSG_ABSTR_TABLE_INLINE(Camera)

} // namespace osg
