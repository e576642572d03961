// Clips in time: what they hold in order of frames, their range, moving, scaling and mirroring
// them, and the flags that they hand down to their tracks.

#include <kvAnimationClip.h>

#include "clips/clipCollect.h"
#include "clips/rangeWalk.h"

#include <kvAnimationBlock.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <iostream>

using kv::detail::FrameRange;
using kv::detail::RangeWalk;

namespace {

// The linear map of frames that scales a clip. In single precision and in this order of operations
// on purpose. A clip without length maps to frames that are no numbers; that is left as it is.
class FrameMap {
  public:
    FrameMap(float oldStart, float oldLength, float newLength, float newStart)
        : _oldStart(oldStart), _oldLength(oldLength), _newLength(newLength), _newStart(newStart) {}

    float operator()(float frame) const {
        return (frame - _oldStart) / _oldLength * _newLength + _newStart;
    }

  private:
    float _oldStart;
    float _oldLength;
    float _newLength;
    float _newStart;
};

// Both new edges are computed before the item is touched. The edge that moves outward goes first,
// so that the range never inverts in between.
template <class Item>
void stretchItem(Item& item, float start, float end, bool rightFirst) {
    if (rightFirst) item.stretchRight(end);
    item.stretchLeft(start);
    if (!rightFirst) item.stretchRight(end);
}

// On copies of the lists: stretching a sub-clip asks for its range, and what is asked for its range
// sorts its lists.
void stretchTrack(const kvAnimationTrack& track, const FrameMap& map, bool rightFirst) {
    const std::vector<kvAnimationBlock*> blocks = track.getBlocks();
    const std::vector<kvAnimationClip*> clips = track.getClips();
    const std::vector<kvAnimationSequence2*> sequences = track.getSequences();
    for (kvAnimationBlock* block : blocks)
        stretchItem(*block, map(block->getStartFrame()), map(block->getEndFrame()), rightFirst);
    for (kvAnimationClip* clip : clips) {
        const FrameRange range = RangeWalk::range(*clip);
        stretchItem(*clip, map(range.first), map(range.last), rightFirst);
    }
    for (kvAnimationSequence2* sequence : sequences)
        stretchItem(*sequence, map(sequence->getStartFrame()), map(sequence->getEndFrame()),
                    rightFirst);
}

} // namespace

std::vector<kvAnimationBlock*> kvAnimationClip::getBlocks(bool byEnd, bool withSubclips) {
    std::vector<kvAnimationBlock*> blocks;
    kv::detail::SortScratch<kvAnimationBlock*> scratch;
    kv::detail::collect(*this, byEnd, withSubclips, blocks, scratch);
    return blocks;
}

std::vector<kvAnimationClip*> kvAnimationClip::getSubclips(bool byEnd, bool withSubclips) {
    std::vector<kvAnimationClip*> clips;
    kv::detail::SortScratch<kvAnimationClip*> scratch;
    kv::detail::collect(*this, byEnd, withSubclips, clips, scratch);
    return clips;
}

std::vector<kvAnimationSequence2*> kvAnimationClip::getSequences(bool byEnd, bool withSubclips) {
    std::vector<kvAnimationSequence2*> sequences;
    kv::detail::SortScratch<kvAnimationSequence2*> scratch;
    kv::detail::collect(*this, byEnd, withSubclips, sequences, scratch);
    return sequences;
}

float kvAnimationClip::getStartFrame() {
    return RangeWalk::range(*this).first;
}

float kvAnimationClip::getEndFrame() {
    return RangeWalk::range(*this).last;
}

float kvAnimationClip::getDuration() {
    const FrameRange range = RangeWalk::range(*this);
    return range.last - range.first;
}

bool kvAnimationClip::frameInClipRange(float frame) {
    const FrameRange range = RangeWalk::range(*this);
    return range.first <= frame && frame <= range.last;
}

void kvAnimationClip::move(float delta) {
    for (const kvAnimationTrack* track : _tracks) {
        for (kvAnimationBlock* block : track->getBlocks())
            block->moveBlock(delta);
        for (kvAnimationClip* clip : track->getClips())
            clip->move(delta);
        for (kvAnimationSequence2* sequence : track->getSequences())
            sequence->moveBlock(delta);
    }
}

void kvAnimationClip::stretchLeft(float newStart) {
    const FrameRange range = RangeWalk::range(*this);
    const float oldLength = range.last - range.first;
    const float newLength = range.last - newStart;
    const FrameMap map(range.first, oldLength, newLength, newStart);
    const bool shrinks = newLength <= oldLength;
    for (const kvAnimationTrack* track : _tracks)
        stretchTrack(*track, map, shrinks);
}

void kvAnimationClip::stretchRight(float newEnd) {
    const FrameRange range = RangeWalk::range(*this);
    const float oldLength = range.last - range.first;
    const float newLength = newEnd - range.first;
    const FrameMap map(range.first, oldLength, newLength, range.first);
    const bool grows = newLength > oldLength;
    for (const kvAnimationTrack* track : _tracks)
        stretchTrack(*track, map, grows);
}

void kvAnimationClip::setFliped(bool fliped) {
    for (kvAnimationTrack* track : _tracks)
        track->setFliped(fliped);
    _fliped = fliped;
}

void kvAnimationClip::setMotionBlur(bool motionBlur) {
    for (kvAnimationTrack* track : _tracks)
        track->setMotionBlur(motionBlur);
    _motionBlur = motionBlur;
}

void kvAnimationClip::setAllSequencesDirty() {
    for (kvAnimationSequence2* sequence : getSequences(false, false))
        sequence->setDirty(true);
}

void kvAnimationClip::printClipInfo() {
    std::cout << "Clip Info" << std::endl;
    std::cout << "Name: " << _name << std::endl;
    std::cout << "Blocks: " << getBlocks(false, false).size() << std::endl;
    std::cout << "Subclips: " << getSubclips(false, false).size() << std::endl;
    std::cout << "Sequences: " << getSequences(false, false).size() << std::endl;
    std::cout << "Tracks: " << _tracks.size() << std::endl;
    for (const kvAnimationTrack* track : _tracks)
        std::cout << "\t" << track->getNumber() << ": " << track->getBlocks().size() << " blocks "
                  << track->getSequences().size() << " sequences " << track->getClips().size()
                  << " clips." << std::endl;
    std::cout << std::endl;
}
