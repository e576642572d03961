// Sorting by frame: the one place that knows about parallel sorting. Lists of items are usually
// short and nearly always in order already, so the parallel sort is a matter of very large tracks.

#include "clips/frameOrder.h"

#include <tbb/parallel_sort.h>

#include <algorithm>

namespace kv::detail {

namespace {

// Below this the cost of waking other threads is greater than that of sorting.
constexpr std::size_t kParallelFrom = 500;

} // namespace

void sortKeys(std::vector<PlacedKey>& keys) {
    // The place in the list takes part in the comparison: no two keys are equal, so every correct
    // sort, stable or not, serial or parallel, gives the same order.
    if (keys.size() < kParallelFrom)
        std::sort(keys.begin(), keys.end());
    else
        tbb::parallel_sort(keys.begin(), keys.end());
}

} // namespace kv::detail
