#pragma once

#include <kvAnimationSequence2.h>

/// The standing sequence item.
template <>
struct kvTestAccess<kvAnimationSequence2> {
    static const kvAnimationSequence2& the() { return kvAnimationSequence2::_the; }
};
