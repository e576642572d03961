#pragma once

#include <cmath>

namespace kv::detail {

/// The order of frames in a list: by number, all NaN behind the numbers and equal among themselves.
/// The plain comparison is no ordering once a NaN is among the frames, and sorting by it may run
/// out of bounds.
inline bool framePrecedes(double a, double b) {
    return a < b || (std::isnan(b) && !std::isnan(a));
}

} // namespace kv::detail
