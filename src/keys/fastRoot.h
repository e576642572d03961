#pragma once

// The root of a segment's cubic as the literal evaluator finds it, without its calls of pow, acos
// and cos, and with a bound for the difference. Below, e is kRounding, half a unit in the last
// place of 1. What is assumed of the C library: pow, acos and cos err by at most 2 ulp, hence by 4e
// relatively; sqrt is correctly rounded, as everywhere. Arithmetic is not contracted.
//
// With exact constants, q, the discriminant D and everything up to the first call of the library
// have the literal bits, so that the bounds have to cover only what follows. Constants that were
// multiplied out add the error of D to that.

#include "keys/constants.h"
#include "keys/rootTables.h"
#include "keys/segmentConstants.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace kv::detail {

/// How wide the band around 0 is in which the discriminant counts as 0, and how far a root may lie
/// below 0.
constexpr double kTolerance = 1e-6;

/// A root that differs from the literal one by at most `error`; a NaN for an error where nothing is
/// certain, so that every comparison with it fails.
struct BoundedRoot {
    double t;
    double error;
};

inline BoundedRoot uncertainRoot() {
    return {0.0, std::nan("")};
}

/// The cube root as pow(|z|, 0.3333333333333333) with the sign of z has it, and roughly |z|^(-2/3).
struct CubeRoot {
    double root;
    double inverseSquare;
};

/// For |z| up to 2^512. The root errs by at most 3e relatively, and below 2^-1022, where it takes z
/// for 2^-1023, by 2^-340 absolutely.
///
/// With |z| = 8^n f, 1 <= f < 8, y the table's idea of f^(-1/3), u = f y y and h = 1 - u y, the
/// root of f is u (1 - h)^(-2/3). If u was rounded by the factor 1 + d, |d| <= 2e, then h contains
/// that factor, too, and what remains of it is (1 + d)^(-1/3): 0.67e. Rounding the product u y
/// makes another 0.67e; the subtraction is exact. |h| <= 8e-5, so the first term left out of the
/// series, 110/243 h^4, is 0.17e. The exponent falls short of a third, which makes the power
/// smaller by kLackOfThird for each binary digit of z; half a digit is rounded off: 0.06e. The last
/// sum is rounded by e. Together 2.6e.
inline CubeRoot cubeRoot(double z) {
    constexpr std::uint64_t kMantissa = 0x000FFFFFFFFFFFFFU;
    std::uint64_t bits = 0;
    std::memcpy(&bits, &z, sizeof bits);
    const std::uint32_t exponent = static_cast<std::uint32_t>(bits >> 52) & 0x7FFU;
    // A third, rounded down; right for all eleven bits. The bias, 1023, is a multiple of 3.
    const std::uint32_t cubes = exponent * 21846U >> 16;
    const std::uint32_t octave = exponent - 3 * cubes;
    const std::uint32_t place = static_cast<std::uint32_t>(bits >> 47) & 31U;
    static_assert(kInverseRootIntervals == 32, "five bits of the mantissa");
    const Line& line = kInverseRoot[octave * 32 + place];

    const auto fromBits = [](std::uint64_t b) {
        double value = 0.0;
        std::memcpy(&value, &b, sizeof value);
        return value;
    };
    const double f = fromBits((bits & kMantissa) | std::uint64_t{1023 + octave} << 52);
    const double y = line.at0 + line.slope * f;
    const double u = f * y * y;
    const double h = 1 - u * y;
    const double digits = static_cast<double>(static_cast<std::int32_t>(exponent)) - 1022.5;
    const double more =
        (h * (2.0 / 3.0) - kLackOfThird * digits) + h * h * (5.0 / 9.0 + h * (40.0 / 81.0));
    const std::uint64_t scale = std::uint64_t{cubes + 1023 - 341} << 52;
    const std::uint64_t sign = bits & 0x8000000000000000U;
    const double down = fromBits(std::uint64_t{1023 + 341 - cubes} << 52);
    const double scaled = u * fromBits(scale | sign);
    return {scaled + scaled * more, (y * down) * (y * down)};
}

/// t = u + v - shift for a discriminant that is certainly 1e-6 or more, so that |u| + |v| > 0.1.
///
/// pow errs by 4e, cubeRoot() by 3e, the sum is rounded on both sides: 9e (|u| + |v|). The
/// difference is rounded on both sides: 2e |t|.
///
/// If D may be wrong by E: sqrt(D) by E / sqrt(D) + 2e sqrt(D), each radicand z by 2e |z| more, and
/// its root, as long as that is no more than |z| / 8, by 0.365 |z|^(-2/3) of it.
inline BoundedRoot oneRealRoot(const SegmentConstants& c, double q, double discriminant,
                               double discriminantError) {
    const double r = std::sqrt(discriminant);
    const double zu = -q / 2 + r;
    const double zv = -q / 2 - r;
    const CubeRoot u = cubeRoot(zu);
    const CubeRoot v = cubeRoot(zv);
    const double t = u.root + v.root - c.shift;
    double error = kRounding * (12 * (std::fabs(u.root) + std::fabs(v.root)) + 4 * std::fabs(t));
    if (discriminantError != 0) {
        const double rError = discriminantError / r + 2.1 * kRounding * r;
        const double uError = rError + 2.1 * kRounding * std::fabs(zu);
        const double vError = rError + 2.1 * kRounding * std::fabs(zv);
        if (!(8 * uError <= std::fabs(zu) && 8 * vError <= std::fabs(zv))) return uncertainRoot();
        error += 0.37 * (uError * u.inverseSquare + vError * v.inverseSquare);
    }
    return {t, error};
}

/// cos(2/3 acos z) for z in [0, 1]. Errs by at most 5e: by 0.33e as a polynomial; by 0.87e because
/// z was rounded three times (its square by e, the root by e; the slope is at most 0.58); by 0.29e
/// because w is rounded; the last sum by e. What is added to the constant term is at most 0.27 and
/// passes through no more than eight roundings: 2.2e.
inline double cosOfTwoThirds(double z) {
    const double* const c = kThirdOfAngle;
    const double w = 2 * z - 1;
    const double w2 = w * w;
    const double w4 = w2 * w2;
    const double w8 = w4 * w4;
    const double low = (c[1] + c[2] * w) + (c[3] + c[4] * w) * w2 +
                       ((c[5] + c[6] * w) + (c[7] + c[8] * w) * w2) * w4;
    const double high = (c[9] + c[10] * w) + (c[11] + c[12] * w) * w2 +
                        ((c[13] + c[14] * w) + (c[15] + c[16] * w) * w2) * w4;
    const double top = (c[17] + c[18] * w) + c[19] * w2;
    return c[0] + w * (low + w8 * (high + w8 * top));
}

/// The first of three candidates in range, for a discriminant that is certainly -1e-6 or less.
///
/// With ratio = cos(phi) the candidates are m c - shift, c the cosines of phi/3, phi/3 + 120 and
/// phi/3 + 240 degrees. As z = sqrt((1 + ratio) / 2) is cos(phi/2), the first is g(z) for the
/// polynomial g above, the second -g(sqrt((1 - ratio) / 2)), and the three add up to 0. Pi is short
/// by 9.79e-12, which turns the second angle back by 6.5e-12 and the third by twice that.
///
/// The literal code errs, in c: by 4e relatively in acos, 5e in the steps from phi to phi/3 and
/// back to radians, the sum of degrees included, and 4e relatively in cos. The first angle is at
/// most 1.05 and |sin| 0.87 there: 0.87 * 9e * 1.05 + 4e = 12.2e. The second: 7e of phi/3 and 3e of
/// the sum, at most pi: 0.87 (7.4e + 9.5e) + 4e = 18.7e. The third, of at most 5.24, with a cosine
/// of at most 0.5: 7.4e + 15.8e + 2e = 25.2e. This code errs by 5e in the first two and by 10.5e in
/// the third. With the product's rounding on both sides, no more than 37e m, and 2e |t| for the
/// difference, where |t| <= m + |shift|.
///
/// If k was multiplied out, ratio may be wrong by 8e of itself, and c by that times
/// |sin(angle)| / (3 sin(phi)); sin(phi) = 2 z+ z- is asked to be at least 1/8: 21.4e m.
inline BoundedRoot threeRealRoots(const SegmentConstants& c, double q) {
    constexpr double kSecondShort = 6.52878514686233e-12;
    constexpr double kThirdShort = 1.305757029372466e-11;
    const double ratio = q / c.k;
    const double zPlus = std::sqrt((1 + ratio) * 0.5);
    const double zMinus = std::sqrt((1 - ratio) * 0.5);
    if (!c.isExact() && !(zPlus * zMinus >= 1.0 / 16)) return uncertainRoot();
    const double error = kRounding * ((c.isExact() ? 48 : 72) * c.m + 4 * std::fabs(c.shift));

    const double c1 = cosOfTwoThirds(zPlus);
    const double c2 = -cosOfTwoThirds(zMinus);
    const double c3 = -(c1 + c2);
    const auto sine = [](double cosine) {
        // Rounding may have led past 1.
        return std::sqrt((std::max)(0.0, (1 - cosine) * (1 + cosine)));
    };
    const auto isInside = [error](double t) { return t <= 1 - error && t >= error - kTolerance; };
    const auto isOutside = [error](double t) { return t > 1 + error || t < -kTolerance - error; };
    const double t1 = c.m * c1 - c.shift;
    if (isInside(t1)) return {t1, error};
    if (!isOutside(t1)) return uncertainRoot();
    const double t2 = c.m * (c2 + kSecondShort * sine(c2)) - c.shift;
    if (isInside(t2)) return {t2, error};
    if (!isOutside(t2)) return uncertainRoot();
    const double t3 = c.m * (c3 - kThirdShort * sine(c3)) - c.shift;
    if (isInside(t3)) return {t3, error};
    return uncertainRoot();
}

/// The root for a frame, uncertain wherever the literal evaluator might take another branch:
/// repeated roots, NaN, and discriminants so close to a border that their error counts.
inline BoundedRoot boundedRoot(const Segment& s, const SegmentConstants& c, double frame) {
    constexpr double kGreatest = 1e300; // the greatest radicand is then below 2^512
    const double q = c.qStart + (s.x0 - frame) / c.a3;
    const double square = (q / 2) * (q / 2);
    const double discriminant = c.pCubed + square;
    // A term that small is rounded off altogether, whatever its last digits are.
    const bool isExact = c.isExact() || std::fabs(c.pCubed) <= kRounding / 4 * square;
    const double error = isExact ? 0.0 : c.pCubedError + 2.1 * kRounding * std::fabs(discriminant);
    if (discriminant - error >= kTolerance && discriminant <= kGreatest)
        return oneRealRoot(c, q, discriminant, error);
    if (discriminant + error <= -kTolerance && discriminant >= -kGreatest)
        return threeRealRoots(c, q);
    return uncertainRoot();
}

} // namespace kv::detail
