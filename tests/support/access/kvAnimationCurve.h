#pragma once

#include <kvAnimationCurve.h>

/// The node id of a curve and the counter of the class.
template <>
struct kvTestAccess<kvAnimationCurve> {
    static std::uint32_t& nodeId(kvAnimationCurve& curve) { return curve.appropriateNodeId; }
    static std::uint32_t nextId() { return kvAnimationCurve::_idCount; }
};
