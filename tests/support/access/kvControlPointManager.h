#pragma once

#include <kvControlPointManager.h>

/// The editing state of a key list, and what it knows of its order.
template <>
struct kvTestAccess<kvControlPointManager> {
    using List = kvControlPointManager;

    /// The keys without telling the list that they may change.
    static std::vector<kvControlPoint>& keys(List& list) { return list.cps; }

    static kvControlPoint*& current(List& list) { return list.currentCP; }
    static kvControlPoint*& hit(List& list) { return list.hitCP; }
    static kvControlPointManager::HitType& hitType(List& list) { return list.hitType; }
    static int& count(List& list) { return list.cpCount; }
    static int& length(List& list) { return list.tangentLength; }

    static bool isKnownSorted(const List& list) { return list.isKnownSorted(); }
    static bool isKnownLinked(const List& list) { return list.isKnownLinked(); }
    static bool hasForeignLinks(const List& list) { return list.foreignLinks; }
    static bool hasIdIndex(const List& list) { return list.idIndex != nullptr; }
    static bool remembersSegment(const List& list) { return rememberedSegments(list) != 0; }
    /// How often the list has remembered a segment, twice.
    static std::uint64_t rememberedSegments(const List& list) { return list.segmentWords.words[0]; }
    static bool isPlayed(const List& list) { return list.isPlayed; }
    static int toInt(double v) { return List::d2i(v); }
};
