#pragma once

#include "keys/keyListReader.h"

#include <kvAnimationCurve.h>

#include <cstddef>

/// @file
/// Bringing the keys of the next curves near while one is evaluated. The keys of a large scene do
/// not fit into the caches, and each curve needs lines of memory that only the line before tells:
/// the curve, what it remembers, the keys around the frame. So a walk over curves asks for all
/// three some curves ahead, each at its own distance. Nothing but the time depends on it.

namespace kv::detail {

struct KeyPrefetch {
    /// How many curves ahead of the evaluation each is to be called.
    static constexpr std::size_t kCurveAhead = 8;
    static constexpr std::size_t kMemoryAhead = 5;
    static constexpr std::size_t kSegmentAhead = 2;

    static void curve(const kvAnimationCurve* curve) { lines(curve, 3); }

    static void memory(const kvAnimationCurve* curve) {
        if (curve == nullptr || curve->getCPs().empty()) return;
        if (const SegmentMemory* const memory = KeyListReader::knownMemoryOf(*curve))
            lines(memory, 2);
        // Their frames are the range of the curve.
        lines(&curve->getCPs().front(), 1);
        lines(&curve->getCPs().back(), 1);
    }

    static void segment(const kvAnimationCurve* curve) {
        if (curve == nullptr) return;
        const SegmentMemory* const memory = KeyListReader::knownMemoryOf(*curve);
        if (memory == nullptr) return;
        const std::size_t end = memory->end();
        if (end - 1 < curve->getCPs().size() - 1) lines(&curve->getCPs()[end - 1], 4);
    }

  private:
    static constexpr std::size_t kLine = 64;

    static void lines([[maybe_unused]] const void* start, [[maybe_unused]] std::size_t count) {
#if defined(__GNUC__)
        for (std::size_t i = 0; i < count; ++i)
            __builtin_prefetch(static_cast<const char*>(start) + i * kLine);
#endif
    }
};

} // namespace kv::detail
