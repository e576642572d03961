#pragma once

#include <kvControlPointManager.h>

namespace kv::detail {

/// The curve's value at a frame, found step by step as it is defined: a walk over the keys, then
/// the closed form of the segment. This is the reference for every faster way to the same bits.
float evaluateCurveLiterally(const kvControlPointManager* curve, float frame);

/// The value at `frame` of the cubic Bezier segment from key `a` to key `b`, or kNoCurveValue.
float evaluateSegmentLiterally(const kvControlPoint& a, const kvControlPoint& b, float frame);

} // namespace kv::detail
