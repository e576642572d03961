// The value of a curve at a frame as it is defined. Each segment is a cubic Bezier curve in the
// (frame, value) plane: x(t) = frame is solved in closed form, then y(t) is the value. The
// association of every expression, the truncated pi and the asymmetries between the branches are
// part of the result to its last bit; nothing here may be simplified.
#include "keys/literalEvaluation.h"

#include "keys/constants.h"

#include <cmath>

namespace kv::detail {

namespace {

// Width of the band around 0 in which the discriminant counts as 0, how far a root may lie below 0,
// and below which a value counts as 0.
constexpr double kTolerance = 1e-6;

// As a double. Not a third, and std::cbrt is not this power.
constexpr double kThirdPower = 0.3333333333333333;

// The normalised cubic: p and q of its depressed form, the shift between the two, and the
// discriminant.
struct Cubic {
    double p;
    double q;
    double shift;
    double discriminant;
};

using Root = LiteralRoot;
constexpr Root kNoRoot{false, 0.0};

// A leading coefficient of 0 is not guarded: it makes infinities and NaNs, which end in the
// repeated-root branch without a root.
Cubic cubicAt(double x0, double x1, double x2, double x3, double frame) {
    const double a3 = 3 * x1 - x0 - 3 * x2 + x3;
    const double a2 = -6 * x1 + 3 * x0 + 3 * x2;
    const double a1 = 3 * x1 - 3 * x0;
    const double a0 = x0 - frame;
    const double p = (a1 * 3 * a3 - a2 * a2) / (a3 * 3 * a3);
    const double q = a2 * (2 * a2 * a2) / (27 * a3 * a3 * a3) - a1 * a2 / (a3 * 3 * a3) + a0 / a3;
    const double discriminant = std::pow(p / 3, 3.0) + (q / 2) * (q / 2);
    return {p, q, a2 / (3 * a3), discriminant};
}

// Plain powers of signed arguments, unlike signedCubeRoot: a negative argument gives NaN and fails
// its range test. That is intended.
Root repeatedRoot(const Cubic& c) {
    if (c.p == 0 && c.q == 0) return {true, -c.shift};
    const double t1 = -std::pow(4 * c.q, kThirdPower) - c.shift;
    if (0 <= t1 && t1 <= 1) return {true, t1};
    const double t2 = std::pow(c.q / 2, kThirdPower) - c.shift;
    if (0 <= t2 && t2 <= 1) return {true, t2};
    return kNoRoot;
}

double signedCubeRoot(double z) {
    return z >= 0 ? std::pow(z, kThirdPower) : -std::pow(std::fabs(z), kThirdPower);
}

// Not held to [0, 1]: a frame slightly outside the segment extrapolates.
Root oneRealRoot(const Cubic& c) {
    const double r = std::sqrt(c.discriminant);
    const double u = signedCubeRoot(-c.q / 2 + r);
    const double v = signedCubeRoot(-c.q / 2 - r);
    return {true, u + v - c.shift};
}

Root threeRealRoots(const Cubic& c) {
    const double phi = std::acos(c.q / (-2 * std::sqrt(std::pow(-c.p / 3, 3.0))));
    const double degrees = phi * 180 / kTruncatedPi;
    const double m = 2 * std::sqrt(-c.p / 3);
    const double candidates[] = {
        m * std::cos(kTruncatedPi * (degrees / 3) / 180) - c.shift,
        m * std::cos((120 + degrees / 3) * kTruncatedPi / 180) - c.shift,
        m * std::cos((degrees / 3 + 240) * kTruncatedPi / 180) - c.shift,
    };
    for (const double t : candidates)
        if (t <= 1 && t + kTolerance >= 0) return {true, t};
    return kNoRoot;
}

// NaN takes the repeated-root branch like everything inside the band.
Root rootOf(const Cubic& c) {
    if (c.discriminant >= kTolerance) return oneRealRoot(c);
    if (c.discriminant <= -kTolerance) return threeRealRoots(c);
    return repeatedRoot(c);
}

bool equal(kvControlPoint::Point a, kvControlPoint::Point b) {
    return a.x == b.x && a.y == b.y;
}

} // namespace

LiteralRoot rootLiterally(double x0, double x1, double x2, double x3, double frame) {
    return rootOf(cubicAt(x0, x1, x2, x3, frame));
}

double valueLiterally(double y0, double y1, double y2, double y3, double t) {
    const double t3 = std::pow(t, 3.0);
    return y0 * (3 * t * t - t3 - 3 * t + 1) + y1 * (-6 * t * t + 3 * t3 + 3 * t) +
           y2 * (3 * t * t - 3 * t3) + y3 * t3;
}

float evaluateSegmentLiterally(const kvControlPoint& a, const kvControlPoint& b, float frame) {
    const kvControlPoint::Point p0 = a.getPoint();
    const kvControlPoint::Point p1 = a.getOutTangent();
    const kvControlPoint::Point p2 = b.getInTangent();
    const kvControlPoint::Point p3 = b.getPoint();
    if (equal(p0, p1) && equal(p2, p3)) return static_cast<float>(p0.y);

    const Root root = rootLiterally(p0.x, p1.x, p2.x, p3.x, static_cast<double>(frame));
    if (!root.found) return kNoCurveValue;
    const double y = valueLiterally(p0.y, p1.y, p2.y, p3.y, root.t);
    if (-kTolerance < y && y < kTolerance) return 0.0F;
    return static_cast<float>(y);
}

float evaluateCurveLiterally(const kvControlPointManager* curve, float frame) {
    if (curve == nullptr || curve->getCPs().size() < 2) return kNoCurveValue;
    const std::vector<kvControlPoint>& keys = curve->getCPs();
    std::size_t after = 0;
    while (after < keys.size() && !(keys[after].getPoint().x > static_cast<double>(frame)))
        ++after;

    // Outside the keys the value is a key's own; small values are not made 0 there.
    if (after == 0) return static_cast<float>(keys.front().getPoint().y);
    if (after == keys.size()) return static_cast<float>(keys.back().getPoint().y);
    return evaluateSegmentLiterally(keys[after - 1], keys[after], frame);
}

} // namespace kv::detail
