// Marks the geometry that pictures a light.
#include "OSGLightGeoAttachment.h"

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(LightGeoAttachment, Attachment, KV_LIGHT_GEO_ATTACHMENT_FIELDS)

OSG_END_NAMESPACE
