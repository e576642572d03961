#pragma once

#include <string>

class kvAnimationClip;

namespace kvanim {

/// Draws the clip as a clip maker shows it: a row for each track, with blocks, sub-clips and
/// sequence items as bars over frames. Throws InputError when the picture cannot be written.
void plotClip(const std::string& file, const kvAnimationClip& clip);

} // namespace kvanim
