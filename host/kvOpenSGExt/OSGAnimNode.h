#pragma once

/// @file
/// A node of animation objects.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

#include "OSGContainerTable.h"

OSG_BEGIN_NAMESPACE

class AnimNode;
typedef FCPtr<NodePtr, AnimNode> AnimNodePtr;

#define KV_ANIM_NODE_FIELDS(VALUE, VALUES, POINTER, LIST)

/// A node whose core is an AnimCurve, AnimBlock or AnimClip. It hangs on an AnimAttachment, not in
/// the scene.
class KV_OPENSG_EXT_API AnimNode : public Node {
    KV_CONTAINER_DECL(AnimNode, Node, KV_ANIM_NODE_FIELDS)
};

KV_CONTAINER_INLINE(AnimNode)

OSG_END_NAMESPACE
