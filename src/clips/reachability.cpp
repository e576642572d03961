// The test that keeps clips from being nested in themselves. Tracks do not know their clip and
// clips not the track they are on (either may be shared after an assignment), so the only sound
// test is to go down from what is to be nested and look whether the place where it would go is
// there.

#include "clips/reachability.h"

#include <kvAnimationClip.h>
#include <kvAnimationTrack.h>

#include <unordered_set>
#include <vector>

namespace kv::detail {

namespace {

// Visits from and every clip below it once, each at its first appearance: the same sub-clip may be
// on many tracks. Stops and answers true as soon as found(clip) is true.
template <class Found>
bool anyClipBelow(const kvAnimationClip& from, Found found) {
    if (found(from)) return true;
    std::vector<const kvAnimationClip*> pending;
    std::unordered_set<const kvAnimationClip*> seen;
    const kvAnimationClip* clip = &from;
    while (clip != nullptr) {
        for (const kvAnimationTrack* track : clip->getTracks())
            for (const kvAnimationClip* sub : track->getClips())
                if (seen.insert(sub).second) {
                    if (found(*sub)) return true;
                    pending.push_back(sub);
                }
        clip = pending.empty() ? nullptr : pending.back();
        if (clip != nullptr) pending.pop_back();
    }
    return false;
}

} // namespace

bool isAtOrBelow(const kvAnimationClip& target, const kvAnimationClip& from) {
    return anyClipBelow(from, [&](const kvAnimationClip& clip) { return &clip == &target; });
}

bool isAtOrBelow(const kvAnimationTrack& target, const kvAnimationClip& from) {
    return anyClipBelow(from, [&](const kvAnimationClip& clip) {
        for (const kvAnimationTrack* track : clip.getTracks())
            if (track == &target) return true;
        return false;
    });
}

} // namespace kv::detail
