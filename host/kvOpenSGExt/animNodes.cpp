// Animation nodes, their cores and their attachment.
#include "OSGAnimAttachment.h"
#include "OSGAnimBlock.h"
#include "OSGAnimClip.h"
#include "OSGAnimCurve.h"
#include "OSGAnimNode.h"

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(AnimObject, NodeCore, KV_ANIM_OBJECT_FIELDS)
KV_CONTAINER_DEF(AnimBlock, AnimObject, KV_ANIM_BLOCK_FIELDS)
KV_CONTAINER_DEF(AnimClip, AnimObject, KV_ANIM_CLIP_FIELDS)
KV_CONTAINER_DEF(AnimCurve, AnimObject, KV_ANIM_CURVE_FIELDS)
KV_CONTAINER_DEF(AnimNode, Node, KV_ANIM_NODE_FIELDS)
KV_CONTAINER_DEF(AnimAttachment, Attachment, KV_ANIM_ATTACHMENT_FIELDS)

namespace {

template <class MFieldT>
kvtable::ElementOf<MFieldT> elementOr0(const MFieldT& field, UInt32 index) {
    return index < field.getSize() ? field[index] : kvtable::ElementOf<MFieldT>();
}

} // namespace

void AnimCurve::addPoint(const Vec2f& point, const Vec2f& inTangent, const Vec2f& outTangent,
                         Real32 inWeight, Real32 outWeight, bool broken, bool weighted) {
    _mfControlPoints.push_back(point);
    _mfInTangents.push_back(inTangent);
    _mfOutTangents.push_back(outTangent);
    _mfInWeights.push_back(inWeight);
    _mfOutWeights.push_back(outWeight);
    _mfBrokenFlags.push_back(broken ? 1 : 0);
    _mfWeightedFlags.push_back(weighted ? 1 : 0);
}

AnimCurve::Point AnimCurve::getPoint(UInt32 index) const {
    Point point;
    point.point = elementOr0(_mfControlPoints, index);
    point.inTangent = elementOr0(_mfInTangents, index);
    point.outTangent = elementOr0(_mfOutTangents, index);
    point.inWeight = elementOr0(_mfInWeights, index);
    point.outWeight = elementOr0(_mfOutWeights, index);
    point.broken = elementOr0(_mfBrokenFlags, index) != 0;
    point.weighted = elementOr0(_mfWeightedFlags, index) != 0;
    return point;
}

void AnimCurve::clearPoints(void) {
    _mfControlPoints.clear();
    _mfInTangents.clear();
    _mfOutTangents.clear();
    _mfInWeights.clear();
    _mfOutWeights.clear();
    _mfBrokenFlags.clear();
    _mfWeightedFlags.clear();
}

OSG_END_NAMESPACE
