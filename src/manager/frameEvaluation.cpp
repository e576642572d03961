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
#include "keys/curveBatch.h"
#include "keys/curveBinding.h"
#include "keys/curveEvaluation.h"
#include "keys/keyListReader.h"
#include "keys/keyPrefetch.h"
#include "keys/playedSegments.h"
#include "keys/prefetch.h"

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

    void add(const CurveBatch::Entry* evaluated, std::size_t count) override {
        for (std::size_t i = 0; i != count; ++i) {
            _list.emplace_back(CurveBinding::of(*evaluated[i].curve));
            _list.back().value = evaluated[i].value;
        }
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

/// The evaluation of curves at one frame, in the order in which they are added.
///
/// The curves of a large scene do not fit into the caches, and where its keys lie only a curve
/// tells. So they are evaluated in batches, and while one batch is, the keys of the next and the
/// curves of the one after that are on their way. A player's evaluations take down the segments,
/// and only curves of which none is known are asked.
class FrameEvaluation {
  public:
    FrameEvaluation(FieldSink& sink, float frame)
        : _sink(sink), _played(sink.playedSegments()), _at(static_cast<double>(frame)),
          _frame(frame) {
        if (_played != nullptr) _played->forgetIfEdited();
    }

    /// The list must stay as it is until finish().
    void add(const Curves& curves) {
        for (const kvAnimationCurve* const curve : curves) {
            if (!curve) continue;
            Stage& stage = *_gathering;
            Origin& origin = stage.origins[stage.batch.count];
            origin.siblings = &curves;
            if (_played != nullptr) origin.place = _played->nextPlace();
            origin.isKnown = _played != nullptr && _played->has(origin.place, *curve, _at);
            if (!origin.isKnown) KeyPrefetch::curve(curve);
            stage.batch.entries[stage.batch.count++].curve = curve;
            if (stage.batch.count == CurveBatch::kCapacity) advance();
        }
    }

    /// Hands over what has not been yet.
    void finish() {
        for (int stage = 0; stage != kStages; ++stage)
            advance();
    }

  private:
    struct Origin {
        const Curves* siblings;
        std::size_t place; // in _played
        bool isKnown;      // there
    };
    struct Stage {
        CurveBatch batch;
        Origin origins[CurveBatch::kCapacity];
    };
    static constexpr int kStages = 3;

    /// Every batch goes one stage on; the one that was last is empty then and gathers.
    void advance() {
        for (std::size_t i = 0; i != _waiting->batch.count; ++i)
            if (!_waiting->origins[i].isKnown)
                KeyPrefetch::segment(*_waiting->batch.entries[i].curve);
        evaluate(*_ready);
        Stage* const empty = _ready;
        _ready = _waiting;
        _waiting = _gathering;
        _gathering = empty;
    }

    void evaluate(Stage& stage) {
        CurveBatch& batch = stage.batch;
        if (batch.count == 0) return;
        keepThoseThatCount(stage);
        evaluateCurves(batch, _frame, _lastRoots);
        keepThoseWithValues(batch);
        _sink.add(batch.entries, batch.count);
        batch.count = 0;
    }

    /// Leaves out the curves that the hold rule leaves out, and tells where the others are.
    void keepThoseThatCount(Stage& stage) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i != stage.batch.count; ++i) {
            const Origin& origin = stage.origins[i];
            CurveBatch::Entry& entry = stage.batch.entries[kept];
            entry.curve = stage.batch.entries[i].curve;
            if (origin.isKnown)
                tellTaken(entry, origin);
            else if (!findSegment(entry, origin))
                continue;
            ++kept;
        }
        stage.batch.count = kept;
    }

    void tellTaken(CurveBatch::Entry& entry, const Origin& origin) const {
        const PlayedSegments::Taken& taken = _played->at(origin.place);
        entry.known = &taken.segment;
        entry.binding = taken.binding;
    }

    /// False when the hold rule leaves the curve out.
    bool findSegment(CurveBatch::Entry& entry, const Origin& origin) {
        const kvAnimationCurve& curve = *entry.curve;
        entry.known = nullptr;
        entry.binding = CurveBinding::stampOf(curve);
        entry.after = KeyListReader::firstAfterNear(curve, _at, KeyListReader::segmentEnd(curve));
        if (entry.after == 0) {
            if (!countsAmong(*origin.siblings, curve)) return false;
            entry.after = KeyListReader::firstAfter(curve, _at, 0);
        }
        if (_played != nullptr) _played->take(origin.place, curve, entry.after);
        return true;
    }

    static void keepThoseWithValues(CurveBatch& batch) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i != batch.count; ++i) {
            if (batch.entries[i].value == kNoCurveValue) continue;
            if (kept != i) batch.entries[kept] = batch.entries[i];
            ++kept;
        }
        batch.count = kept;
    }

    /// Inside its own range a curve counts whatever its siblings are; mostly all of them do, and
    /// the range of them all need not be known.
    bool countsAmong(const Curves& siblings, const kvAnimationCurve& curve) {
        const FrameRange own = rangeOf(curve);
        if (own.first <= _frame && _frame <= own.last) return true;
        if (_known != &siblings) _all = rangeOf(siblings);
        _known = &siblings;
        return countsAt(_frame, own, _all);
    }

    LastRoots _lastRoots;
    Stage _stages[kStages];
    Stage* _gathering = &_stages[0];
    Stage* _waiting = &_stages[1];
    Stage* _ready = &_stages[2];
    FieldSink& _sink;
    PlayedSegments* const _played;  // or null
    const Curves* _known = nullptr; // whose range is _all
    FrameRange _all;
    const double _at; // the frame
    const float _frame;
};

void evaluateBlock(FrameEvaluation& evaluation, const kvAnimationBlock* block,
                   const Request& request) {
    if (!block) return;
    if (!request.ignoreActivity && !block->getActive()) return;
    if (request.motionBlurOnly && !block->getMotionBlur()) return;
    evaluation.add(block->getBlockCurves());
}

/// What the blocks behind this one need: first themselves, then their lists of curves.
void prefetchBehind(const ClipRanges& ranges, const ClipRanges::Node& node, std::size_t block) {
    constexpr std::size_t kBlocksAhead = 12;
    constexpr std::size_t kListsAhead = 6;
    if (block + kBlocksAhead < node.blockCount)
        prefetchLines(ranges.block(node, block + kBlocksAhead), 3);
    if (block + kListsAhead < node.blockCount)
        KeyPrefetch::curves(ranges.block(node, block + kListsAhead)->getBlockCurves());
}

/// Sub-clips first, then blocks, each in order of start.
void evaluateNode(FrameEvaluation& evaluation, const ClipRanges& ranges,
                  const ClipRanges::Node& node, const Request& request) {
    if (!request.ignoreActivity && !node.clip->getActive()) return;
    for (std::size_t i = 0; i != node.subclipCount; ++i) {
        const ClipRanges::Node& subclip = ranges.subclip(node, i);
        if (countsAt(request.frame, subclip.range, node.range))
            evaluateNode(evaluation, ranges, subclip, request);
    }
    for (std::size_t i = 0; i != node.blockCount; ++i) {
        prefetchBehind(ranges, node, i);
        const kvAnimationBlock* const block = ranges.block(node, i);
        if (countsAt(request.frame, {block->getStartFrame(), block->getEndFrame()}, node.range))
            evaluateBlock(evaluation, block, request);
    }
}

} // namespace

void evaluateFields(FieldSink& sink, const std::vector<kvAnimationCurve*>& curves, float frame) {
    FrameEvaluation evaluation(sink, frame);
    evaluation.add(curves);
    evaluation.finish();
}

void evaluateFields(FieldSink& sink, kvAnimationBlock* block, float frame, bool motionBlurOnly,
                    bool ignoreActivity) {
    FrameEvaluation evaluation(sink, frame);
    evaluateBlock(evaluation, block, {frame, motionBlurOnly, ignoreActivity});
    evaluation.finish();
}

void evaluateFields(FieldSink& sink, kvAnimationClip* clip, float frame, bool motionBlurOnly,
                    bool ignoreActivity) {
    if (!clip) return;
    if (!ignoreActivity && !clip->getActive()) return; // an inactive clip is not even sorted
    // Kept for the next frame: its memory, and what it found out about the order of the blocks.
    thread_local ClipRanges ranges;
    ranges.collect(*clip);
    FrameEvaluation evaluation(sink, frame);
    evaluateNode(evaluation, ranges, ranges.root(), {frame, motionBlurOnly, ignoreActivity});
    evaluation.finish();
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
