#pragma once

// A clip with all clips below it, laid out in one vector with the range of each. A frame's
// evaluation asks for the range of every clip that it meets; asking each clip on its own would walk
// everything below it again at every level.

#include <cstddef>
#include <vector>

class kvAnimationClip;

namespace kv::detail {

/// A clip and its range as its own getters give it. The entries of the clips below it follow.
struct ClipEntry {
    kvAnimationClip* clip;
    float start;      ///< kvAnimationClip::getStartFrame
    float end;        ///< kvAnimationClip::getEndFrame
    std::size_t size; ///< entries of this clip and all below it, itself included
};

/// Appends the clip and all clips below it, depth first in the order of tracks and items. Leaves
/// what the clip's own getters would leave: the items of every track in order of start.
void appendClipTree(std::vector<ClipEntry>& tree, kvAnimationClip& clip);

/// Appends the trees of the clip's direct sub-clips only; its own tracks are not sorted.
void appendSubclipTrees(std::vector<ClipEntry>& tree, const kvAnimationClip& clip);

} // namespace kv::detail
