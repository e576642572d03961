#pragma once

#include <kvControlPointManager.h>

namespace kv::detail {

/// The curve's value at a frame, found step by step as it is defined: a walk over the keys, then
/// the closed form of the segment. This is the reference for every faster way to the same bits.
float evaluateCurveLiterally(const kvControlPointManager* curve, float frame);

/// The value at `frame` of the cubic Bezier segment from key `a` to key `b`, or kNoCurveValue.
float evaluateSegmentLiterally(const kvControlPoint& a, const kvControlPoint& b, float frame);

/// The parameter on a segment, or none.
struct LiteralRoot {
    bool found;
    double t;
};

/// The two steps of a segment that is not held: the root of the cubic through these frames, and the
/// value there, before it is made 0 if it is small and rounded to a float.
LiteralRoot rootLiterally(double x0, double x1, double x2, double x3, double frame);
double valueLiterally(double y0, double y1, double y2, double y3, double t);

} // namespace kv::detail
