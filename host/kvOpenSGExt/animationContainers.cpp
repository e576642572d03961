// The stored animation: six containers, each made from the table in its header.
#include "OSGAnimationAttachment.h"

#include <OpenSG/OSGMFieldTypeDef.inl>
#include <OpenSG/OSGSFieldTypeDef.inl>

OSG_BEGIN_NAMESPACE

KV_POINTER_FIELD_DEF(AnimationControlPoint, "FieldContainerPtr")
KV_POINTER_FIELD_DEF(AnimationCurve, "FieldContainerPtr")
KV_POINTER_FIELD_DEF(AnimationBlock, "FieldContainerPtr")
KV_POINTER_FIELD_DEF(AnimationTrack, "FieldContainerPtr")
KV_POINTER_FIELD_DEF(AnimationClip, "FieldContainerPtr")

KV_CONTAINER_DEF(AnimationControlPoint, FieldContainer, KV_ANIMATION_CONTROL_POINT_FIELDS)
KV_CONTAINER_DEF(AnimationCurve, FieldContainer, KV_ANIMATION_CURVE_FIELDS)
KV_CONTAINER_DEF(AnimationBlock, FieldContainer, KV_ANIMATION_BLOCK_FIELDS)
KV_CONTAINER_DEF(AnimationTrack, FieldContainer, KV_ANIMATION_TRACK_FIELDS)
KV_CONTAINER_DEF(AnimationClip, FieldContainer, KV_ANIMATION_CLIP_FIELDS)
KV_CONTAINER_DEF(AnimationAttachment, Attachment, KV_ANIMATION_ATTACHMENT_FIELDS)

// All lists are taken out before anything is released, since releasing a curve or block may destroy
// the node and with it this attachment.
void AnimationAttachment::clear(void) {
    std::vector<FieldContainerPtr> released;
    released.insert(released.end(), _mfCurves.begin(), _mfCurves.end());
    released.insert(released.end(), _mfBlocks.begin(), _mfBlocks.end());
    released.insert(released.end(), _mfClips.begin(), _mfClips.end());
    _mfCurves.clear();
    _mfBlocks.clear();
    _mfClips.clear();
    for (FieldContainerPtr& element : released)
        subRefCP(element);
}

OSG_END_NAMESPACE
