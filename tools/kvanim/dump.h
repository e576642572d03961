#pragma once

#include "scene.h"

#include <string>
#include <vector>

namespace kvanim {

/// Everything that a scene file must keep, as text with one line a thing: nodes, blocks, curves
/// with their bindings, keys; then, for each frame, the world matrix of every node with the
/// animation applied. Numbers are exact. Two scenes with the same dump hold the same animation.
std::string dumpOf(const Scene& scene, const std::vector<float>& frames);

/// Ten frames spread over the scene's range, first and last included.
std::vector<float> defaultDumpFrames(const Scene& scene);

} // namespace kvanim
