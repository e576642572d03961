// The items of a clip in order of frames, with or without those of the sub-clips right on its
// tracks.

#include "clips/clipCollect.h"

#include "clips/rangeWalk.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <cstddef>

namespace kv::detail {

namespace {

const std::vector<kvAnimationBlock*>& listOn(const kvAnimationTrack& track, kvAnimationBlock*) {
    return track.getBlocks();
}

const std::vector<kvAnimationClip*>& listOn(const kvAnimationTrack& track, kvAnimationClip*) {
    return track.getClips();
}

const std::vector<kvAnimationSequence2*>& listOn(const kvAnimationTrack& track,
                                                 kvAnimationSequence2*) {
    return track.getSequences();
}

// The clip's own items at the end of the list, in order of frames among themselves.
template <class Item>
void append(const kvAnimationClip& clip, std::vector<Item*>& items) {
    for (const kvAnimationTrack* track : clip.getTracks()) {
        const std::vector<Item*>& list = listOn(*track, static_cast<Item*>(nullptr));
        items.insert(items.end(), list.begin(), list.end());
    }
}

template <class Item>
void sortFrom(std::size_t first, bool byEnd, std::vector<Item*>& items,
              SortScratch<Item*>& scratch) {
    sortByFrame(
        items.data() + first, items.size() - first,
        [byEnd](Item* item) { return frameKeyOf(*item, byEnd); }, scratch);
}

template <class Item>
void collectItems(kvAnimationClip& clip, bool byEnd, bool withSubclips, std::vector<Item*>& items,
                  SortScratch<Item*>& scratch) {
    items.clear();
    append(clip, items);
    if (withSubclips)
        for (const kvAnimationTrack* track : clip.getTracks())
            for (const kvAnimationClip* sub : track->getClips()) {
                // Sorted by start whatever the whole is sorted by: it decides between equal ends.
                const std::size_t first = items.size();
                append(*sub, items);
                sortFrom(first, false, items, scratch);
            }
    sortFrom(0, byEnd, items, scratch);
}

} // namespace

FrameKey frameKeyOf(const kvAnimationBlock& block, bool byEnd) {
    return {byEnd ? block.getEndFrame() : block.getStartFrame(), 0.0F};
}

FrameKey frameKeyOf(kvAnimationClip& clip, bool byEnd) {
    const FrameRange range = RangeWalk::range(clip);
    return {byEnd ? range.last : range.first, 0.0F};
}

void collect(kvAnimationClip& clip, bool byEnd, bool withSubclips,
             std::vector<kvAnimationBlock*>& items, SortScratch<kvAnimationBlock*>& scratch) {
    collectItems(clip, byEnd, withSubclips, items, scratch);
}

void collect(kvAnimationClip& clip, bool byEnd, bool withSubclips,
             std::vector<kvAnimationClip*>& items, SortScratch<kvAnimationClip*>& scratch) {
    collectItems(clip, byEnd, withSubclips, items, scratch);
}

void collect(kvAnimationClip& clip, bool byEnd, bool withSubclips,
             std::vector<kvAnimationSequence2*>& items,
             SortScratch<kvAnimationSequence2*>& scratch) {
    collectItems(clip, byEnd, withSubclips, items, scratch);
}

} // namespace kv::detail
