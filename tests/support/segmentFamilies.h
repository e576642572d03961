#pragma once

#include "keys/segmentConstants.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

// Random segments of every kind that hosts make, and of the kinds that nobody should make. Used
// where millions of them are wanted: by the comparison of the evaluators and by the count of
// fallbacks.
namespace kv::test {

/// Quick random numbers (xorshift with a multiplication), the same everywhere.
class QuickRandom {
  public:
    explicit QuickRandom(std::uint64_t seed) : _state(seed * 0x9E3779B97F4A7C15U | 1U) {}

    std::uint64_t next() {
        _state ^= _state >> 12;
        _state ^= _state << 25;
        _state ^= _state >> 27;
        return _state * 0x2545F4914F6CDD1DU;
    }
    /// Below 1, 53 bits.
    double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }
    double between(double low, double high) { return low + (high - low) * unit(); }

  private:
    std::uint64_t _state;
};

/// A segment of random place, length and values with the handles at these fractions of its length.
inline detail::Segment segmentWithHandles(QuickRandom& r, double out, double in) {
    const double x = r.between(-1000.0, 1000.0);
    const double length = r.between(0.5, 100.0);
    return {x,
            r.between(-10.0, 10.0),
            x + out * length,
            r.between(-10.0, 10.0),
            x + in * length,
            r.between(-10.0, 10.0),
            x + length,
            r.between(-10.0, 10.0)};
}

inline double roundedToFloat(double v) {
    return static_cast<double>(static_cast<float>(v));
}

/// Any bits whatever: numbers of all magnitudes, now and then an infinity or a NaN.
inline double anyDouble(QuickRandom& r) {
    const std::uint64_t bits = r.next();
    if (bits % 16 == 0) {
        constexpr double kInf = std::numeric_limits<double>::infinity();
        const std::array<double, 8> special = {
            0.0, -0.0, kInf, -kInf, std::numeric_limits<double>::quiet_NaN(), 1e-310, 1e308, 1e-6};
        return special[bits / 16 % 8];
    }
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

struct SegmentFamily {
    const char* name;
    detail::Segment (*make)(QuickRandom&);
    /// The greatest part of the evaluations that may fall back on the literal code.
    double fallbacksAtMost;
};

inline const std::array<SegmentFamily, 15>& segmentFamilies() {
    using detail::Segment;
    using R = QuickRandom&;
    static const std::array<SegmentFamily, 15> families = {{
        {"general",
         [](R r) { return segmentWithHandles(r, r.between(0.0, 1.0), r.between(0.0, 1.0)); }, 0.01},
        {"nearThirds",
         [](R r) {
             return segmentWithHandles(r, 1.0 / 3.0 + r.between(-1e-3, 1e-3),
                                       2.0 / 3.0 + r.between(-1e-3, 1e-3));
         },
         0.01},
        // As the handle length Third places them: a third in single precision.
        {"thirdLength",
         [](R r) {
             const double x = static_cast<double>(static_cast<int>(r.between(-1000.0, 1000.0)));
             const double length = static_cast<double>(static_cast<int>(r.between(1.0, 100.0)));
             const double third = static_cast<double>(static_cast<float>(length) / 3.0F);
             Segment s = segmentWithHandles(r, 0.0, 0.0);
             s.x0 = x;
             s.x1 = x + third;
             s.x2 = x + length - third;
             s.x3 = x + length;
             return s;
         },
         0.05},
        {"halfHandles", [](R r) { return segmentWithHandles(r, 0.5, 0.5); }, 0.001},
        {"unitHandles", [](R r) { return segmentWithHandles(r, 1.0, 0.0); }, 0.03},
        {"collapsedAtTheStart", [](R r) { return segmentWithHandles(r, 0.0, r.between(0.1, 1.0)); },
         0.01},
        {"collapsedAtTheEnd", [](R r) { return segmentWithHandles(r, r.between(0.0, 0.9), 1.0); },
         0.01},
        {"flat",
         [](R r) {
             Segment s = segmentWithHandles(r, r.between(0.0, 1.0), r.between(0.0, 1.0));
             s.y1 = s.y2 = s.y3 = s.y0;
             return s;
         },
         0.01},
        // Flat where the last bit decides: at the millionth below which a value counts as 0, or
        // midway between two floats.
        {"flatOnAnEdge",
         [](R r) {
             Segment s = segmentWithHandles(r, r.between(0.0, 1.0), r.between(0.0, 1.0));
             const float value = static_cast<float>(s.y0);
             s.y0 =
                 (static_cast<double>(value) + static_cast<double>(std::nextafter(value, 100.0F))) /
                 2;
             if (r.next() % 2 == 0) s.y0 = std::copysign(1e-6, s.y0);
             s.y1 = s.y2 = s.y3 = s.y0;
             return s;
         },
         1.0},
        {"vertical", [](R r) { return segmentWithHandles(r, 0.0, 1.0); }, 0.01},
        {"overshooting",
         [](R r) { return segmentWithHandles(r, r.between(1.0, 3.0), r.between(-2.0, 0.0)); },
         0.01},
        {"singlePrecision",
         [](R r) {
             const Segment s = segmentWithHandles(r, r.between(0.0, 1.0), r.between(0.0, 1.0));
             return Segment{roundedToFloat(s.x0), roundedToFloat(s.y0), roundedToFloat(s.x1),
                            roundedToFloat(s.y1), roundedToFloat(s.x2), roundedToFloat(s.y2),
                            roundedToFloat(s.x3), roundedToFloat(s.y3)};
         },
         0.01},
        // Values around the millionth below which a value counts as 0.
        {"tinyValues",
         [](R r) {
             Segment s = segmentWithHandles(r, r.between(0.0, 1.0), r.between(0.0, 1.0));
             for (double* y : {&s.y0, &s.y1, &s.y2, &s.y3})
                 *y *= 3e-7;
             return s;
         },
         0.01},
        // Lengths, places and values of all magnitudes that a float can have.
        {"allMagnitudes",
         [](R r) {
             const double scale = std::exp2(r.between(-100.0, 100.0));
             Segment s = segmentWithHandles(r, r.between(-0.5, 1.5), r.between(-0.5, 1.5));
             for (double* x : {&s.x0, &s.x1, &s.x2, &s.x3})
                 *x *= scale;
             const double height = std::exp2(r.between(-100.0, 100.0));
             for (double* y : {&s.y0, &s.y1, &s.y2, &s.y3})
                 *y *= height;
             return s;
         },
         1.0},
        {"anyBits",
         [](R r) {
             return Segment{anyDouble(r), anyDouble(r), anyDouble(r), anyDouble(r),
                            anyDouble(r), anyDouble(r), anyDouble(r), anyDouble(r)};
         },
         1.0},
    }};
    return families;
}

/// A frame on the segment; now and then at its ends, a little outside it, or none at all.
inline float frameOn(QuickRandom& r, const detail::Segment& s) {
    const std::uint64_t which = r.next() % 64;
    if (which == 0) return static_cast<float>(s.x0);
    if (which == 1) return std::nextafter(static_cast<float>(s.x3), static_cast<float>(s.x0));
    if (which == 2) return static_cast<float>(anyDouble(r));
    return static_cast<float>(r.between(s.x0, s.x3));
}

} // namespace kv::test
