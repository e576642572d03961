// The evaluation of a frame: which curves count at it (the hold rule) and the records of their
// values. This is the inner loop of playback: each range is computed once, records are made where
// they stay, and the working storage is kept from frame to frame.

#include "manager/frameEvaluation.h"

#include <kvAnimationManager2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>

#include "clips/clipRanges.h"
#include "keys/constants.h"
#include "keys/curveBinding.h"
#include "keys/curveEvaluation.h"
#include "keys/keyPrefetch.h"

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

class ListSink final : public FieldSink {
  public:
    explicit ListSink(std::vector<Field>& list) : _list(list) {}

    void add(const kvAnimationCurve& curve, float value) override {
        _list.emplace_back(CurveBinding::of(curve));
        _list.back().value = value;
    }

  private:
    std::vector<Field>& _list;
};

struct Request {
    float frame;
    bool motionBlurOnly;
    bool ignoreActivity;
};

using Curves = std::vector<kvAnimationCurve*>;

/// The curves of one list and, behind them, those that are evaluated next.
class Upcoming {
  public:
    Upcoming(const Curves& curves, const Curves* next) : _curves(curves), _next(next) {}

    /// To be called before the curve with this place in the list is evaluated.
    void prefetchFrom(std::size_t place) const {
        KeyPrefetch::curve(at(place + KeyPrefetch::kCurveAhead));
        KeyPrefetch::memory(at(place + KeyPrefetch::kMemoryAhead));
        KeyPrefetch::segment(at(place + KeyPrefetch::kSegmentAhead));
    }

  private:
    const kvAnimationCurve* at(std::size_t place) const {
        if (place < _curves.size()) return _curves[place];
        place -= _curves.size();
        return _next != nullptr && place < _next->size() ? (*_next)[place] : nullptr;
    }

    const Curves& _curves;
    const Curves* _next;
};

/// `next` may be null.
void evaluateCurves(FieldSink& sink, const Curves& curves, float frame, const Curves* next) {
    const Upcoming upcoming(curves, next);
    FrameRange all;
    bool allIsKnown = false;
    for (std::size_t i = 0; i < curves.size(); ++i) {
        upcoming.prefetchFrom(i);
        const kvAnimationCurve* const curve = curves[i];
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
        if (value != kNoCurveValue) sink.add(*curve, value);
    }
}

void evaluateBlock(FieldSink& sink, const kvAnimationBlock* block, const Request& request,
                   const Curves* next) {
    if (!block) return;
    if (!request.ignoreActivity && !block->getActive()) return;
    if (request.motionBlurOnly && !block->getMotionBlur()) return;
    evaluateCurves(sink, block->getBlockCurves(), request.frame, next);
}

/// Sub-clips first, then blocks, each in order of start.
void evaluateNode(FieldSink& sink, const ClipRanges& ranges, const ClipRanges::Node& node,
                  const Request& request) {
    if (!request.ignoreActivity && !node.clip->getActive()) return;
    for (std::size_t i = 0; i != node.subclipCount; ++i) {
        const ClipRanges::Node& subclip = ranges.subclip(node, i);
        if (countsAt(request.frame, subclip.range, node.range))
            evaluateNode(sink, ranges, subclip, request);
    }
    for (std::size_t i = 0; i != node.blockCount; ++i) {
        const kvAnimationBlock* const block = ranges.block(node, i);
        if (!countsAt(request.frame, {block->getStartFrame(), block->getEndFrame()}, node.range))
            continue;
        evaluateBlock(sink, block, request,
                      i + 1 != node.blockCount ? &ranges.block(node, i + 1)->getBlockCurves()
                                               : nullptr);
    }
}

} // namespace

void evaluateFields(FieldSink& sink, const std::vector<kvAnimationCurve*>& curves, float frame) {
    evaluateCurves(sink, curves, frame, nullptr);
}

void evaluateFields(FieldSink& sink, kvAnimationBlock* block, float frame, bool motionBlurOnly,
                    bool ignoreActivity) {
    evaluateBlock(sink, block, {frame, motionBlurOnly, ignoreActivity}, nullptr);
}

void evaluateFields(FieldSink& sink, kvAnimationClip* clip, float frame, bool motionBlurOnly,
                    bool ignoreActivity) {
    if (!clip) return;
    if (!ignoreActivity && !clip->getActive()) return; // an inactive clip is not even sorted
    // Kept for the next frame: its memory, and what it found out about the order of the blocks.
    thread_local ClipRanges ranges;
    ranges.collect(*clip);
    evaluateNode(sink, ranges, ranges.root(), {frame, motionBlurOnly, ignoreActivity});
}

void appendUpdatedFields(std::vector<Field>& result, const std::vector<kvAnimationCurve*>& curves,
                         float frame) {
    ListSink sink(result);
    evaluateFields(sink, curves, frame);
}

void appendUpdatedFields(std::vector<Field>& result, kvAnimationBlock* block, float frame,
                         bool motionBlurOnly, bool ignoreActivity) {
    ListSink sink(result);
    evaluateFields(sink, block, frame, motionBlurOnly, ignoreActivity);
}

void appendUpdatedFields(std::vector<Field>& result, kvAnimationClip* clip, float frame,
                         bool motionBlurOnly, bool ignoreActivity) {
    ListSink sink(result);
    evaluateFields(sink, clip, frame, motionBlurOnly, ignoreActivity);
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
