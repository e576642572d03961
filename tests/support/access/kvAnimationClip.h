#pragma once

#include <kvAnimationClip.h>

/// The list of tracks, to end sharing after an assignment.
template <>
struct kvTestAccess<kvAnimationClip> {
    static std::vector<kvAnimationTrack*>& tracks(kvAnimationClip& clip) { return clip._tracks; }
};
