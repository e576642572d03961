#pragma once

#include "playback/boundaryStage.h"

#include <functional>
#include <string>
#include <vector>

namespace kv::test {

/// Where on its range playback is when something is done.
struct Position {
    const char* name;
    float forwards; ///< the frame, and the frame when playing in reverse
    float backwards;
};

/// Start, inside, last and beyond.
const std::vector<Position>& positions();

/// One thing that a host does, tried on everything that is played and at every position.
struct Operation {
    std::string title;
    std::string procedure; ///< told on the page
    std::vector<Played> items;
    /// Runs it on a new stage, from `play` to the last tick, and calls `record` where the row
    /// begins.
    std::function<void(BoundaryStage&, const Position&)> run;
};

const std::vector<Operation>& operations();

/// One row's outcome.
Seen outcome(const Operation& operation, Played item, const Position& position);

/// The whole page, in Markdown.
std::string boundaryPage();

} // namespace kv::test
