#pragma once

#include <climits>

namespace kv::detail {

/// The nearest whole number, halves away from zero. Computed by adding half and cutting off the
/// fraction, which differs from std::round for the largest number below one half: the sum is
/// rounded to 1 first. NaN and everything outside int give INT_MIN.
inline int roundHalfAway(double v) {
    const double shifted = v >= 0.0 ? v + 0.5 : v - 0.5;
    if (shifted > static_cast<double>(INT_MIN) - 1.0 &&
        shifted < static_cast<double>(INT_MAX) + 1.0)
        return static_cast<int>(shifted);
    return INT_MIN;
}

} // namespace kv::detail
