#pragma once

#include <kvControlPoint.h>

namespace kv::detail {

/// The unit of every error bound: what rounding to the nearest double changes at most, relatively.
constexpr double kRounding = 1.0 / 9007199254740992.0; // 2^-53

/// A cubic Bezier segment: key, outgoing handle, incoming handle, key.
struct Segment {
    double x0, y0, x1, y1, x2, y2, x3, y3;
};

inline Segment segmentBetween(const kvControlPoint& a, const kvControlPoint& b) {
    const kvControlPoint::Point p0 = a.getPoint();
    const kvControlPoint::Point p1 = a.getOutTangent();
    const kvControlPoint::Point p2 = b.getInTangent();
    const kvControlPoint::Point p3 = b.getPoint();
    return {p0.x, p0.y, p1.x, p1.y, p2.x, p2.y, p3.x, p3.y};
}

/// The coefficients of a segment's cubic in time, but for the last, x0 - frame: numbers, or several
/// side by side.
template <class Value>
struct Coefficients {
    Value a3, a2, a1;
};

/// What the evaluation computes of a segment without asking for the frame; of nothing but the
/// coefficients. `a3`, `qStart`, `shift`
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

} // namespace kv::detail
