// The root of a segment's cubic as the literal evaluator finds it, without its calls of pow, acos
// and cos, and with a bound for the difference. Below, e is kRounding, half a unit in the last
// place of 1. What is assumed of the C library: pow, acos and cos err by at most 2 ulp, hence by 4e
// relatively; sqrt is correctly rounded, as everywhere. Arithmetic is not contracted.
//
// With exact constants, q, the discriminant D and everything up to the first call of the library
// have the literal bits, so that the bounds have to cover only what follows. Constants that were
// multiplied out add the error of D to that.

/// A root that differs from the literal one by at most `error`; a NaN for an error where nothing is
/// certain, so that every comparison with it fails.
template <class Value>
struct BoundedRoot {
    Value t;
    Value error;
};

/// The cube root as pow(|z|, 0.3333333333333333) with the sign of z has it, and roughly |z|^(-2/3).
template <class Value>
struct CubeRoot {
    Value root;
    Value inverseSquare;
};

/// For |z| up to 2^512. The root errs by at most 3e relatively, and below 2^-1022, where it takes z
/// for 2^-1023, by 2^-340 absolutely.
///
/// With |z| = 8^n f, 1 <= f < 8, y the polynomials' idea of f^(-1/3), u = f y y and h = 1 - u y,
/// the root of f is u (1 - h)^(-2/3). If u was rounded by the factor 1 + d, |d| <= 2e, then h
/// contains that factor, too, and what remains of it is (1 + d)^(-1/3): 0.67e. Rounding the product
/// u y makes another 0.67e; the subtraction is exact. |h| <= 2.1e-5, so the first term left out of
/// the series, 110/243 h^4, is 0.001e. The exponent falls short of a third, which makes the power
/// smaller by kLackOfThird for each binary digit of z; half a digit is rounded off: 0.06e. The last
/// sum is rounded by e. Together 2.5e; a little less where products and sums are rounded at once.
template <class Value>
KV_KERNEL_INLINE CubeRoot<Value> cubeRoot(const Value& z) {
    // Small whole numbers become doubles, and doubles whole numbers, by way of the last digits of
    // the mantissa.
    constexpr std::uint64_t kWholeBits = 0x4330000000000000U;
    constexpr double kWhole = 4503599627370496.0;         // 2^52, the same number
    constexpr double kRoundsToWhole = 6755399441055744.0; // 2^52 + 2^51
    const auto bits = bitsOf(z);
    const Value exponent = fromBits<Value>(((bits >> 52U) & 0x7FFU) | kWholeBits) - kWhole;
    const Value m = fromBits<Value>((bits & 0x000FFFFFFFFFFFFFU) | 0x3FF0000000000000U);
    // A third of the exponent, rounded down: a third of one less lies within 1/3 of that. The bias,
    // 1023, is a multiple of 3.
    const Value cubesAsLastDigits = multiplyAdd(exponent - 1.0, 1.0 / 3.0, kRoundsToWhole);
    const Value octave = multiplyAdd(cubesAsLastDigits - kRoundsToWhole, -3.0, exponent);

    const double* const p = kInverseRoot;
    const double* const o = kInverseRootOfOctave;
    const Value f = m * multiplyAdd(octave, multiplyAdd(octave, 0.5, 0.5), 1.0); // by 1, 2 or 4
    const Value m2 = m * m;
    const Value ofMantissa =
        multiplyAdd(m2, multiplyAdd(m2, multiplyAdd(m, p[5], p[4]), multiplyAdd(m, p[3], p[2])),
                    multiplyAdd(m, p[1], p[0]));
    const Value y = ofMantissa * multiplyAdd(octave, multiplyAdd(octave, o[2], o[1]), o[0]);
    const Value u = f * y * y;
    const Value h = multiplyAdd(-u, y, 1.0);
    const Value more = multiplyAdd(h * h, multiplyAdd(h, 40.0 / 81.0, 5.0 / 9.0),
                                   multiplyAdd(h, 2.0 / 3.0, -kLackOfThird * (exponent - 1022.5)));
    const auto cubes = bitsOf(cubesAsLastDigits) << 52U; // the digits before them drop out
    const Value scale = fromBits<Value>((cubes + (std::uint64_t{1023 - 341} << 52U)) |
                                        (bits & 0x8000000000000000U));
    const Value down = fromBits<Value>((std::uint64_t{1023 + 341} << 52U) - cubes);
    const Value scaled = u * scale;
    return {multiplyAdd(scaled, more, scaled), (y * down) * (y * down)};
}

/// Those of both radicands of one cubic.
template <class Value>
struct CubeRoots {
    CubeRoot<Value> u;
    CubeRoot<Value> v;
};

template <class Value>
KV_KERNEL_INLINE CubeRoots<Value> cubeRoots(const Value& zu, const Value& zv) {
    return {cubeRoot(zu), cubeRoot(zv)};
}

#if KV_KERNEL_LANES > 1
template <>
KV_KERNEL_INLINE CubeRoots<double> cubeRoots(const double& zu, const double& zv) {
    const CubeRoot<Pair> both = cubeRoot(Pair{zu, zv});
    return {{both.root[0], both.inverseSquare[0]}, {both.root[1], both.inverseSquare[1]}};
}
#endif

/// t = u + v - shift for a discriminant that is certainly 1e-6 or more, so that |u| + |v| > 0.1.
///
/// pow errs by 4e, cubeRoot() by 3e, the sum is rounded on both sides: 9e (|u| + |v|). The
/// difference is rounded on both sides: 2e |t|.
///
/// If D may be wrong by E: sqrt(D) by E / sqrt(D) + 2e sqrt(D), each radicand z by 2e |z| more, and
/// its root, as long as that is no more than |z| / 8, by 0.365 |z|^(-2/3) of it. That is left out
/// where all discriminants are exact.
template <bool exact, class Value>
KV_KERNEL_INLINE BoundedRoot<Value> oneRealRoot(const Value& q, const Value& discriminant,
                                                const Value& discriminantError,
                                                const Value& shift) {
    const Value r = squareRoot(discriminant);
    const Value zu = -q / 2.0 + r;
    const Value zv = -q / 2.0 - r;
    const CubeRoots<Value> roots = cubeRoots(zu, zv);
    const CubeRoot<Value>& u = roots.u;
    const CubeRoot<Value>& v = roots.v;
    const Value t = u.root + v.root - shift;
    const Value error = multiplyAdd(absolute(t), 4.0 * kRounding,
                                    12.0 * kRounding * (absolute(u.root) + absolute(v.root)));
    if constexpr (exact) return {t, error};
    const Value rError = discriminantError / r + 2.1 * kRounding * r;
    const Value uError = rError + 2.1 * kRounding * absolute(zu);
    const Value vError = rError + 2.1 * kRounding * absolute(zv);
    const auto isSmallOfU = 8.0 * uError <= absolute(zu);
    const auto isSmallOfV = 8.0 * vError <= absolute(zv);
    const auto isSmall = isSmallOfU & isSmallOfV;
    const Value more = 0.37 * (uError * u.inverseSquare + vError * v.inverseSquare);
    const Value unknown = Value{} + std::numeric_limits<double>::quiet_NaN();
    return {t, error + (isSmall ? more : unknown)};
}

/// cos(2/3 acos z) for z in [0, 1]. Errs by at most 5e: by 0.33e as a polynomial; by 0.87e because
/// z was rounded three times (its square by e, the root by e; the slope is at most 0.58); by 0.29e
/// because w is rounded; the last sum by e. What is added to the constant term is at most 0.27 and
/// passes through no more than eight roundings: 2.2e.
template <class Value>
KV_KERNEL_INLINE Value cosOfTwoThirds(const Value& z) {
    const double* const c = kThirdOfAngle;
    const Value w = 2.0 * z - 1.0;
    const Value w2 = w * w;
    const Value w4 = w2 * w2;
    const Value w8 = w4 * w4;
    const auto four = [&](int first) {
        return multiplyAdd(multiplyAdd(w, c[first + 3], c[first + 2]), w2,
                           multiplyAdd(w, c[first + 1], c[first]));
    };
    const Value low = multiplyAdd(four(5), w4, four(1));
    const Value high = multiplyAdd(four(13), w4, four(9));
    const Value top = multiplyAdd(w2, c[19], multiplyAdd(w, c[18], c[17]));
    return multiplyAdd(w, multiplyAdd(w8, multiplyAdd(w8, top, high), low), c[0]);
}

/// sqrt(1 - c^2); rounding may have led c past 1.
template <class Value>
KV_KERNEL_INLINE Value sineOf(const Value& cosine) {
    const Value square = (1.0 - cosine) * (1.0 + cosine);
    return squareRoot(square > 0.0 ? square : Value{});
}

/// The cosines of the three candidates' angles, and the product sin(phi) / 2, for
/// ratio = cos(phi); see threeRealRoots().
template <class Value>
struct Cosines {
    Value c1, c2, c3;
    Value halfSine;
};

/// Pi is short by 9.79e-12, which turns the second angle back by 6.5e-12 and the third by twice
/// that.
constexpr double kSecondShort = 6.52878514686233e-12;
constexpr double kThirdShort = 1.305757029372466e-11;

template <class Value>
KV_KERNEL_INLINE Cosines<Value> cosinesOfThirds(const Value& ratio) {
    const Value zPlus = squareRoot((1.0 + ratio) * 0.5);
    const Value zMinus = squareRoot((1.0 - ratio) * 0.5);
    const Value c1 = cosOfTwoThirds(zPlus);
    const Value c2 = -cosOfTwoThirds(zMinus);
    const Value c3 = -(c1 + c2);
    return {c1, c2 + kSecondShort * sineOf(c2), c3 - kThirdShort * sineOf(c3), zPlus * zMinus};
}

#if KV_KERNEL_LANES > 1
template <>
KV_KERNEL_INLINE Cosines<double> cosinesOfThirds(const double& ratio) {
    const Pair z = squareRoot((1.0 + Pair{ratio, -ratio}) * 0.5);
    const Pair c = cosOfTwoThirds(z);
    const Pair c23 = {-c[1], -(c[0] - c[1])};
    const Pair turned = c23 + Pair{kSecondShort, -kThirdShort} * sineOf(c23);
    return {c[0], turned[0], turned[1], z[0] * z[1]};
}
#endif

/// The first of three candidates in range, for a discriminant that is certainly -1e-6 or less.
///
/// With ratio = cos(phi) the candidates are m c - shift, c the cosines of phi/3, phi/3 + 120 and
/// phi/3 + 240 degrees. As z = sqrt((1 + ratio) / 2) is cos(phi/2), the first is g(z) for the
/// polynomial g above, the second -g(sqrt((1 - ratio) / 2)), and the three add up to 0.
///
/// The literal code errs, in c: by 4e relatively in acos, 5e in the steps from phi to phi/3 and
/// back to radians, the sum of degrees included, and 4e relatively in cos. The first angle is at
/// most 1.05 and |sin| 0.87 there: 0.87 * 9e * 1.05 + 4e = 12.2e. The second: 7e of phi/3 and 3e of
/// the sum, at most pi: 0.87 (7.4e + 9.5e) + 4e = 18.7e. The third, of at most 5.24, with a cosine
/// of at most 0.5: 7.4e + 15.8e + 2e = 25.2e. This code errs by 5e in the first two and by 10.5e in
/// the third. With the product's rounding on both sides, no more than 37e m, and 2e |t| for the
/// difference, where |t| <= m + |shift|: hence kExactCosines.
///
/// If k was multiplied out, ratio may be wrong by 8e of itself, and c by that times
/// |sin(angle)| / (3 sin(phi)); sin(phi) = 2 z+ z- is asked to be at least 1/8: 21.4e m more.
constexpr double kExactCosines = 48.0;
constexpr double kQuickCosines = 72.0;

/// `cosineError` is one of these two.
template <class Value>
KV_KERNEL_INLINE BoundedRoot<Value> threeRealRoots(const Value& q, const Value& k, const Value& m,
                                                   const Value& shift, double cosineError) {
    const Cosines<Value> c = cosinesOfThirds<Value>(q / k);
    const auto isKnown = c.halfSine >= (cosineError == kExactCosines ? 0.0 : 1.0 / 16);
    const Value error = kRounding * (cosineError * m + 4.0 * absolute(shift));
    const Value t1 = m * c.c1 - shift;
    const Value t2 = m * c.c2 - shift;
    const Value t3 = m * c.c3 - shift;

    // Certainly within the range, and certainly not.
    const Value innerEnd = 1.0 - error;
    const Value innerStart = error - kTolerance;
    const Value outerEnd = 1.0 + error;
    const Value outerStart = -kTolerance - error;
    const auto first = isKnown & (t1 <= innerEnd) & (t1 >= innerStart);
    const auto notFirst = isKnown & ((t1 > outerEnd) | (t1 < outerStart));
    const auto second = notFirst & (t2 <= innerEnd) & (t2 >= innerStart);
    const auto notSecond = notFirst & ((t2 > outerEnd) | (t2 < outerStart));
    const auto third = notSecond & (t3 <= innerEnd) & (t3 >= innerStart);
    const Value t = first ? t1 : (second ? t2 : t3);
    const Value unknown = Value{} + std::numeric_limits<double>::quiet_NaN();
    return {t, (first | second | third) ? error : unknown};
}

/// What of a segment's depressed cubic depends on the frame, and which way the literal evaluator
/// goes, as far as that is certain: neither is near repeated roots, for NaN, and where numbers
/// overflow.
template <class Value>
struct Depressed {
    using Mask = decltype((Value{} < Value{}) & (Value{} < Value{}));

    Value q;
    Value discriminant;
    Value discriminantError;
    Mask hasOneRoot;
    Mask hasThreeRoots;
};

/// `toFrame` is (x0 - frame) / a3. An exact pCubed has an error of 0.
template <class Value>
KV_KERNEL_INLINE Depressed<Value> depressed(const Value& qStart, const Value& toFrame,
                                            const Value& pCubed, const Value& pCubedError) {
    constexpr double kGreatest = 1e300; // the greatest radicand is then below 2^512
    const Value q = qStart + toFrame;
    const Value square = (q / 2.0) * (q / 2.0);
    const Value discriminant = pCubed + square;
    // A term that small is rounded off altogether, whatever its last digits are.
    const auto isExact = (pCubedError == 0.0) | (absolute(pCubed) <= kRounding / 4 * square);
    const Value error = isExact ? Value{} : pCubedError + 2.1 * kRounding * absolute(discriminant);
    return {q, discriminant, error,
            (discriminant - error >= kTolerance) & (discriminant <= kGreatest),
            (discriminant + error <= -kTolerance) & (discriminant >= -kGreatest)};
}

KV_KERNEL_INLINE BoundedRoot<double> boundedRoot(const Segment& s, const SegmentConstants& c,
                                                 double frame) {
    const Depressed<double> d = depressed(c.qStart, (s.x0 - frame) / c.a3, c.pCubed, c.pCubedError);
    if (d.hasThreeRoots)
        return threeRealRoots(d.q, c.k, c.m, c.shift, c.isExact() ? kExactCosines : kQuickCosines);
    if (!d.hasOneRoot) return {0.0, std::numeric_limits<double>::quiet_NaN()};
    if (d.discriminantError == 0)
        return oneRealRoot<true>(d.q, d.discriminant, d.discriminantError, c.shift);
    return oneRealRoot<false>(d.q, d.discriminant, d.discriminantError, c.shift);
}
