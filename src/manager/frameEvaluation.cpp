// The evaluation of a frame: which curves count at it (the hold rule) and the records of their
// values. This is the inner loop of playback: each range is computed once, records are built in
// place in the result, and the working storage is kept from frame to frame.

#include "manager/frameEvaluation.h"

#include <kvAnimationManager2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationTrack.h>

#include "keys/constants.h"
#include "keys/curveEvaluation.h"
#include "manager/clipTree.h"
#include "manager/frameOrder.h"

#include <cmath>

namespace kv::detail {

namespace {

using Field = kvAnimationUtils2::AnimationField;

struct Range {
    float start;
    float end;
};

Range rangeOf(const kvAnimationCurve& curve) {
    return {static_cast<float>(curve.getStartFrame()), static_cast<float>(curve.getEndFrame())};
}

/// Keyless curves take part with their inverted range.
Range rangeOf(const std::vector<kvAnimationCurve*>& curves) {
    Range all{kFrameMax, kFrameMin};
    for (const kvAnimationCurve* curve : curves) {
        if (!curve) continue;
        const Range one = rangeOf(*curve);
        if (one.start < all.start) all.start = one.start;
        if (one.end > all.end) all.end = one.end;
    }
    return all;
}

/// The hold rule: whether a child counts at a frame within its parent. Inside its own range always;
/// past the parent's end only when it ends exactly there, before the parent's start only when it
/// starts exactly there, and exactly on the parent's start or end whatever its range.
bool countsAt(float frame, Range child, Range parent) {
    const bool notOver = frame <= child.end || frame == parent.end ||
                         (frame > parent.end && child.end == parent.end);
    const bool begun = frame >= child.start || frame == parent.start ||
                       (frame < parent.start && child.start == parent.start);
    return notOver && begun;
}

/// Converts to a curve's binding, so that emplace_back makes it right where it belongs.
struct BindingOf {
    const kvAnimationCurve& curve;
    operator Field() const { return curve.getAnimationField(); }
};

/// What one evaluation of a clip needs besides its result. Each level of nesting uses the end of
/// the vectors and leaves them as it found them.
struct Workspace {
    std::vector<ClipEntry> tree;
    std::vector<ByStart<std::size_t>> subclips; // items are indices into the tree
    std::vector<ByStart<kvAnimationBlock*>> blocks;

    void clear() {
        tree.clear();
        subclips.clear();
        blocks.clear();
    }
};

class ClipEvaluation {
  public:
    ClipEvaluation(std::vector<Field>& result, float frame, bool motionBlurOnly,
                   bool ignoreActivity, Workspace& workspace)
        : _result(result), _frame(frame), _motionBlurOnly(motionBlurOnly),
          _ignoreActivity(ignoreActivity), _work(workspace) {}

    void append(std::size_t index) {
        const ClipEntry& clip = _work.tree[index];
        if (!_ignoreActivity && !clip.clip->getActive()) return;
        appendSubclips(index);
        appendBlocks(clip);
    }

  private:
    void appendSubclips(std::size_t index) {
        const Range parent{_work.tree[index].start, _work.tree[index].end};
        const std::size_t first = _work.subclips.size();
        const std::size_t end = index + _work.tree[index].size;
        for (std::size_t i = index + 1; i != end; i += _work.tree[i].size)
            _work.subclips.push_back({_work.tree[i].start, i, i});
        sortByStart(_work.subclips, first);

        const std::size_t last = _work.subclips.size();
        for (std::size_t i = first; i != last; ++i) {
            const std::size_t child = _work.subclips[i].item;
            const ClipEntry& entry = _work.tree[child];
            if (countsAt(_frame, {entry.start, entry.end}, parent)) append(child);
        }
        _work.subclips.resize(first);
    }

    void appendBlocks(const ClipEntry& clip) {
        _work.blocks.clear();
        for (const kvAnimationTrack* track : clip.clip->getTracks()) {
            for (kvAnimationBlock* block : track->getBlocks())
                _work.blocks.push_back({block->getStartFrame(), _work.blocks.size(), block});
        }
        sortByStart(_work.blocks, 0);
        for (const ByStart<kvAnimationBlock*>& entry : _work.blocks) {
            if (countsAt(_frame, {entry.start, entry.item->getEndFrame()}, {clip.start, clip.end}))
                appendUpdatedFields(_result, entry.item, _frame, _motionBlurOnly, _ignoreActivity);
        }
    }

    std::vector<Field>& _result;
    const float _frame;
    const bool _motionBlurOnly;
    const bool _ignoreActivity;
    Workspace& _work;
};

} // namespace

void appendUpdatedFields(std::vector<Field>& result, const std::vector<kvAnimationCurve*>& curves,
                         float frame) {
    const Range all = rangeOf(curves);
    for (const kvAnimationCurve* curve : curves) {
        if (!curve || !countsAt(frame, rangeOf(*curve), all)) continue;
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
    thread_local Workspace workspace;
    workspace.clear();
    appendClipTree(workspace.tree, *clip);
    ClipEvaluation(result, frame, motionBlurOnly, ignoreActivity, workspace).append(0);
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
    const kv::detail::Range all = kv::detail::rangeOf(curves);
    return {all.start, all.end};
}

float kvAnimationManager2::setPrecision(float value, int digits) {
    const float scale = digits == 2 ? 100.0F : std::pow(10.0F, static_cast<float>(digits));
    return std::floor(value * scale) / scale;
}
