// The ranges of a clip and of all clips below it, bottom up in one walk.

#include "manager/clipTree.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include "keys/constants.h"
#include "manager/frameOrder.h"

#include <algorithm>

namespace kv::detail {

namespace {

struct Range {
    float start = kFrameMax;
    float end = kFrameMin;

    void includeStart(float frame) { start = std::min(start, frame); }
    void includeEnd(float frame) { end = std::max(end, frame); }
};

template <class Item>
bool startInOrder(const std::vector<Item*>& items) {
    return std::is_sorted(items.begin(), items.end(), [](const Item* a, const Item* b) {
        return frameBefore(a->getStartFrame(), b->getStartFrame());
    });
}

bool subtreesInOrder(const std::vector<ClipEntry>& tree, std::size_t first) {
    for (std::size_t i = first; i != tree.size();) {
        const std::size_t next = i + tree[i].size;
        if (next != tree.size() && frameBefore(tree[next].start, tree[i].start)) return false;
        i = next;
    }
    return true;
}

void appendTrees(std::vector<ClipEntry>& tree, const std::vector<kvAnimationClip*>& clips) {
    for (kvAnimationClip* clip : clips)
        appendClipTree(tree, *clip);
}

/// The range that the track's getters give: the first of everything, but for the end the block and
/// the sub-clip that start last, and no sequence items.
Range appendTrack(std::vector<ClipEntry>& tree, kvAnimationTrack& track) {
    const std::size_t first = tree.size();
    appendTrees(tree, track.getClips());
    if (!startInOrder(track.getBlocks()) || !startInOrder(track.getSequences()) ||
        !subtreesInOrder(tree, first)) {
        track.sort(false);
        tree.resize(first);
        appendTrees(tree, track.getClips());
    }

    Range range;
    if (!track.getBlocks().empty()) {
        range.includeStart(track.getBlocks().front()->getStartFrame());
        range.includeEnd(track.getBlocks().back()->getEndFrame());
    }
    if (!track.getSequences().empty())
        range.includeStart(track.getSequences().front()->getStartFrame());
    if (first != tree.size()) {
        range.includeStart(tree[first].start);
        std::size_t last = first;
        while (last + tree[last].size != tree.size())
            last += tree[last].size;
        range.includeEnd(tree[last].end);
    }
    return range;
}

} // namespace

void appendClipTree(std::vector<ClipEntry>& tree, kvAnimationClip& clip) {
    const std::size_t index = tree.size();
    tree.push_back({&clip, kFrameMax, kFrameMin, 1});
    Range range;
    for (kvAnimationTrack* track : clip.getTracks()) {
        const Range ofTrack = appendTrack(tree, *track);
        range.includeStart(ofTrack.start);
        range.includeEnd(ofTrack.end);
    }
    tree[index] = {&clip, range.start, range.end, tree.size() - index};
}

void appendSubclipTrees(std::vector<ClipEntry>& tree, const kvAnimationClip& clip) {
    for (const kvAnimationTrack* track : clip.getTracks())
        appendTrees(tree, track->getClips());
}

} // namespace kv::detail
