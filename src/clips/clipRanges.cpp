// A clip and everything below it as the evaluation of a frame needs it, in one descent that
// allocates nothing once it has run.

#include "clips/clipRanges.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationTrack.h>

#include "keys/prefetch.h"

namespace kv::detail {

namespace {

FrameKey startOf(const kvAnimationBlock* block) {
    return {block->getStartFrame(), 0.0F};
}

// Whether order, a permutation left by an earlier sort, still sorts these blocks. Its entries may
// belong to another list by now; but if keys and places ascend strictly, no place appears twice,
// and it is the one permutation that a sort would give.
bool stillSorts(const std::uint32_t* order, const std::vector<kvAnimationBlock*>& blocks) {
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (order[i] >= blocks.size()) return false;
        if (i == 0) continue;
        const PlacedKey before{startOf(blocks[order[i - 1]]), order[i - 1]};
        const PlacedKey here{startOf(blocks[order[i]]), order[i]};
        if (!(before < here)) return false;
    }
    return true;
}

} // namespace

void ClipRanges::collect(kvAnimationClip& clip) {
    _nodes.clear();
    _subclips.clear();
    _blocks.clear();
    _pending.clear();
    visit(clip);
}

ClipRanges::Entry ClipRanges::visit(kvAnimationClip& clip) {
    const std::size_t firstPending = _pending.size();
    ClipRangeFold fold;
    for (std::size_t i = 0; i < clip._tracks.size(); ++i) {
        prefetchBehind(clip, i);
        fold.add(visitTrack(*clip._tracks[i]));
    }
    sortEntries(firstPending);

    Node node{};
    node.clip = &clip;
    node.range = fold.range();
    node.firstSubclip = static_cast<std::uint32_t>(_subclips.size());
    node.subclipCount = static_cast<std::uint32_t>(_pending.size() - firstPending);
    for (std::size_t i = firstPending; i < _pending.size(); ++i)
        _subclips.push_back(_pending[i].node);
    _pending.resize(firstPending);
    node.firstBlock = static_cast<std::uint32_t>(_blocks.size());
    appendBlocks(clip);
    node.blockCount = static_cast<std::uint32_t>(_blocks.size()) - node.firstBlock;
    _nodes.push_back(node);
    return {&clip, node.range, static_cast<std::uint32_t>(_nodes.size() - 1)};
}

// Large clips have a track for each block: what a visit needs of one comes from memory in three
// steps, so each step is taken some tracks ahead.
void ClipRanges::prefetchBehind(const kvAnimationClip& clip, std::size_t visited) {
    const auto track = [&clip, visited](std::size_t ahead) {
        return visited + ahead < clip._tracks.size() ? clip._tracks[visited + ahead] : nullptr;
    };
    if (const kvAnimationTrack* const far = track(36)) prefetchLines(far, 2);
    if (const kvAnimationTrack* const near = track(24)) prefetchLines(near->_blocks.data(), 1);
    const kvAnimationTrack* const next = track(12);
    if (next != nullptr && !next->_blocks.empty()) prefetchLines(next->_blocks.front(), 1);
}

FrameRange ClipRanges::visitTrack(kvAnimationTrack& track) {
    const std::size_t firstEntry = _pending.size();
    for (kvAnimationClip* sub : track._clips) {
        const Entry entry = visit(*sub);
        _pending.push_back(entry);
    }
    sortEntries(firstEntry);
    for (std::size_t i = 0; i < track._clips.size(); ++i)
        track._clips[i] = _pending[firstEntry + i].clip;

    FrameRange subclips;
    if (!track._clips.empty())
        subclips = {_pending[firstEntry].range.first, _pending.back().range.last};
    return RangeWalk::range(track, subclips);
}

void ClipRanges::sortEntries(std::size_t first) {
    sortByFrame(
        _pending.data() + first, _pending.size() - first,
        [](const Entry& entry) {
            return FrameKey{entry.range.first, 0.0F};
        },
        _entryScratch);
}

void ClipRanges::appendBlocks(const kvAnimationClip& clip) {
    const std::size_t first = _blocks.size();
    for (const kvAnimationTrack* track : clip._tracks)
        _blocks.insert(_blocks.end(), track->_blocks.begin(), track->_blocks.end());
    const std::size_t count = _blocks.size() - first;
    if (_blockOrder.size() < _blocks.size()) _blockOrder.resize(_blocks.size(), 0);
    std::uint32_t* order = _blockOrder.data() + first;

    _unsortedBlocks.assign(_blocks.begin() + static_cast<std::ptrdiff_t>(first), _blocks.end());
    if (!stillSorts(order, _unsortedBlocks)) {
        _keys.clear();
        for (std::size_t i = 0; i < count; ++i)
            _keys.push_back({startOf(_unsortedBlocks[i]), static_cast<std::uint32_t>(i)});
        sortKeys(_keys);
        for (std::size_t i = 0; i < count; ++i)
            order[i] = _keys[i].place;
    }
    for (std::size_t i = 0; i < count; ++i)
        _blocks[first + i] = _unsortedBlocks[order[i]];
}

} // namespace kv::detail
