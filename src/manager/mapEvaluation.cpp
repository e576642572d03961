// The evaluation of a frame as (node, attribute, value) records. Unlike the binding records it
// knows no hold rule: curves of an active block always count, and sub-clips when they are active
// and the frame lies in their range.

#include <OpenSG/OSGConfig.h>

#include <kvAnimationManager2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationTrack.h>

#include "keys/constants.h"
#include "keys/curveEvaluation.h"
#include "manager/clipTree.h"
#include "manager/frameOrder.h"

namespace {

using Map = kvAnimationManager2::AnimationMap;
using kv::detail::ByStart;
using kv::detail::ClipEntry;

void appendCurves(std::vector<Map>& result, const std::vector<kvAnimationCurve*>& curves,
                  float frame) {
    for (const kvAnimationCurve* curve : curves) {
        if (!curve) continue;
        const float value = kv::detail::evaluateCurve(curve, frame);
        if (value == kv::detail::kNoCurveValue) continue;
        result.push_back({curve->getAppropriateNode(), curve->getAnimatedAttribute(), value});
    }
}

void appendBlocks(std::vector<Map>& result, const kvAnimationClip& clip, float frame,
                  bool motionBlurOnly) {
    std::vector<ByStart<kvAnimationBlock*>> blocks;
    for (const kvAnimationTrack* track : clip.getTracks()) {
        for (kvAnimationBlock* block : track->getBlocks())
            blocks.push_back({block->getStartFrame(), blocks.size(), block});
    }
    kv::detail::sortByStart(blocks, 0);
    for (const ByStart<kvAnimationBlock*>& entry : blocks) {
        const kvAnimationBlock& block = *entry.item;
        if (!block.getActive() || (motionBlurOnly && !block.getMotionBlur())) continue;
        appendCurves(result, block.getBlockCurves(), frame);
    }
}

/// @param first, end  the entries of everything below the clip
void appendClip(std::vector<Map>& result, const std::vector<ClipEntry>& tree,
                const kvAnimationClip& clip, std::size_t first, std::size_t end, float frame,
                bool motionBlurOnly) {
    std::vector<ByStart<std::size_t>> subclips;
    for (std::size_t i = first; i != end; i += tree[i].size)
        subclips.push_back({tree[i].start, i, i});
    kv::detail::sortByStart(subclips, 0);
    for (const ByStart<std::size_t>& entry : subclips) {
        const ClipEntry& child = tree[entry.item];
        if (!child.clip->getActive() || !(child.start <= frame && frame <= child.end)) continue;
        appendClip(result, tree, *child.clip, entry.item + 1, entry.item + child.size, frame,
                   motionBlurOnly);
    }
    appendBlocks(result, clip, frame, motionBlurOnly);
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
    std::vector<ClipEntry> tree;
    kv::detail::appendSubclipTrees(tree, *clip);
    appendClip(result, tree, *clip, 0, tree.size(), frame, motionBlurOnly);
    return result;
}
