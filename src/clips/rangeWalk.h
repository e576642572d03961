#pragma once

#include "keys/constants.h"

class kvAnimationClip;
class kvAnimationTrack;

/// @file
/// The ranges of clips and tracks, computed from the bottom of the tree upward.

namespace kv::detail {

/// First and last frame by the rules of the getters: kvAnimationTrack::getFirstFrame and
/// getLastFrame, kvAnimationClip::getStartFrame and getEndFrame.
struct FrameRange {
    float first = kFrameMax;
    float last = kFrameMin;
};

/// The range of a clip, from those of its tracks one after the other: the least first and the
/// greatest last frame in the order in which frames are sorted, where NaN comes last.
class ClipRangeFold {
  public:
    void add(FrameRange track);
    FrameRange range() const { return _range; }

  private:
    FrameRange _range;
    bool _any = false;
};

/// One descent through a tree of clips that gives the range at its top. The getters are defined by
/// the getters of what lies below, and asking those again for every comparison at every level would
/// take a time that grows exponentially with the depth; here every clip is asked once.
///
/// Both walks leave all lists that they pass sorted by start frame, as the getters do.
class RangeWalk {
  public:
    static FrameRange range(kvAnimationClip& clip);
    static FrameRange range(kvAnimationTrack& track);

    /// The same for a track whose sub-clips are in order already, from the first frame of the first
    /// of them to the last frame of the last.
    static FrameRange range(kvAnimationTrack& track, FrameRange subclips);

    /// kvAnimationTrack::updateBounds with everything below it, and the range afterwards.
    static FrameRange update(kvAnimationClip& clip);
    static FrameRange update(kvAnimationTrack& track);
};

} // namespace kv::detail
