#pragma once

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <initializer_list>
#include <memory>
#include <string>

/// Small animation objects for tests. Everything returned by new... belongs to whoever it is given
/// to next, usually a block, a track or a clip.
namespace kvtest {

/// Deletes through the type itself: blocks and sequence items have no virtual destructor.
using BlockOwner = std::unique_ptr<kvAnimationBlock>;
using SequenceOwner = std::unique_ptr<kvAnimationSequence2>;

/// User keys at these frames, with the value 10 times the frame and handles a quarter frame away.
inline kvAnimationCurve* newCurve(std::initializer_list<float> frames,
                                  const std::string& attribute = "translateX") {
    auto* curve = new kvAnimationCurve(attribute);
    for (const float x : frames)
        curve->importControlPoint(x, 10.0F * x, x - 0.25F, 10.0F * x - 1.0F, x + 0.25F,
                                  10.0F * x + 1.0F, kvControlPoint::User);
    return curve;
}

/// A block with one curve of two keys.
inline kvAnimationBlock* newBlock(float start, float end, const std::string& name = "") {
    auto* block = new kvAnimationBlock(name);
    block->addCurve(newCurve({start, end}));
    return block;
}

inline kvAnimationSequence2* newSequence(float start, float end, const std::string& text = "") {
    auto* sequence = new kvAnimationSequence2(text);
    sequence->setStartFrame(start);
    sequence->setEndFrame(end);
    return sequence;
}

/// A clip with a track for each of the blocks.
inline kvAnimationClip* newClip(std::initializer_list<kvAnimationBlock*> blocks) {
    auto* clip = new kvAnimationClip();
    for (kvAnimationBlock* block : blocks)
        clip->addBlock(block);
    return clip;
}

/// A track with these blocks.
inline void fill(kvAnimationTrack& track, std::initializer_list<kvAnimationBlock*> blocks) {
    for (kvAnimationBlock* block : blocks)
        track.addBlock(block);
}

} // namespace kvtest
