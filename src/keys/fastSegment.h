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

/// A value that differs from the literal one, before that is rounded to a float, by at most
/// `error`; a NaN for an error where nothing is certain.
struct BoundedValue {
    double y;
    double error;
};

/// y(t). t is asked to lie in [-1/8, 9/8] and to err by at most 1/64. There |y'(t)| is at most
/// 3 * 1.141^2 times the sum of the steps in y, hence the factor 4. The roundings, counted for each
/// |y_i| with 1.14, 1.3 and 1.48 for the powers of t: the literal sum of weights makes at most 28e,
/// 47e, 33e and 12e, the one below 59e, 108e, 63e and 12e. With those of y - error and y + error
/// that is less than 200e.
inline BoundedValue boundedValue(const Segment& s, const BoundedRoot& root) {
    const double t = root.t;
    if (!(root.error <= 1.0 / 64 && t >= -0.125 && t <= 1.125)) return {0.0, std::nan("")};
    const double step1 = s.y1 - s.y0;
    const double step2 = s.y2 - s.y1;
    const double step3 = s.y3 - s.y2;
    const double bend1 = step2 - step1;
    const double bend2 = step3 - step2;
    const double y = (s.y0 + 3 * step1 * t) + t * t * (3 * bend1 + (bend2 - bend1) * t);
    const double steps = std::fabs(step1) + std::fabs(step2) + std::fabs(step3);
    const double values = std::fabs(s.y0) + std::fabs(s.y1) + std::fabs(s.y2) + std::fabs(s.y3);
    return {y, 4 * root.error * steps + 200 * kRounding * values};
}

/// The value of a segment that is not held. Certain when every value as far from the computed one
/// as the error may be gives the same float.
inline FastValue fastValue(const Segment& s, const SegmentConstants& c, double frame) {
    // Whatever is divided by 0 is infinite or NaN: p, so that the discriminant is NaN or minus
    // infinity, and the shift, so that no root to be had from there lies in any range. This is the
    // literal result, not a guard beside it.
    if (c.a3 == 0) return {true, kNoCurveValue};
    const BoundedValue value = boundedValue(s, boundedRoot(s, c, frame));
    const double size = std::fabs(value.y);
    if (size + value.error < kTolerance) return {true, 0.0F};
    // Below this error nothing has overflowed on either side.
    constexpr double kOverflow = 1e280;
    if (!(size - value.error >= kTolerance && value.error <= kOverflow)) return {false, 0.0F};
    const float low = static_cast<float>(value.y - value.error);
    const float high = static_cast<float>(value.y + value.error);
    return {low == high, low};
}

} // namespace kv::detail
