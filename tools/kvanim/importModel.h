#pragma once

#include "scene.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace kvanim {

/// What the user asked of an import.
struct ImportOptions {
    std::string model;
    /// The name of the animation to take; the model's first when empty.
    std::string animation;
    /// Frames per second; the source's own rate when 0.
    double framesPerSecond = 0.0;
    /// Put all blocks on one clip, one track a block, instead of on their nodes.
    bool clip = false;
};

/// What an import did, for the report to the user.
struct ImportReport {
    std::string animation;
    /// The name of the clip that holds the blocks; empty without one.
    std::string clip;
    double framesPerSecond = 0.0;
    std::size_t nodes = 0;
    std::size_t meshes = 0;
    std::size_t animatedNodes = 0;
    std::size_t curves = 0;
    std::size_t keys = 0;
    /// One line for each kind of thing that was left out.
    std::vector<std::string> dropped;
    /// Per channel ("translateX"): the largest distance between the imported curve, evaluated at
    /// every source key, and the source. A key without a value counts as infinitely far.
    std::map<std::string, double> deviation;
};

/// Reads an animated model and builds its scene: nodes with Transform3D cores, meshes as
/// geometries, one block with nine curves for each animated node. Throws InputError.
Scene importModel(const ImportOptions& options, ImportReport& report);

} // namespace kvanim
