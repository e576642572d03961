#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct aiNodeAnim;

namespace kvanim {

/// One scalar of a node over frames, as the source has it.
struct SourceChannel {
    std::string attribute;
    std::vector<double> frames;
    std::vector<double> values;
    /// All values are the same, so that two keys say everything.
    bool constant = true;
};

/// The nine channels of an animated node: translateX..Z, rotateX..Z (degrees, continuous: no value
/// differs from the one before by more than half a turn), scaleX..Z. Frames are `perTick` times the
/// source's ticks; samples that are not in ascending order are dropped and counted in `unordered`.
std::vector<SourceChannel> channelsOf(const aiNodeAnim& source, double perTick,
                                      std::size_t& unordered);

} // namespace kvanim
