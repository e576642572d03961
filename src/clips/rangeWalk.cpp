// The ranges of clips and tracks, computed from the bottom of the tree upward: every list below is
// sorted once and every sub-clip asked once.

#include "clips/rangeWalk.h"

#include "clips/frameOrder.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <initializer_list>
#include <vector>

namespace kv::detail {

namespace {

enum class Walk { Look, Update };

// A NaN is left out of these two wherever there is a number beside it.
float leastOf(std::initializer_list<float> frames) {
    float least = *frames.begin();
    for (const float frame : frames)
        if (frameBefore(frame, least)) least = frame;
    return least;
}

float greatestOf(std::initializer_list<float> frames) {
    float greatest = *frames.begin();
    for (const float frame : frames)
        if (greatest < frame || greatest != greatest) greatest = frame;
    return greatest;
}

// What a track needs to know of one of its lists after sorting it.
struct ListSummary {
    float firstStart = kFrameMax; // start of the item that starts first
    float lastEnd = kFrameMin;    // end of the item that starts last
    float greatestEnd = kFrameMin;
};

// An update sorts by end and then by start. The sorts keep the order of equal items, so together
// they are one sort by start with the end deciding between equal starts.
FrameKey keyOf(FrameRange range, Walk walk) {
    return {range.first, walk == Walk::Update ? range.last : 0.0F};
}

template <class Item>
ListSummary visitItems(std::vector<Item*>& items, Walk walk) {
    if (items.empty()) return {};
    sortByFrame(items, [walk](const Item* item) {
        return keyOf({item->getStartFrame(), item->getEndFrame()}, walk);
    });
    ListSummary summary{items.front()->getStartFrame(), items.back()->getEndFrame(),
                        items.front()->getEndFrame()};
    if (walk == Walk::Update)
        for (const Item* item : items)
            if (frameBefore(summary.greatestEnd, item->getEndFrame()))
                summary.greatestEnd = item->getEndFrame();
    return summary;
}

struct SubclipRange {
    kvAnimationClip* clip;
    FrameRange range;
};

// Sub-clips in the order of the list need no memory; only when they turn out to be out of order are
// their ranges collected, by looking again at what the first look has left sorted and updated.
void sortSubclips(std::vector<kvAnimationClip*>& clips, Walk walk, ListSummary& summary) {
    std::vector<SubclipRange> ranges;
    ranges.reserve(clips.size());
    for (kvAnimationClip* clip : clips)
        ranges.push_back({clip, RangeWalk::range(*clip)});
    sortByFrame(ranges, [walk](const SubclipRange& sub) { return keyOf(sub.range, walk); });
    for (std::size_t i = 0; i < clips.size(); ++i)
        clips[i] = ranges[i].clip;
    summary.firstStart = ranges.front().range.first;
    summary.lastEnd = ranges.back().range.last;
}

ListSummary visitSubclips(std::vector<kvAnimationClip*>& clips, Walk walk) {
    ListSummary summary;
    bool ordered = true;
    FrameKey previous{0.0F, 0.0F};
    for (std::size_t i = 0; i < clips.size(); ++i) {
        const FrameRange range =
            walk == Walk::Update ? RangeWalk::update(*clips[i]) : RangeWalk::range(*clips[i]);
        const FrameKey key = keyOf(range, walk);
        if (i == 0) {
            summary = {range.first, range.last, range.last};
        } else {
            ordered = ordered && !keyBefore(key, previous);
            summary.lastEnd = range.last;
            if (frameBefore(summary.greatestEnd, range.last)) summary.greatestEnd = range.last;
        }
        previous = key;
    }
    if (!ordered) sortSubclips(clips, walk, summary);
    return summary;
}

} // namespace

void ClipRangeFold::add(FrameRange track) {
    if (!_any || frameBefore(track.first, _range.first)) _range.first = track.first;
    if (!_any || frameBefore(_range.last, track.last)) _range.last = track.last;
    _any = true;
}

FrameRange RangeWalk::range(kvAnimationClip& clip) {
    ClipRangeFold fold;
    for (kvAnimationTrack* track : clip._tracks)
        fold.add(range(*track));
    return fold.range();
}

FrameRange RangeWalk::range(kvAnimationTrack& track) {
    const ListSummary clips = visitSubclips(track._clips, Walk::Look);
    return range(track, {clips.firstStart, clips.lastEnd});
}

FrameRange RangeWalk::range(kvAnimationTrack& track, FrameRange subclips) {
    const ListSummary blocks = visitItems(track._blocks, Walk::Look);
    const ListSummary sequences = visitItems(track._sequences, Walk::Look);
    return {leastOf({blocks.firstStart, subclips.first, sequences.firstStart}),
            greatestOf({blocks.lastEnd, subclips.last})};
}

FrameRange RangeWalk::update(kvAnimationClip& clip) {
    ClipRangeFold fold;
    for (kvAnimationTrack* track : clip._tracks)
        fold.add(update(*track));
    return fold.range();
}

FrameRange RangeWalk::update(kvAnimationTrack& track) {
    for (kvAnimationBlock* block : track._blocks)
        block->updateBlockBounds();
    const ListSummary clips = visitSubclips(track._clips, Walk::Update);
    const ListSummary blocks = visitItems(track._blocks, Walk::Update);
    const ListSummary sequences = visitItems(track._sequences, Walk::Update);
    track._lastFrame = greatestOf({blocks.greatestEnd, clips.greatestEnd, sequences.greatestEnd});
    track._firstFrame = leastOf({blocks.firstStart, clips.firstStart, sequences.firstStart});
    return {track._firstFrame, greatestOf({blocks.lastEnd, clips.lastEnd})};
}

} // namespace kv::detail
