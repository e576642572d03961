#pragma once

/// @file
/// The core of a node whose children are curve nodes.

#include "OSGAnimObject.h"

OSG_BEGIN_NAMESPACE

class AnimBlock;
typedef FCPtr<AnimObjectPtr, AnimBlock> AnimBlockPtr;

#define KV_ANIM_BLOCK_FIELDS(VALUE, VALUES, POINTER, LIST)

/// Groups the curves of one scene node; the curves are the children of the node with this core.
class KV_OPENSG_EXT_API AnimBlock : public AnimObject {
    KV_CONTAINER_DECL(AnimBlock, AnimObject, KV_ANIM_BLOCK_FIELDS)
};

KV_CONTAINER_INLINE(AnimBlock)

OSG_END_NAMESPACE
