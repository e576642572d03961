#pragma once

#include "keys/fastRoot.h"
#include "keys/segmentConstants.h"

#include <cmath>

namespace kv::detail {

/// A segment's value if it is certain to have the literal evaluator's bits.
struct FastValue {
    bool certain;
    float value;
};

/// The value of a segment that is not held. Certain when every value as far from the computed one
/// as the error may be gives the same float.
///
/// t is asked to lie in [-1/8, 9/8] and to err by at most 1/64. There |y'(t)| <= 3 * 1.141^2 times
/// the sum of the steps in y, hence the factor 4. The roundings, counted for each |y_i| by the
/// largest powers of t, 1.14, 1.3 and 1.48: the literal sum of weights makes at most 33e, 57e, 33e
/// and 14e, the one below at most 63e, 119e, 71e and 14e; with those of y +- error, less than 200e.
inline FastValue fastValue(const Segment& s, const SegmentConstants& c, double frame) {
    // Whatever is divided by 0 is infinite or NaN: p, so that the discriminant is NaN or minus
    // infinity, and the shift, so that no root to be had from there lies in any range. This is the
    // literal result, not a guard beside it.
    if (c.a3 == 0) return {true, kNoCurveValue};
    const BoundedRoot root = boundedRoot(s, c, frame);
    const double t = root.t;
    if (!(root.error <= 1.0 / 64 && t >= -0.125 && t <= 1.125)) return {false, 0.0F};

    const double step1 = s.y1 - s.y0;
    const double step2 = s.y2 - s.y1;
    const double step3 = s.y3 - s.y2;
    const double bend1 = step2 - step1;
    const double bend2 = step3 - step2;
    const double y = s.y0 + t * (3 * step1 + t * (3 * bend1 + t * (bend2 - bend1)));
    const double error =
        4 * root.error * (std::fabs(step1) + std::fabs(step2) + std::fabs(step3)) +
        200 * kRounding * (std::fabs(s.y0) + std::fabs(s.y1) + std::fabs(s.y2) + std::fabs(s.y3));

    // Nothing has overflowed on either side, or the error would be greater.
    constexpr double kOverflow = 1e280;
    if (std::fabs(y) + error < kTolerance) return {true, 0.0F};
    if (!(std::fabs(y) - error >= kTolerance && error <= kOverflow)) return {false, 0.0F};
    const float low = static_cast<float>(y - error);
    const float high = static_cast<float>(y + error);
    return {low == high, low};
}

} // namespace kv::detail
