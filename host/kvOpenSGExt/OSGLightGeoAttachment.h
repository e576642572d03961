#pragma once

/// @file
/// Marks the geometry that pictures a light.

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGBoolFields.h>
#include <OpenSG/OSGConfig.h>

#include "OSGContainerTable.h"

OSG_BEGIN_NAMESPACE

class LightGeoAttachment;
typedef FCPtr<AttachmentPtr, LightGeoAttachment> LightGeoAttachmentPtr;

#define KV_LIGHT_GEO_ATTACHMENT_FIELDS(VALUE, VALUES, POINTER, LIST)                               \
    VALUE(SFBool, IsLightGeometry, "isLightGeometry")

/// On a node with a geometry core: tells whether the geometry stands for a light, which has its
/// beacon two levels above that node.
class KV_OPENSG_EXT_API LightGeoAttachment : public Attachment {
    KV_CONTAINER_DECL(LightGeoAttachment, Attachment, KV_LIGHT_GEO_ATTACHMENT_FIELDS)
};

KV_CONTAINER_INLINE(LightGeoAttachment)

OSG_END_NAMESPACE
