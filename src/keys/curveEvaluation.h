#pragma once

#include <kvControlPointManager.h>

namespace kv::detail {

/// The curve's value at a frame, or kNoCurveValue: for a null curve, for fewer than two keys, and
/// where the segment's cubic has no usable root. Before the first key it is the first key's value,
/// from the last key on the last key's. The bits are those of evaluateCurveLiterally().
///
/// Leaves the curve unchanged but for what it remembers of the segment evaluated last, which is
/// guarded: several threads may evaluate a curve that nobody edits. Allocates nothing.
float evaluateCurve(const kvControlPointManager* curve, float frame);

} // namespace kv::detail
