#pragma once

#include <atomic>
#include <cstdint>

namespace kv::detail {

/// How often keys were changed from outside their lists, process-wide. A list that finds the number
/// it noted knows that its keys are in the order it left them in. Keys do not know their list,
/// hence one number for all. Atomic because one curve may be edited while others are evaluated.
extern std::atomic<std::uint64_t> keyEdits;

/// A number that is never the current one.
constexpr std::uint64_t kNoKeyEdit = 0;

inline std::uint64_t currentKeyEdit() {
    return keyEdits.load(std::memory_order_relaxed);
}
inline void countKeyEdit() {
    keyEdits.fetch_add(1, std::memory_order_relaxed);
}

/// How often something changed that a player may have taken down, process-wide: see PlayedSegments.
extern std::atomic<std::uint64_t> playedEdits;

inline void countPlayedEdit() {
    playedEdits.fetch_add(1, std::memory_order_relaxed);
}

} // namespace kv::detail
