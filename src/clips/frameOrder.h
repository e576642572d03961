#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// @file
/// Sorting by frame as tracks and clips do it: ascending, a NaN after all numbers, items with equal
/// frames in the order they had. Every frame is asked for once, serially and in list order, because
/// asking a sub-clip for its frame sorts the lists inside it; only the bare keys are ever sorted in
/// parallel.

namespace kv::detail {

/// Whether \p a comes before \p b. Unlike the bare comparison this is an order for NaN as well, and
/// so cannot lead a sort out of bounds.
inline bool frameBefore(float a, float b) {
    const bool aIsNumber = a == a;
    const bool bIsNumber = b == b;
    return a < b || (aIsNumber && !bIsNumber);
}

/// What an item is sorted by: a frame, and where that is equal a second one.
struct FrameKey {
    float frame;
    float tie = 0.0F;
};

inline bool keyBefore(const FrameKey& a, const FrameKey& b) {
    if (frameBefore(a.frame, b.frame)) return true;
    return !frameBefore(b.frame, a.frame) && frameBefore(a.tie, b.tie);
}

/// A key with the place that its item had in the list, which decides between equal keys.
struct PlacedKey {
    FrameKey key;
    std::uint32_t place;
};

inline bool operator<(const PlacedKey& a, const PlacedKey& b) {
    if (keyBefore(a.key, b.key)) return true;
    return !keyBefore(b.key, a.key) && a.place < b.place;
}

/// Sorts the keys, in parallel from 500 of them. The result does not depend on that.
void sortKeys(std::vector<PlacedKey>& keys);

/// Memory of a sort that a caller may keep, so that sorting again allocates nothing.
template <class Item>
struct SortScratch {
    std::vector<PlacedKey> keys;
    std::vector<Item> items;
};

/// Sorts \p count items by \p keyOf(item), which is called once for each item in order. Items that
/// are in order already are left alone.
template <class Item, class KeyOf>
void sortByFrame(Item* items, std::size_t count, KeyOf keyOf, SortScratch<Item>& scratch) {
    std::size_t ordered = 0;
    scratch.keys.clear();
    for (std::size_t i = 0; i < count; ++i) {
        scratch.keys.push_back({keyOf(items[i]), static_cast<std::uint32_t>(i)});
        if (i == 0 || !keyBefore(scratch.keys[i].key, scratch.keys[i - 1].key)) ++ordered;
    }
    if (ordered == count) return;
    sortKeys(scratch.keys);
    scratch.items.assign(items, items + count);
    for (std::size_t i = 0; i < count; ++i)
        items[i] = scratch.items[scratch.keys[i].place];
}

/// The same for keys that cost nothing to ask for: they are asked for again when the items are not
/// in order, so that nothing is allocated when they are.
template <class Item, class KeyOf>
void sortByFrame(std::vector<Item>& items, KeyOf keyOf) {
    for (std::size_t i = 1; i < items.size(); ++i) {
        if (!keyBefore(keyOf(items[i]), keyOf(items[i - 1]))) continue;
        SortScratch<Item> scratch;
        scratch.keys.reserve(items.size());
        sortByFrame(items.data(), items.size(), keyOf, scratch);
        return;
    }
}

} // namespace kv::detail
