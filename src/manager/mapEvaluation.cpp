// The evaluation of a frame as (node, attribute, value) records. Unlike the binding records it
// knows no hold rule: curves of an active block always count, and sub-clips when they are active
// and the frame lies in their range.

#include <OpenSG/OSGConfig.h>

#include <kvAnimationManager2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>

#include "clips/clipRanges.h"
#include "keys/constants.h"
#include "keys/curveEvaluation.h"

namespace {

using Map = kvAnimationManager2::AnimationMap;
using kv::detail::ClipRanges;

void appendCurves(std::vector<Map>& result, const std::vector<kvAnimationCurve*>& curves,
                  float frame) {
    for (const kvAnimationCurve* curve : curves) {
        if (!curve) continue;
        const float value = kv::detail::evaluateCurve(curve, frame);
        if (value == kv::detail::kNoCurveValue) continue;
        result.push_back({curve->getAppropriateNode(), curve->getAnimatedAttribute(), value});
    }
}

void appendBlock(std::vector<Map>& result, const kvAnimationBlock& block, float frame,
                 bool motionBlurOnly) {
    if (block.getActive() && (!motionBlurOnly || block.getMotionBlur()))
        appendCurves(result, block.getBlockCurves(), frame);
}

void appendNode(std::vector<Map>& result, const ClipRanges& ranges, const ClipRanges::Node& node,
                float frame, bool motionBlurOnly) {
    if (!node.clip->getActive() || !(node.range.first <= frame && frame <= node.range.last)) return;
    for (std::size_t i = 0; i != node.subclipCount; ++i)
        appendNode(result, ranges, ranges.subclip(node, i), frame, motionBlurOnly);
    for (std::size_t i = 0; i != node.blockCount; ++i)
        appendBlock(result, *ranges.block(node, i), frame, motionBlurOnly);
}

} // namespace

std::vector<kvAnimationManager2::AnimationMap>
kvAnimationManager2::computeCurveValues(float frame) {
    std::vector<AnimationMap> result;
    appendCurves(result, _selectedCurves, frame);
    return result;
}

std::vector<kvAnimationManager2::AnimationMap>
kvAnimationManager2::computeCurveValues(kvAnimationBlock* block, float frame) {
    std::vector<AnimationMap> result;
    if (block) appendCurves(result, block->getBlockCurves(), frame);
    return result;
}

std::vector<kvAnimationManager2::AnimationMap>
kvAnimationManager2::computeCurveValues(kvAnimationClip* clip, float frame, bool motionBlurOnly) {
    std::vector<AnimationMap> result;
    if (!clip) return result;
    // The range and the activity of the clip itself are not asked, and so its own tracks are not
    // sorted; each sub-clip is walked once for all ranges below it.
    ClipRanges ranges;
    for (kvAnimationClip* subclip : clip->getSubclips(false, false)) {
        if (!subclip->getActive()) continue;
        ranges.collect(*subclip);
        appendNode(result, ranges, ranges.root(), frame, motionBlurOnly);
    }
    for (const kvAnimationBlock* block : clip->getBlocks(false, false))
        appendBlock(result, *block, frame, motionBlurOnly);
    return result;
}
