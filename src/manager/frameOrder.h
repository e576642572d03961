#pragma once

// Ordering gathered items by frame: ascending, frames that are no number last, equal frames in the
// order in which they were gathered.

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kv::detail {

/// An item with the frame that orders it and its position among the gathered ones.
template <class Item>
struct ByStart {
    float start;
    std::size_t position;
    Item item;
};

/// Whether frame `a` comes before frame `b`. A strict weak order, with NaN after all numbers.
inline bool frameBefore(float a, float b) {
    return a < b || (b != b && a == a);
}

/// Sorts what was gathered from index `first` on. Looks first: what is in order already, as it
/// mostly is from tick to tick, is not sorted again. Allocates nothing.
template <class Item>
void sortByStart(std::vector<ByStart<Item>>& gathered, std::size_t first) {
    const auto begin = gathered.begin() + static_cast<std::ptrdiff_t>(first);
    const auto before = [](const ByStart<Item>& a, const ByStart<Item>& b) {
        if (frameBefore(a.start, b.start)) return true;
        return !frameBefore(b.start, a.start) && a.position < b.position;
    };
    if (!std::is_sorted(begin, gathered.end(), before)) std::sort(begin, gathered.end(), before);
}

} // namespace kv::detail
