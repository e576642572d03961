// The key list: what it knows about its order, sorting and linking. Library code moves keys with
// kvControlPoint::take, which does not count as an edit, and keeps the note up to date itself.
#include <kvControlPointManager.h>

#include "keys/editCounter.h"
#include "keys/frameOrder.h"
#include "keys/keyIdIndex.h"
#include "keys/walkCount.h"

#include <algorithm>
#include <cmath>
#include <numeric>

using kv::detail::countWalk;
using kv::detail::framePrecedes;

namespace kv::detail {

std::atomic<std::uint64_t> walkedKeys{0};

} // namespace kv::detail

bool kvControlPointManager::isSorted() const {
    countWalk(cps.size());
    return std::is_sorted(cps.begin(), cps.end(),
                          [](const kvControlPoint& a, const kvControlPoint& b) {
                              return framePrecedes(a.point.x, b.point.x);
                          });
}

// Notes that the keys are sorted, whatever their links are.
void kvControlPointManager::noteSorted() {
    order.edit = kv::detail::currentKeyEdit();
    order.first = cps.data();
    order.count = static_cast<std::uint32_t>(cps.size());
    greatestId = INT_MIN;
    countWalk(cps.size());
    for (const kvControlPoint& cp : cps)
        greatestId = (std::max)(greatestId, cp.id);
    order.linked = false;
    noteLastFrame();
    idScans = 0;
    idIndex.reset();
}

// To be called wherever the last key may have become another one, or its frame another.
void kvControlPointManager::noteLastFrame() {
    order.endsInNumber = !cps.empty() && !std::isnan(cps.back().point.x);
}

void kvControlPointManager::noteUnsorted() {
    order = OrderNote();
}

// For changes that may have kept the order.
void kvControlPointManager::noteIfSorted(bool linked) {
    if (!isSorted()) {
        noteUnsorted();
        return;
    }
    noteSorted();
    order.linked = linked;
}

// After all frames were rewritten by a mapping that is monotonous but for rare cases, in a list
// that was known as told.
void kvControlPointManager::noteRewritten(bool sorted, bool linked) {
    if (sorted)
        noteIfSorted(linked);
    else
        noteUnsorted();
}

// Takes over a change of the vector by code that kept the order.
void kvControlPointManager::renewNote() {
    order.first = cps.data();
    order.count = static_cast<std::uint32_t>(cps.size());
    noteLastFrame();
}

bool kvControlPointManager::isKnownLinked() const {
    return isKnownSorted() && order.linked;
}

// Stable, so that keys of equal frames keep their order. In place: pointers to keys are pointers to
// places in the list, and callers go on with the key that comes to stand there.
void kvControlPointManager::sortByFrame() {
    countWalk(cps.size());
    std::vector<std::size_t> places(cps.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::stable_sort(places.begin(), places.end(), [this](std::size_t a, std::size_t b) {
        return framePrecedes(cps[a].point.x, cps[b].point.x);
    });
    const std::vector<kvControlPoint> unsorted(cps);
    for (std::size_t i = 0; i < cps.size(); ++i)
        cps[i].take(unsorted[places[i]]);
}

// Where the key at `index` will stand once the list is sorted.
std::size_t kvControlPointManager::sortedIndexOf(std::size_t index) const {
    if (isKnownSorted()) return index;
    const double frame = cps[index].point.x;
    countWalk(cps.size());
    std::size_t before = 0;
    for (std::size_t i = 0; i < cps.size(); ++i) {
        const double other = cps[i].point.x;
        if (framePrecedes(other, frame) || (i < index && !framePrecedes(frame, other))) ++before;
    }
    return before;
}

// Links the keys [first, last) to their neighbours.
void kvControlPointManager::linkRange(std::size_t first, std::size_t last) {
    countWalk(last - first);
    for (std::size_t i = first; i < last; ++i) {
        cps[i].prevCP = i == 0 ? nullptr : &cps[i - 1];
        cps[i].nextCP = i + 1 == cps.size() ? nullptr : &cps[i + 1];
    }
}

void kvControlPointManager::linkAll() {
    linkRange(0, cps.size());
    foreignLinks = false;
}

// Sorts and links, each only if that is not known to be so already.
void kvControlPointManager::bringInOrder() {
    if (isKnownLinked()) return;
    if (!isKnownSorted()) {
        if (!isSorted()) sortByFrame();
        noteSorted();
    }
    linkAll();
    order.linked = true;
}

void kvControlPointManager::sortCPs() {
    bringInOrder();
}

void kvControlPointManager::computeLinkedList() {
    linkAll();
    if (!isKnownSorted()) {
        noteIfSorted(true);
        return;
    }
    order.linked = true;
}
