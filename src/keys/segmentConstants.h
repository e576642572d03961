#pragma once

#include <kvControlPoint.h>

#include <cmath>

namespace kv::detail {

/// The unit of every error bound: what rounding to the nearest double changes at most, relatively.
constexpr double kRounding = 1.0 / 9007199254740992.0; // 2^-53

/// A cubic Bezier segment: key, outgoing handle, incoming handle, key. Eight doubles, nothing else.
struct Segment {
    double x0, y0, x1, y1, x2, y2, x3, y3;
};
static_assert(sizeof(Segment) == 64, "compared word by word");

inline Segment segmentBetween(const kvControlPoint& a, const kvControlPoint& b) {
    const kvControlPoint::Point p0 = a.getPoint();
    const kvControlPoint::Point p1 = a.getOutTangent();
    const kvControlPoint::Point p2 = b.getInTangent();
    const kvControlPoint::Point p3 = b.getPoint();
    return {p0.x, p0.y, p1.x, p1.y, p2.x, p2.y, p3.x, p3.y};
}

/// What the evaluation computes of a segment without asking for the frame. `a3`, `qStart`, `shift`
/// and `m` have the literal evaluator's bits: same operations, same association.
struct SegmentConstants {
    double a3;          ///< leading coefficient of the cubic
    double qStart;      ///< q of the depressed cubic without its last term (x0 - frame) / a3
    double shift;       ///< between the roots of the two cubics
    double m;           ///< 2 sqrt(-p / 3); 0 unless pCubed < 0
    double k;           ///< -2 sqrt((-p / 3)^3); 0 unless pCubed < 0
    double pCubed;      ///< (p / 3)^3
    double pCubedError; ///< how far `pCubed` may be from the literal pow(p / 3, 3.0)

    /// Whether `pCubed` and `k` have the literal bits, too.
    bool isExact() const { return pCubedError == 0; }
};

/// With one true, calls pow as the literal evaluator does; else multiplies, which is quicker. Of a
/// power that errs by at most 2 ulp, which is 4 roundings, two multiplications differ by at most 6.
/// (A product so small that it underflows differs by more, relatively; nobody asks for it then, see
/// boundedRoot().)
template <bool exact>
SegmentConstants segmentConstants(const Segment& s) {
    const double a3 = 3 * s.x1 - s.x0 - 3 * s.x2 + s.x3;
    const double a2 = -6 * s.x1 + 3 * s.x0 + 3 * s.x2;
    const double a1 = 3 * s.x1 - 3 * s.x0;
    const double p = (a1 * 3 * a3 - a2 * a2) / (a3 * 3 * a3);
    const double third = p / 3;
    SegmentConstants c{};
    c.a3 = a3;
    c.qStart = a2 * (2 * a2 * a2) / (27 * a3 * a3 * a3) - a1 * a2 / (a3 * 3 * a3);
    c.shift = a2 / (3 * a3);
    c.pCubed = exact ? std::pow(third, 3.0) : third * third * third;
    c.pCubedError = exact ? 0.0 : 8 * kRounding * std::fabs(c.pCubed);
    if (c.pCubed < 0) {
        c.m = 2 * std::sqrt(-third);
        c.k = -2 * std::sqrt(exact ? std::pow(-third, 3.0) : -c.pCubed);
    }
    return c;
}

} // namespace kv::detail
