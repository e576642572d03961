#pragma once

namespace kv::detail {

/// "This curve has no value at this frame". Whoever evaluates curves compares with it, by ==,
/// before using a value. As bits 0xE5A96816.
constexpr float kNoCurveValue = -1.0e23F;

/// Where a search for the smallest frame starts.
constexpr float kFrameMax = 1.0e23F;

/// Where a search for the largest frame starts.
constexpr float kFrameMin = -1.0e23F;

/// Pi as the evaluator converts between radians and degrees. The eleven decimals are deliberate:
/// more of them would change the last bits of every curve value.
constexpr double kTruncatedPi = 3.14159265358;

} // namespace kv::detail
