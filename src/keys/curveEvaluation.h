#pragma once

#include <kvControlPointManager.h>

namespace kv::detail {

/// The curve's value at a frame, or kNoCurveValue: for a null curve, for fewer than two keys, and
/// where the segment's cubic has no usable root. Before the first key it is the first key's value,
/// from the last key on the last key's. Allocates nothing and leaves the curve unchanged, so
/// several threads may evaluate a curve that nobody edits.
float evaluateCurve(const kvControlPointManager* curve, float frame);

/// The same value, found step by step as it is defined: a walk over the keys, then the segment.
/// This is the reference for every faster way to the same bits.
float evaluateCurveLiterally(const kvControlPointManager* curve, float frame);

/// The value at `frame` of the cubic Bezier segment from key `a` to key `b`, or kNoCurveValue.
float evaluateSegmentLiterally(const kvControlPoint& a, const kvControlPoint& b, float frame);

} // namespace kv::detail
