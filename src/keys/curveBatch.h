#pragma once

#include <kvAnimationCurve.h>

#include <cstddef>

namespace kv::detail {

/// Curves that are evaluated together, at one frame: what the processor does for each of them
/// overlaps, and the roots of several are found at once.
struct CurveBatch {
    static constexpr std::size_t kCapacity = 16;

    struct Entry {
        const kvAnimationCurve* curve; ///< not null
        std::size_t after;             ///< the position of the first key behind the frame
        float value;                   ///< what evaluateCurves() found
    };

    std::size_t count = 0;
    Entry entries[kCapacity];
};

/// Gives each entry the value that evaluateCurve() has for its curve.
void evaluateCurves(CurveBatch& batch, float frame);

} // namespace kv::detail
