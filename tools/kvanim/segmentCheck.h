#pragma once

#include <cstddef>
#include <vector>

class kvAnimationCurve;

namespace kvanim {

/// What is wrong with the segment between two neighbouring keys.
struct SegmentFault {
    std::size_t key = 0;    ///< index of the segment's first key
    bool backwards = false; ///< time runs backwards; otherwise there is no value
    bool whole = false;     ///< from the first key up to, not including, the second
    float first = 0.0F;     ///< frames of the gap, or of the segment that runs backwards
    float last = 0.0F;
};

/// The faults of all segments whose numbers are finite. Values are asked for at `samples` frames
/// of each segment (at least 2), and at those where the closed form of the evaluation changes its
/// branch, which is where gaps of a single frame are; the ends of a gap are then exact.
std::vector<SegmentFault> segmentFaults(kvAnimationCurve& curve, int samples);

} // namespace kvanim
