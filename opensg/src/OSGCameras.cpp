// Cameras.

#include <OpenSG/OSGCamera.h>
#include <OpenSG/OSGMatrixCamera.h>
#include <OpenSG/OSGOrthographicCamera.h>
#include <OpenSG/OSGPerspectiveCamera.h>

#include <OpenSG/OSGMFieldTypeDef.inl>
#include <OpenSG/OSGSFieldTypeDef.inl>

namespace osg {

OSG_POINTER_FIELDS_DEF(Camera, AttachmentContainer)

OSG_ABSTR_TABLE_DEF(Camera, AttachmentContainer, OSG_CAMERA_FIELDS)
OSG_TABLE_DEF(PerspectiveCamera, Camera, OSG_PERSPECTIVE_CAMERA_FIELDS)
OSG_TABLE_DEF(MatrixCamera, Camera, OSG_MATRIX_CAMERA_FIELDS)
OSG_TABLE_DEF(OrthographicCamera, Camera, OSG_ORTHOGRAPHIC_CAMERA_FIELDS)

} // namespace osg
