#pragma once

#include "clips/frameOrder.h"
#include "clips/rangeWalk.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class kvAnimationBlock;
class kvAnimationClip;
class kvAnimationTrack;

/// @file
/// A clip and everything below it as the evaluation of a frame needs it: every range computed once,
/// every list in order of start.

namespace kv::detail {

/// The result of one descent through a clip. Evaluation then goes down through the nodes:
/// @code
///   ranges.collect(*clip);
///   evaluate(ranges, ranges.root());                  // for each node:
///     for (std::size_t i = 0; i < node.subclipCount; ++i)
///         evaluate(ranges, ranges.subclip(node, i));  //   what getSubclips(false, false) gives
///     for (std::size_t i = 0; i < node.blockCount; ++i)
///         ... ranges.block(node, i) ...               //   what getBlocks(false, false) gives
/// @endcode
/// The items and their order are those of kvAnimationClip::getSubclips and getBlocks, called after
/// the clip's range was asked for; and as that does, collecting leaves the lists of all tracks at
/// every depth sorted by start frame. A sub-clip that is nested at several places has a node at
/// each.
///
/// Keep the object from frame to frame: once its memory is large enough nothing is allocated, and
/// lists whose order did not change since the last time are only checked, not sorted. It holds
/// pointers but reads through them only in collect, so it may outlive the clip.
class ClipRanges {
  public:
    struct Node {
        kvAnimationClip* clip;
        FrameRange range; ///< getStartFrame and getEndFrame of the clip
        std::uint32_t firstSubclip;
        std::uint32_t subclipCount;
        std::uint32_t firstBlock;
        std::uint32_t blockCount;
    };

    /// Forgets what was collected before.
    void collect(kvAnimationClip& clip);

    const Node& root() const { return _nodes.back(); }
    const Node& subclip(const Node& node, std::size_t index) const {
        return _nodes[_subclips[node.firstSubclip + index]];
    }
    kvAnimationBlock* block(const Node& node, std::size_t index) const {
        return _blocks[node.firstBlock + index];
    }

  private:
    // A sub-clip on its way into the list of its parent.
    struct Entry {
        kvAnimationClip* clip;
        FrameRange range;
        std::uint32_t node;
    };

    Entry visit(kvAnimationClip& clip);
    static void prefetchBehind(const kvAnimationClip& clip, std::size_t visited);
    FrameRange visitTrack(kvAnimationTrack& track);
    void sortEntries(std::size_t first);
    void appendBlocks(const kvAnimationClip& clip);

    std::vector<Node> _nodes; // a clip's node comes after those of everything below it
    std::vector<std::uint32_t> _subclips;
    std::vector<kvAnimationBlock*> _blocks;
    std::vector<std::uint32_t> _blockOrder; // for each of _blocks its place before the sort
    std::vector<Entry> _pending;            // used as a stack, one stretch for each open clip
    std::vector<kvAnimationBlock*> _unsortedBlocks;
    SortScratch<Entry> _entryScratch;
    std::vector<PlacedKey> _keys;
};

} // namespace kv::detail
