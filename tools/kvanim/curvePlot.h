#pragma once

#include "selection.h"

#include <string>
#include <vector>

namespace kvanim {

/// Draws the curves over frames into an SVG or PNG file: keys, handles, held segments, gaps where
/// evaluation yields no value; axes with frames and values; a legend in the curves' own colours.
void plotCurves(const std::string& file, const std::string& title,
                const std::vector<SelectedCurve>& curves);

} // namespace kvanim
