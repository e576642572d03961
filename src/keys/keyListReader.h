#pragma once

#include "keys/editCounter.h"
#include "keys/segmentMemory.h"

#include <kvControlPointManager.h>

#include <cstddef>

namespace kv::detail {

/// What the evaluation may ask of a key list beyond its interface. Changes no key.
struct KeyListReader {
    /// Whether no key has been edited from outside since the list took note, and the keys are the
    /// ones noted. The size and the address catch keys added or removed through a reference to the
    /// vector.
    static bool isKnownSorted(const kvControlPointManager& list) {
        return list.order.edit == currentKeyEdit() && list.order.count == list.cps.size() &&
               list.order.first == list.cps.data();
    }

    /// The position of the first key whose frame is greater, the number of keys when there is none.
    /// Looks first whether that is `hint`, which may be any number, or the position behind it.
    static std::size_t firstAfter(const kvControlPointManager& list, double frame,
                                  std::size_t hint) {
        const std::vector<kvControlPoint>& keys = list.cps;
        // In a sorted list, keys before one that is not greater are not greater either.
        if (hint - 1 < keys.size() - 1 && isKnownSorted(list) &&
            keys[hint - 1].getPoint().x <= frame) {
            if (keys[hint].getPoint().x > frame) return hint;
            if (hint + 1 < keys.size() && keys[hint].getPoint().x <= frame &&
                keys[hint + 1].getPoint().x > frame)
                return hint + 1;
        }
        return list.firstAfterFrame(frame);
    }

    /// What the list remembers for the evaluation, null before the first one.
    static const SegmentMemory* knownMemoryOf(const kvControlPointManager& list) {
        return list.segmentMemory.load(std::memory_order_acquire);
    }

    /// The same, made if need be; null if there is no room for it.
    static SegmentMemory* memoryOf(const kvControlPointManager& list) {
        SegmentMemory* const memory = list.segmentMemory.load(std::memory_order_acquire);
        return memory != nullptr ? memory : list.makeSegmentMemory();
    }
};

} // namespace kv::detail
