#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace kv::detail {

/// How many keys the lists of this process have looked at, moved, linked or placed handles of.
/// Tests hold it against the number of keys: it tells the same on every machine when an edit that
/// needs a few keys has come to walk the whole list. Whatever walks along a list counts what it
/// walks, once a walk and not once a key.
extern std::atomic<std::uint64_t> walkedKeys;

/// Not one indivisible addition, which would cost more than many a walk: counts of lists that are
/// edited at the same moment by several threads may get lost.
inline void countWalk(std::size_t keys) {
    walkedKeys.store(walkedKeys.load(std::memory_order_relaxed) + keys, std::memory_order_relaxed);
}

} // namespace kv::detail
