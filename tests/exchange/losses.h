#pragma once

#include <string>

namespace exchange {

/// What became of a text on its way, as words with commas between, "none" when all of it arrived:
///
/// - digits: numbers that differ by no more than the seven digits that OpenSG writes;
/// - rounding: the same, in matrices only, which each scene graph computes from what is stored;
/// - blanks: strings whose runs of white space became one blank;
/// - texts: strings that are others;
/// - values: other values that differ;
/// - records: lines that were lost, added or changed their place.
std::string lossesBetween(const std::string& before, const std::string& after);

} // namespace exchange
