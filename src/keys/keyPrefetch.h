#pragma once

#include "keys/keyListReader.h"
#include "keys/prefetch.h"

#include <kvAnimationCurve.h>

#include <cstddef>
#include <vector>

/// @file
/// Bringing the keys of many curves near before they are evaluated. The keys of a large scene do
/// not fit into the caches, and which of them will be needed only the curve tells. So a batch asks
/// for its curves first, and for their keys when the curves are there. Nothing but the time depends
/// on it.

namespace kv::detail {

struct KeyPrefetch {
    /// What a tick reads of a curve.
    static void curve(const kvAnimationCurve* curve) { prefetchLines(curve, 2); }

    /// A list of curves and where it has them.
    static void curves(const std::vector<kvAnimationCurve*>& curves) {
        if (!curves.empty()) prefetchLines(curves.data(), 2);
    }

    /// The keys around the segment evaluated last.
    static void segment(const kvAnimationCurve& curve) {
        const std::vector<kvControlPoint>& keys = curve.getCPs();
        const std::size_t end = KeyListReader::segmentEnd(curve);
        if (end == 0 || end >= keys.size()) return;
        prefetchLines(&keys[end - 1], 4);
    }
};

} // namespace kv::detail
