// Findings of a check as lines of text.
#include "findings.h"

#include "numbers.h"

#include <algorithm>

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
    std::string line = finding.kind + ": " + place + ": " + finding.reason;
    // Names come from files; one with a line end must not look like two findings.
    std::replace_if(
        line.begin(), line.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '?');
    return line;
}

} // namespace kvanim
