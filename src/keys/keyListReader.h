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

    /// Whether, besides, no frame is a NaN, which is not greater than anything: those stand at the
    /// end. Such a list can be searched, and has keys; any other is to be walked.
    static bool isSearchable(const kvControlPointManager& list) {
        return isKnownSorted(list) && list.order.endsInNumber;
    }

    /// The position of the first key whose frame is greater, if that is `hint`, which may be any
    /// number, or the position behind it, and if no key is before the first or behind the last one;
    /// else 0. So the frame is within the list's range wherever this is not 0.
    static std::size_t firstAfterNear(const kvControlPointManager& list, double frame,
                                      std::size_t hint) {
        return isSearchable(list) ? nearIn(list.cps, frame, hint) : 0;
    }

    /// The position of the first key whose frame is greater, the number of keys when there is none.
    /// Looks first where the hint says.
    static std::size_t firstAfter(const kvControlPointManager& list, double frame,
                                  std::size_t hint) {
        if (!isSearchable(list)) return list.firstAfterFrame(frame);
        const std::size_t near = nearIn(list.cps, frame, hint);
        return near != 0 ? near : list.searchAfterFrame(frame);
    }

    /// Where the segment that was evaluated last ends: a hint, right or wrong.
    static std::size_t segmentEnd(const kvControlPointManager& list) {
        return list.segmentEnd.load(std::memory_order_relaxed);
    }

    /// Takes down where a segment ends; false when that was known already.
    static bool setSegmentEnd(const kvControlPointManager& list, std::size_t end) {
        const auto narrow = static_cast<std::uint32_t>(end);
        if (list.segmentEnd.load(std::memory_order_relaxed) == narrow) return false;
        list.segmentEnd.store(narrow, std::memory_order_relaxed);
        return true;
    }

    /// To be called by whoever takes down a segment of a list that is known as sorted: a change of
    /// it counts in playedEdits from here on. False when changes may go unnoticed.
    static bool markPlayed(const kvControlPointManager& list) {
        if (list.wasHandedOut) return false;
        // Only where it is news: other threads may have the list in their caches.
        if (!list.isPlayed.load(std::memory_order_relaxed))
            list.isPlayed.store(true, std::memory_order_relaxed);
        return true;
    }

    /// What else the list remembers of that segment.
    static SegmentMemory memoryOf(const kvControlPointManager& list) {
        return SegmentMemory(list.segmentWords);
    }

  private:
    // In a sorted list, keys before one that is not greater are not greater either, and a last key
    // that is a number is not before any other.
    static std::size_t nearIn(const std::vector<kvControlPoint>& keys, double frame,
                              std::size_t hint) {
        if (hint - 1 >= keys.size() - 1 || !(keys[hint - 1].getPoint().x <= frame)) return 0;
        if (keys[hint].getPoint().x > frame) return hint;
        return hint + 1 < keys.size() && keys[hint + 1].getPoint().x > frame ? hint + 1 : 0;
    }
};

} // namespace kv::detail
