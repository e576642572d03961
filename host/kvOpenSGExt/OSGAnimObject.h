#pragma once

/// @file
/// What the cores of animation nodes have in common.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNodeCore.h>
#include <OpenSG/OSGStringFields.h>

#include "OSGContainerTable.h"

OSG_BEGIN_NAMESPACE

class AnimObject;
typedef FCPtr<NodeCorePtr, AnimObject> AnimObjectPtr;

#define KV_ANIM_OBJECT_FIELDS(VALUE, VALUES, POINTER, LIST) VALUE(SFString, Name, "name")

/// The core of an animation node: an AnimCurve, AnimBlock or AnimClip.
class KV_OPENSG_EXT_API AnimObject : public NodeCore {
    KV_CONTAINER_DECL(AnimObject, NodeCore, KV_ANIM_OBJECT_FIELDS)
};

KV_CONTAINER_INLINE(AnimObject)

OSG_END_NAMESPACE
