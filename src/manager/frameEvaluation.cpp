// The evaluation of a frame: which curves count at it (the hold rule) and the records of their
// values. This is the inner loop of playback: each range is computed once, records are built in
// place in the result, and the working storage is kept from frame to frame.

#include "manager/frameEvaluation.h"

#include <kvAnimationManager2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>

#include "clips/clipRanges.h"
#include "keys/constants.h"
#include "keys/curveEvaluation.h"

#include <cmath>

namespace kv::detail {

namespace {

using Field = kvAnimationUtils2::AnimationField;

FrameRange rangeOf(const kvAnimationCurve& curve) {
    return {static_cast<float>(curve.getStartFrame()), static_cast<float>(curve.getEndFrame())};
}

/// Keyless curves take part with their inverted range.
FrameRange rangeOf(const std::vector<kvAnimationCurve*>& curves) {
    FrameRange all;
    for (const kvAnimationCurve* curve : curves) {
        if (!curve) continue;
        const FrameRange one = rangeOf(*curve);
        if (one.first < all.first) all.first = one.first;
        if (one.last > all.last) all.last = one.last;
    }
    return all;
}

/// The hold rule: whether a child counts at a frame within its parent. Inside its own range always;
/// past the parent's end only when it ends exactly there, before the parent's start only when it
/// starts exactly there, and exactly on the parent's start or end whatever its range.
bool countsAt(float frame, FrameRange child, FrameRange parent) {
    const bool notOver = frame <= child.last || frame == parent.last ||
                         (frame > parent.last && child.last == parent.last);
    const bool begun = frame >= child.first || frame == parent.first ||
                       (frame < parent.first && child.first == parent.first);
    return notOver && begun;
}

/// Converts to a curve's binding, so that emplace_back makes it right where it belongs.
struct BindingOf {
    const kvAnimationCurve& curve;
    operator Field() const { return curve.getAnimationField(); }
};

struct Request {
    float frame;
    bool motionBlurOnly;
    bool ignoreActivity;
};

/// Sub-clips first, then blocks, each in order of start.
void appendNode(std::vector<Field>& result, const ClipRanges& ranges, const ClipRanges::Node& node,
                const Request& request) {
    if (!request.ignoreActivity && !node.clip->getActive()) return;
    for (std::size_t i = 0; i != node.subclipCount; ++i) {
        const ClipRanges::Node& subclip = ranges.subclip(node, i);
        if (countsAt(request.frame, subclip.range, node.range))
            appendNode(result, ranges, subclip, request);
    }
    for (std::size_t i = 0; i != node.blockCount; ++i) {
        kvAnimationBlock* block = ranges.block(node, i);
        if (countsAt(request.frame, {block->getStartFrame(), block->getEndFrame()}, node.range))
            appendUpdatedFields(result, block, request.frame, request.motionBlurOnly,
                                request.ignoreActivity);
    }
}

} // namespace

void appendUpdatedFields(std::vector<Field>& result, const std::vector<kvAnimationCurve*>& curves,
                         float frame) {
    FrameRange all;
    bool allIsKnown = false;
    for (const kvAnimationCurve* curve : curves) {
        if (!curve) continue;
        const FrameRange own = rangeOf(*curve);
        // Inside its own range a curve counts whatever its siblings are; mostly all of them do, and
        // the range of them all need not be known.
        if (!(own.first <= frame && frame <= own.last)) {
            if (!allIsKnown) all = rangeOf(curves);
            allIsKnown = true;
            if (!countsAt(frame, own, all)) continue;
        }
        const float value = evaluateCurve(curve, frame);
        if (value == kNoCurveValue) continue;
        result.emplace_back(BindingOf{*curve});
        result.back().value = value;
    }
}

void appendUpdatedFields(std::vector<Field>& result, kvAnimationBlock* block, float frame,
                         bool motionBlurOnly, bool ignoreActivity) {
    if (!block) return;
    if (!ignoreActivity && !block->getActive()) return;
    if (motionBlurOnly && !block->getMotionBlur()) return;
    appendUpdatedFields(result, block->getBlockCurves(), frame);
}

void appendUpdatedFields(std::vector<Field>& result, kvAnimationClip* clip, float frame,
                         bool motionBlurOnly, bool ignoreActivity) {
    if (!clip) return;
    if (!ignoreActivity && !clip->getActive()) return; // an inactive clip is not even sorted
    // Kept for the next frame: its memory, and what it found out about the order of the blocks.
    thread_local ClipRanges ranges;
    ranges.collect(*clip);
    appendNode(result, ranges, ranges.root(), {frame, motionBlurOnly, ignoreActivity});
}

} // namespace kv::detail

using kv::detail::appendUpdatedFields;

std::vector<kvAnimationUtils2::AnimationField>
kvAnimationManager2::getUpdatedAnimationFields(float frame) {
    std::vector<kvAnimationUtils2::AnimationField> result;
    appendUpdatedFields(result, _selectedCurves, frame);
    return result;
}

std::vector<kvAnimationUtils2::AnimationField>
kvAnimationManager2::getUpdatedAnimationFields(kvAnimationBlock* block, float frame,
                                               bool motionBlurOnly, bool ignoreActivity) {
    std::vector<kvAnimationUtils2::AnimationField> result;
    appendUpdatedFields(result, block, frame, motionBlurOnly, ignoreActivity);
    return result;
}

std::vector<kvAnimationUtils2::AnimationField>
kvAnimationManager2::getUpdatedAnimationFields(kvAnimationClip* clip, float frame,
                                               bool motionBlurOnly, bool ignoreActivity) {
    std::vector<kvAnimationUtils2::AnimationField> result;
    appendUpdatedFields(result, clip, frame, motionBlurOnly, ignoreActivity);
    return result;
}

// --- numbers ----------------------------------------------------------------------------------

float kvAnimationManager2::computeCurveValue(kvAnimationCurve* curve, float frame) {
    return kv::detail::evaluateCurve(curve, frame);
}

std::pair<float, float>
kvAnimationManager2::getStartEndOfCurves(const std::vector<kvAnimationCurve*>& curves) {
    const kv::detail::FrameRange all = kv::detail::rangeOf(curves);
    return {all.first, all.last};
}

float kvAnimationManager2::setPrecision(float value, int digits) {
    const float scale = digits == 2 ? 100.0F : std::pow(10.0F, static_cast<float>(digits));
    return std::floor(value * scale) / scale;
}
