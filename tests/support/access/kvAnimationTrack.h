#pragma once

#include <kvAnimationTrack.h>

/// The lists, and the frames that updateBounds caches.
template <>
struct kvTestAccess<kvAnimationTrack> {
    static float firstFrame(const kvAnimationTrack& track) { return track._firstFrame; }
    static float lastFrame(const kvAnimationTrack& track) { return track._lastFrame; }
    static std::vector<kvAnimationBlock*>& blocks(kvAnimationTrack& track) { return track._blocks; }
    static std::vector<kvAnimationClip*>& clips(kvAnimationTrack& track) { return track._clips; }
    static std::vector<kvAnimationSequence2*>& sequences(kvAnimationTrack& track) {
        return track._sequences;
    }
};
