#pragma once

#include <kvControlPoint.h>

#include <optional>

namespace kv::detail {

/// Where a key stands in its list. Told by ids, so keys that share an id may share a role.
enum class KeyRole { First, Middle, Last };

/// A key and the points of its neighbours; null where a link leads nowhere.
struct KeySurroundings {
    KeyRole role;
    kvControlPoint::Point point;
    const kvControlPoint::Point* previous;
    const kvControlPoint::Point* next;
};

struct HandlePair {
    kvControlPoint::Point in;
    kvControlPoint::Point out;
};

/// Where the handles of a key belong, by its type and the list's handle length. Nothing when they
/// stay where they are: for type User, and when a neighbour that the placement needs is missing.
/// Neighbours at the same frame make infinite or undefined slopes; IEEE arithmetic decides.
std::optional<HandlePair> placeHandles(int tangentType, int lengthMode, const KeySurroundings& key);

} // namespace kv::detail
