#pragma once

#include "findings.h"

namespace kvanim {

class Scene;

/// Reports items of tracks that reach beyond the range of their clip, which is never played there.
/// The animation must have been taken out of the scene.
void checkClips(const Scene& scene, Findings& findings);

} // namespace kvanim
