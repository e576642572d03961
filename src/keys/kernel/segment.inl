// The value of a segment that is not held, from its root, and whether it is certain.

/// A segment's value if it is certain to have the literal evaluator's bits.
struct FastValue {
    bool certain;
    float value;
};

/// A value that differs from the literal one, before that is rounded to a float, by at most
/// `error`; a NaN for an error where nothing is certain.
template <class Value>
struct BoundedValue {
    Value y;
    Value error;
};

/// y(t) for the four values of a segment. t is asked to lie in [-1/8, 9/8] and to err by at most
/// 1/64. There |y'(t)| is at most 3 * 1.141^2 times the sum of the steps in y, hence the factor 4.
/// The roundings, counted for each |y_i| with 1.14, 1.3 and 1.48 for the powers of t: the literal
/// sum of weights makes at most 28e, 47e, 33e and 12e, the one below 59e, 108e, 63e and 12e. With
/// those of y - error and y + error that is less than 200e.
template <class Value>
KV_KERNEL_INLINE BoundedValue<Value> boundedValue(const Value& y0, const Value& y1, const Value& y2,
                                                  const Value& y3, const BoundedRoot<Value>& root) {
    const Value& t = root.t;
    const Value step1 = y1 - y0;
    const Value step2 = y2 - y1;
    const Value step3 = y3 - y2;
    const Value bend1 = step2 - step1;
    const Value bend2 = step3 - step2;
    const Value y = multiplyAdd(t * t, multiplyAdd(bend2 - bend1, t, 3.0 * bend1),
                                multiplyAdd(3.0 * step1, t, y0));
    const Value steps = absolute(step1) + absolute(step2) + absolute(step3);
    const Value values = absolute(y0) + absolute(y1) + absolute(y2) + absolute(y3);
    const Value error = multiplyAdd(4.0 * root.error, steps, 200.0 * kRounding * values);
    const Value unknown = Value{} + std::numeric_limits<double>::quiet_NaN();
    const auto isKnown = (root.error <= 1.0 / 64) & (t >= -0.125) & (t <= 1.125);
    return {y, isKnown ? error : unknown};
}

/// The ends of what the literal value may be, before it is rounded to a float: both 0 where it is
/// small enough to count as 0. A NaN where nothing is certain.
template <class Value>
struct Between {
    Value low;
    Value high;
};

template <class Value>
KV_KERNEL_INLINE Between<Value> between(const BoundedValue<Value>& value) {
    // Below this error nothing has overflowed on either side.
    constexpr double kOverflow = 1e280;
    const Value size = absolute(value.y);
    const auto isZero = size + value.error < kTolerance;
    const auto isPlain = (size - value.error >= kTolerance) & (value.error <= kOverflow);
    const Value unknown = Value{} + std::numeric_limits<double>::quiet_NaN();
    const Value low = isPlain ? value.y - value.error : unknown;
    return {isZero ? Value{} : low, isZero ? Value{} : value.y + value.error};
}

/// Certain when every value between the two gives the same float.
KV_KERNEL_INLINE FastValue roundedToFloat(double low, double high) {
    const float value = static_cast<float>(low);
    return {value == static_cast<float>(high), value};
}

/// The value of a segment that is not held.
KV_KERNEL_INLINE FastValue fastValue(const Segment& s, const SegmentConstants& c, double frame) {
    // Whatever is divided by 0 is infinite or NaN: p, so that the discriminant is NaN or minus
    // infinity, and the shift, so that no root to be had from there lies in any range. This is the
    // literal result, not a guard beside it.
    if (c.a3 == 0) return {true, kNoCurveValue};
    const BoundedRoot<double> root = boundedRoot(s, c, frame);
    const Between<double> ends = between(boundedValue(s.y0, s.y1, s.y2, s.y3, root));
    return roundedToFloat(ends.low, ends.high);
}
