// Findings of a check as lines of text.
#include "findings.h"

#include "numbers.h"

namespace kvanim {

std::string lineOf(const Finding& finding) {
    std::string place;
    const auto add = [&](const std::string& what) { place += (place.empty() ? "" : ", ") + what; };
    const Place& at = finding.place;
    if (!at.node.empty()) add("node \"" + at.node + '"');
    if (!at.clip.empty()) add("clip \"" + at.clip + '"');
    if (!at.block.empty()) add("block \"" + at.block + '"');
    if (!at.curve.empty()) add("curve " + at.curve);
    if (finding.key) add("key " + std::to_string(*finding.key));
    if (finding.frame && finding.lastFrame)
        add("frames " + shortest(*finding.frame) + " to " + shortest(*finding.lastFrame));
    else if (finding.frame)
        add("frame " + shortest(*finding.frame));
    return finding.kind + ": " + place + ": " + finding.reason;
}

} // namespace kvanim
