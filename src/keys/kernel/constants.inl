// The constants of a segment.

/// What the evaluation computes of a segment's cubic in time without asking for the frame, with the
/// literal evaluator's bits: same operations, same association.
template <class Value>
struct Cubic {
    Value a3;     ///< the leading coefficient
    Value qStart; ///< q of the depressed cubic without its last term (x0 - frame) / a3
    Value shift;  ///< between the roots of the two cubics
    Value third;  ///< p / 3 of the depressed cubic
};

/// The quotients among them.
template <class Value>
struct Quotients {
    Value p;
    Value first, second; ///< of which q starts with the difference
    Value shift;
};

template <class Value>
KV_KERNEL_INLINE Quotients<Value> quotients(const Value& a3, const Value& a2, const Value& a1) {
    const Value square = a3 * 3.0 * a3;
    return {(a1 * 3.0 * a3 - a2 * a2) / square, a2 * (2.0 * a2 * a2) / (27.0 * a3 * a3 * a3),
            a1 * a2 / square, a2 / (3.0 * a3)};
}

#if KV_KERNEL_LANES > 1
// The divisions of one cubic side by side.
template <>
KV_KERNEL_INLINE Quotients<double> quotients(const double& a3, const double& a2, const double& a1) {
    const double square = a3 * 3.0 * a3;
    const double cube = 27.0 * a3 * a3 * a3;
    const Pair q = Pair{a1 * 3.0 * a3 - a2 * a2, a1 * a2} / square;
    const Pair r = Pair{a2 * (2.0 * a2 * a2), a2} / Pair{cube, 3.0 * a3};
    return {q[0], r[0], q[1], r[1]};
}
#endif

template <class Value>
KV_KERNEL_INLINE Coefficients<Value> coefficients(const Value& x0, const Value& x1, const Value& x2,
                                                  const Value& x3) {
    return {3.0 * x1 - x0 - 3.0 * x2 + x3, -6.0 * x1 + 3.0 * x0 + 3.0 * x2, 3.0 * x1 - 3.0 * x0};
}

KV_KERNEL_INLINE Coefficients<double> coefficients(const Segment& s) {
    return coefficients(s.x0, s.x1, s.x2, s.x3);
}

template <class Value>
KV_KERNEL_INLINE Cubic<Value> cubicWith(const Coefficients<Value>& a) {
    const Quotients<Value> q = quotients(a.a3, a.a2, a.a1);
    return {a.a3, q.first - q.second, q.shift, q.p / 3.0};
}

/// Of (p / 3)^3 as pow errs by at most 2 ulp, which is 4 roundings, two multiplications differ by
/// at most 6. (A product so small that it underflows differs by more, relatively; nobody asks for
/// it then, see depressed().)
constexpr double kCubeError = 8 * kRounding;

/// m and k of SegmentConstants for a third below 0.
template <class Value>
KV_KERNEL_INLINE Value scaleOfRoots(const Value& third) {
    return 2.0 * squareRoot(-third);
}
template <class Value>
KV_KERNEL_INLINE Value scaleOfRatio(const Value& minusThirdCubed) {
    return -2.0 * squareRoot(minusThirdCubed);
}

/// With one true, calls pow as the literal evaluator does; else multiplies, which is quicker.
template <bool exact>
KV_KERNEL_INLINE SegmentConstants segmentConstants(const Coefficients<double>& a) {
    const Cubic<double> cubic = cubicWith(a);
    const double third = cubic.third;
    SegmentConstants c{};
    c.a3 = cubic.a3;
    c.qStart = cubic.qStart;
    c.shift = cubic.shift;
    c.pCubed = exact ? std::pow(third, 3.0) : third * third * third;
    c.pCubedError = exact ? 0.0 : kCubeError * std::fabs(c.pCubed);
    if (c.pCubed < 0) {
        c.m = scaleOfRoots(third);
        c.k = scaleOfRatio(exact ? std::pow(-third, 3.0) : -c.pCubed);
    }
    return c;
}
