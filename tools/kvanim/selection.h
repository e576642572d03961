#pragma once

#include "scene.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

class kvAnimationBlock;
class kvAnimationClip;
class kvAnimationCurve;

namespace kvanim {

/// Which curves of a scene the user named; empty names select everything.
struct Selection {
    std::string node;
    std::string block;
    std::string attribute;

    /// Adds --node, --block and --attribute to the command.
    void addOptions(CLI::App& command);
};

/// A curve with the block that holds it; null for a curve that belongs to no block.
struct SelectedCurve {
    kvAnimationBlock* block = nullptr;
    kvAnimationCurve* curve = nullptr;

    /// "node.block.attribute", without what is missing.
    std::string title() const;
};

/// The curves of the scene that match, blocks (those on clips included) first, in scene order.
/// Throws InputError when a named node, block or attribute does not exist.
std::vector<SelectedCurve> select(const Scene& scene, const Selection& selection);

/// The first block of that name, on a node or on a clip. Throws InputError when there is none.
kvAnimationBlock& findBlock(const Scene& scene, const std::string& name);

/// The first clip of that name among the scene's own clips. Throws InputError when there is none.
kvAnimationClip& findClip(const Scene& scene, const std::string& name);

/// All blocks of the scene: on nodes, then on clips of any depth.
std::vector<kvAnimationBlock*> allBlocks(const Scene& scene);

} // namespace kvanim
