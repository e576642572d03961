#pragma once

#include "clips/frameOrder.h"

#include <vector>

class kvAnimationBlock;
class kvAnimationClip;
class kvAnimationSequence2;

/// @file
/// The items of a clip in order of frames, into a list that the caller keeps: what
/// kvAnimationClip::getBlocks, getSubclips and getSequences return in a new one.

namespace kv::detail {

/// What an item of a track is sorted by: its start or its end. Asking a sub-clip sorts the lists
/// inside it.
FrameKey frameKeyOf(const kvAnimationBlock& block, bool byEnd);
FrameKey frameKeyOf(kvAnimationClip& clip, bool byEnd);

/// Replaces \p items. Allocates nothing once \p items and \p scratch are large enough.
void collect(kvAnimationClip& clip, bool byEnd, bool withSubclips,
             std::vector<kvAnimationBlock*>& items, SortScratch<kvAnimationBlock*>& scratch);
void collect(kvAnimationClip& clip, bool byEnd, bool withSubclips,
             std::vector<kvAnimationClip*>& items, SortScratch<kvAnimationClip*>& scratch);
void collect(kvAnimationClip& clip, bool byEnd, bool withSubclips,
             std::vector<kvAnimationSequence2*>& items,
             SortScratch<kvAnimationSequence2*>& scratch);

} // namespace kv::detail
