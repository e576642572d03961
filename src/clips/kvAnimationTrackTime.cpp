// Tracks in time: the order and the range of what lies on them, mirroring, and the flags that a
// track hands down to its items.

#include <kvAnimationTrack.h>

#include "clips/clipCollect.h"
#include "clips/rangeWalk.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationSequence2.h>

#include <vector>

using kv::detail::FrameRange;
using kv::detail::RangeWalk;

namespace {

template <class Item>
void sortItems(std::vector<Item*>& items, bool byEnd) {
    kv::detail::SortScratch<Item*> scratch;
    kv::detail::sortByFrame(
        items.data(), items.size(),
        [byEnd](Item* item) { return kv::detail::frameKeyOf(*item, byEnd); }, scratch);
}

} // namespace

void kvAnimationTrack::sort(bool byEnd) {
    sortItems(_blocks, byEnd);
    sortItems(_clips, byEnd);
    sortItems(_sequences, byEnd);
}

void kvAnimationTrack::updateBounds() {
    RangeWalk::update(*this);
}

float kvAnimationTrack::getFirstFrame() {
    return RangeWalk::range(*this).first;
}

float kvAnimationTrack::getLastFrame() {
    return RangeWalk::range(*this).last;
}

float kvAnimationTrack::getDuration() {
    const FrameRange range = RangeWalk::range(*this);
    return range.last - range.first;
}

void kvAnimationTrack::setFliped(bool fliped) {
    const FrameRange range = RangeWalk::range(*this);
    for (kvAnimationClip* clip : _clips)
        clip->setFliped(fliped);
    const auto mirrored = [range](const kvAnimationBlock& item) {
        return (range.last - item.getEndFrame()) - (item.getStartFrame() - range.first);
    };
    for (kvAnimationBlock* block : _blocks) {
        block->flip();
        block->moveBlock(mirrored(*block));
    }
    // A sequence has no inside to turn round: it only takes its mirrored place.
    for (kvAnimationSequence2* sequence : _sequences)
        sequence->moveBlock(mirrored(*sequence));
    _fliped = fliped;
}

void kvAnimationTrack::setMotionBlur(bool motionBlur) {
    for (kvAnimationBlock* block : _blocks)
        block->setMotionBlur(motionBlur);
    for (kvAnimationClip* clip : _clips)
        clip->setMotionBlur(motionBlur);
    _motionBlur = motionBlur;
}

void kvAnimationTrack::setActive(bool active) {
    for (kvAnimationBlock* block : _blocks)
        block->setActive(active);
    for (kvAnimationClip* clip : _clips)
        clip->setActive(active);
    for (kvAnimationSequence2* sequence : _sequences)
        sequence->setActive(active);
    _active = active;
}
