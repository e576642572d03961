// The script sequences of a clip: which are due at a frame, which were passed, and handing their
// text to the host. This runs on every whole frame of a playing clip, so the items are gathered
// into storage that is kept; a list of its own is made only when something is about to fire, since
// the host's callback may do anything but change the clip.

#include <kvAnimationManager2.h>

#include <kvAnimationClip.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include "manager/frameOrder.h"

#include <algorithm>
#include <string>

namespace {

using Item = kv::detail::ByStart<kvAnimationSequence2*>;

void gather(std::vector<Item>& items, const kvAnimationClip& clip) {
    for (const kvAnimationTrack* track : clip.getTracks()) {
        for (kvAnimationSequence2* item : track->getSequences())
            items.push_back({item->getStartFrame(), items.size(), item});
    }
}

/// What kvAnimationClip::getSequences(false, true) returns: the clip's own items, then those of its
/// direct sub-clips, all in order of start.
const std::vector<Item>& sequencesOf(const kvAnimationClip& clip) {
    thread_local std::vector<Item> items;
    items.clear();
    gather(items, clip);
    for (const kvAnimationTrack* track : clip.getTracks()) {
        for (const kvAnimationClip* subclip : track->getClips())
            gather(items, *subclip);
    }
    kv::detail::sortByStart(items, 0);
    return items;
}

bool wasPassed(const kvAnimationSequence2& item, float frame) {
    return frame > item.getStartFrame() && item.getDirty();
}

} // namespace

std::vector<kvAnimationSequence2*> kvAnimationManager2::computeSequences(kvAnimationClip* clip,
                                                                         float frame) {
    std::vector<kvAnimationSequence2*> due;
    if (!clip) return due;
    for (const Item& entry : sequencesOf(*clip)) {
        if (entry.item->getActive() && entry.item->frameInBlockRange(frame))
            due.push_back(entry.item);
    }
    return due;
}

void kvAnimationManager2::checkAndExecSkippedSequences(kvAnimationClip* clip, float frame) {
    if (!clip) return;
    const std::vector<Item>& items = sequencesOf(*clip);
    if (std::none_of(items.begin(), items.end(),
                     [=](const Item& entry) { return wasPassed(*entry.item, frame); }))
        return;

    for (kvAnimationSequence2* item : clip->getSequences(false, true)) {
        // Activity is not asked, and the flag is cleared whether or not anybody listened: what was
        // passed unheard must not fire when a callback is installed later.
        if (!wasPassed(*item, frame)) continue;
        executeSequence(item);
        item->setDirty(false);
    }
}

void kvAnimationManager2::executeSequence(kvAnimationSequence2* seq) {
    if (!seq || !_seffc) return;
    _seffc(std::string(seq->getSequence()));
    seq->setDirty(false);
}
