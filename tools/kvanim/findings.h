#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kvanim {

/// Where in a scene a finding is; what does not apply is empty. The node is the one that is
/// animated or, when that is gone, the one that carries the record.
struct Place {
    std::string node;
    std::string clip;
    std::string block;
    std::string curve;
};

/// Something in a scene that is not as its author meant it.
struct Finding {
    std::string kind; ///< a fixed word, such as "no-value"
    Place place;
    std::optional<std::size_t> key; ///< index in the stored order of the keys, from 0
    std::optional<float> frame;     ///< the frame, or the first of a range
    std::optional<float> lastFrame; ///< the last frame of a range
    std::string reason;
};

using Findings = std::vector<Finding>;

/// `kind: node "Hips", block "Hips", curve translateX, key 3, frame 4: reason`.
std::string lineOf(const Finding& finding);

} // namespace kvanim
