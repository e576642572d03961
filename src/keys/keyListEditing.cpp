// The key list: inserting, deleting and moving keys. A list known to be sorted moves only the keys
// between the old and the new place; any other list is sorted first, which gives the same result
// as inserting first, because sorting is stable.
#include <kvControlPointManager.h>

#include "keys/editCounter.h"
#include "keys/frameOrder.h"
#include "keys/keyIdIndex.h"
#include "keys/walkCount.h"

#include <algorithm>

using kv::detail::countWalk;
using kv::detail::framePrecedes;

void kvControlPointManager::insertCP(double x, double y) {
    insertCP(x, y, false, false);
}

void kvControlPointManager::insertCP(double x, double y, bool snapX, bool snapY) {
    kvControlPoint key(x, y, kvControlPoint::Auto);
    // Only the point is snapped; recomputing places the handles, unless the key stays alone.
    if (snapX) key.point.x = d2i(key.point.x);
    if (snapY) key.point.y = d2i(key.point.y);
    insertKey(x, key);
}

void kvControlPointManager::insertCP(kvControlPoint& cp) {
    // Writing the caller's key counts as an edit, since it may stand in another list. As long as it
    // does not stand in this one, this list is as it was.
    const bool known = isKnownSorted();
    cp.setId(cpCount);
    if (known && indexOf(&cp) == kNone) order.edit = kv::detail::currentKeyEdit();
    const kvControlPoint key = cp;
    insertKey(key.point.x, key);
}

// Grows by a quarter, not by doubling: scenes hold a million keys, and spare room costs as much as
// keys do.
void kvControlPointManager::reserveOneMore() {
    if (cps.size() < cps.capacity()) return;
    cps.reserve(cps.size() + (std::max)(cps.size() / 4, std::size_t{2}));
}

// Replaces the key at `replacedFrame`, if there is one, by `key`, which goes where its own frame
// belongs. `key` must not be part of the list.
void kvControlPointManager::insertKey(double replacedFrame, const kvControlPoint& key) {
    countIfPlayed();
    bringInOrder();
    // The id of a key that is alone changes unnoticed.
    if (cps.size() == 1) greatestId = cps.front().id;

    const std::size_t replaced = firstAtFrame(replacedFrame);
    std::size_t target = cps.size();
    if (!cps.empty() && framePrecedes(key.point.x, cps.back().point.x)) {
        const auto after = std::upper_bound(cps.begin(), cps.end(), key.point.x,
                                            [](double frame, const kvControlPoint& cp) {
                                                return framePrecedes(frame, cp.point.x);
                                            });
        target = static_cast<std::size_t>(after - cps.begin());
    }

    std::size_t hole = replaced;
    const kvControlPoint* const before = cps.data();
    if (replaced == kNone) {
        hole = cps.size();
        reserveOneMore();
        cps.push_back(key);
    } else if (replaced < target) {
        --target; // the replaced key no longer stands before the new one
    }
    const bool appended = replaced == kNone && target == hole;
    placeKey(hole, target, key);
    if (cps.data() != before) linkRange(0, cps.size());
    renewNote();
    if (!appended) dropIdIndex();

    // From here on the new key is the first one with its id, which a key before it may bear, too.
    const bool newId = key.id > greatestId;
    greatestId = (std::max)(greatestId, key.id);
    const std::size_t found = newId ? target : firstWithId(key.id);
    currentCP = &cps[found];
    computeTangentsExtended(*currentCP);
    countInsertion();
}

// Wraps round rather than overflows.
void kvControlPointManager::countInsertion() {
    cpCount = static_cast<int>(static_cast<unsigned>(cpCount) + 1U);
}

// Puts `key` at `target`, moving the keys between there and `hole`, the place that is free, and
// links the keys concerned. `key` must not be part of the list.
void kvControlPointManager::placeKey(std::size_t hole, std::size_t target,
                                     const kvControlPoint& key) {
    for (std::size_t i = hole; i > target; --i)
        cps[i].take(cps[i - 1]);
    for (std::size_t i = hole; i < target; ++i)
        cps[i].take(cps[i + 1]);
    cps[target].take(key);
    const std::size_t first = (std::min)(hole, target);
    const std::size_t last = (std::max)(hole, target);
    linkRange(first == 0 ? 0 : first - 1, (std::min)(last + 2, cps.size()));
}

void kvControlPointManager::dropIdIndex() {
    idScans = 0;
    idIndex.reset();
}

// Moves the key at `index` to a point and to the place of its frame.
void kvControlPointManager::moveKey(std::size_t index, kvControlPoint::Point point) {
    countIfPlayed();
    if (!isKnownLinked()) {
        cps[index].point = point;
        noteUnsorted();
        bringInOrder();
        return;
    }
    const auto self = cps.begin() + static_cast<std::ptrdiff_t>(index);
    // Among equal frames the key stays behind those that stood before it and before the others.
    const auto left =
        std::upper_bound(cps.begin(), self, point.x, [](double frame, const kvControlPoint& cp) {
            return framePrecedes(frame, cp.point.x);
        });
    auto place = left;
    if (left == self) {
        const auto right = std::lower_bound(self + 1, cps.end(), point.x,
                                            [](const kvControlPoint& cp, double frame) {
                                                return framePrecedes(cp.point.x, frame);
                                            });
        place = right - 1;
    }
    if (place == self) {
        self->point = point;
        noteLastFrame();
        return;
    }
    kvControlPoint key = *self;
    key.point = point;
    placeKey(index, static_cast<std::size_t>(place - cps.begin()), key);
    noteLastFrame();
    dropIdIndex();
}

// Erases a key and leaves the links as they are.
void kvControlPointManager::eraseAt(std::size_t index) {
    countIfPlayed();
    const bool known = isKnownSorted();
    countWalk(cps.size() - index);
    for (std::size_t i = index; i + 1 < cps.size(); ++i)
        cps[i].take(cps[i + 1]);
    cps.pop_back();
    dropIdIndex();
    order.linked = false;
    if (known) renewNote();
}

bool kvControlPointManager::deleteExistingKey(double x) {
    const std::size_t index = firstAtFrame(x);
    if (index == kNone) return false;
    eraseAt(index);
    return true;
}

void kvControlPointManager::deleteCP(kvControlPoint* cp) {
    if (cp == nullptr) return;
    const std::size_t erased = firstWithId(cp->id);
    if (erased == kNone) return;
    // The neighbours are remembered as keys: their places change now and in the sorting below.
    std::size_t next = linkedIndex(cp->nextCP);
    std::size_t previous = linkedIndex(cp->prevCP);
    eraseAt(erased);
    for (std::size_t* neighbour : {&next, &previous}) {
        if (*neighbour == erased)
            *neighbour = kNone;
        else if (*neighbour != kNone)
            *neighbour = sortedIndexOf(*neighbour > erased ? *neighbour - 1 : *neighbour);
    }
    bringInOrder();
    if (next != kNone) computeTangents(cps[next]);
    if (previous != kNone) computeTangents(cps[previous]);
}

void kvControlPointManager::deleteAllSelectedCPs() {
    countIfPlayed();
    const bool known = isKnownSorted();
    countWalk(cps.size());
    std::size_t kept = 0;
    for (std::size_t i = 0; i < cps.size(); ++i) {
        if (cps[i].selected) continue;
        if (kept != i) cps[kept].take(cps[i]);
        ++kept;
    }
    if (kept != cps.size()) {
        cps.erase(cps.begin() + static_cast<std::ptrdiff_t>(kept), cps.end());
        dropIdIndex();
        order.linked = false;
        if (known) renewNote();
    }
    bringInOrder();
    computeTangents();
}
