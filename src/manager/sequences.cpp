// The script sequences of a clip: which are due at a frame, which were passed, and handing their
// text to the host. This runs on every whole frame of a playing clip, so the items are gathered
// into storage that is kept; a list of its own is made only when something is about to fire, since
// the host's callback may do anything but change the clip.

#include <kvAnimationManager2.h>

#include <kvAnimationClip.h>
#include <kvAnimationSequence2.h>

#include "clips/clipCollect.h"

#include <algorithm>
#include <string>

namespace {

/// What kvAnimationClip::getSequences(false, true) returns: the clip's own items and those of its
/// direct sub-clips in order of start. Valid until the next call.
const std::vector<kvAnimationSequence2*>& sequencesOf(kvAnimationClip& clip) {
    thread_local std::vector<kvAnimationSequence2*> items;
    thread_local kv::detail::SortScratch<kvAnimationSequence2*> scratch;
    kv::detail::collect(clip, false, true, items, scratch);
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
    for (kvAnimationSequence2* item : sequencesOf(*clip)) {
        if (item->getActive() && item->frameInBlockRange(frame)) due.push_back(item);
    }
    return due;
}

void kvAnimationManager2::checkAndExecSkippedSequences(kvAnimationClip* clip, float frame) {
    if (!clip) return;
    const std::vector<kvAnimationSequence2*>& items = sequencesOf(*clip);
    const auto passed = [=](const kvAnimationSequence2* item) { return wasPassed(*item, frame); };
    if (std::none_of(items.begin(), items.end(), passed)) return;

    for (kvAnimationSequence2* item : std::vector<kvAnimationSequence2*>(items)) {
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
