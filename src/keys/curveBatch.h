#pragma once

#include "keys/segmentConstants.h"

#include <kvAnimationCurve.h>

#include <cstddef>
#include <cstdint>

namespace kv::detail {

/// Curves that are evaluated together, at one frame: what the processor does for each of them
/// overlaps, and the roots of several are found at once.
struct CurveBatch {
    static constexpr std::size_t kCapacity = 16;

    struct Entry {
        const kvAnimationCurve* curve; ///< not null
        const Segment* known;          ///< where the frame is, or null: then `after` tells
        std::size_t after;             ///< the position of the first key behind the frame, or 0
        std::uint64_t binding;         ///< the stamp of the curve's binding
        float value;                   ///< what evaluateCurves() found
    };

    std::size_t count = 0;
    Entry entries[kCapacity];
};

/// The segments solved last at one frame, by the frames of their keys and handles, and their roots.
/// The curves of a node, often of a whole scene, have their keys at the same frames.
struct LastRoots {
    static constexpr std::size_t kLanes = 4;

    bool areKnown = false;
    alignas(64) double frames[4][kLanes];
    alignas(64) double roots[2][kLanes]; ///< t, and the bound of its error
};

/// Gives each entry the value that evaluateCurve() has for its curve. \p last belongs to the frame.
void evaluateCurves(CurveBatch& batch, float frame, LastRoots& last);

} // namespace kv::detail
