#pragma once

#include <array>
#include <vector>

namespace kv::test {

/// One Bezier segment in the (frame, value) plane: key, out-handle, in-handle, next key.
struct BezierSegment {
    std::array<double, 4> x;
    std::array<double, 4> y;
};

/// How well the equation x(t) = frame determines a value for a solver in double precision.
enum class BezierCase {
    Held,         ///< both handles lie on their keys: the first key's value
    OneRoot,      ///< x(t) = frame has one real solution
    ThreeRoots,   ///< three real solutions, some of them perhaps outside [0, 1]
    RepeatedRoot, ///< the discriminant lies in the band in which the evaluator takes roots as equal
    Degenerate    ///< x(t) is so close to a quadratic that the closed form loses all digits
};

/// What arithmetic with 100 digits says about a segment at a frame, independently of the evaluator.
struct BezierAnswer {
    BezierCase kind = BezierCase::Held;
    /// Every solution of x(t) = frame, ascending.
    std::vector<double> parameters;
    /// The curve's value at each of the parameters.
    std::vector<double> values;
    /// The index of the solution that the evaluator's order of candidates selects, or -1 where
    /// none lies inside [0, 1].
    int expected = -1;
    /// By how much the parameter may differ from the exact one: the rounding errors of the closed
    /// form in double precision, to first order, with a safety factor, and the effect of the
    /// truncated pi. Meaningless for Degenerate.
    double parameterTolerance = 0.0;
    /// By how much the value may differ from values[expected]; single precision included.
    double valueTolerance = 0.0;
    /// The evaluator may give no value at all: a solution so close to the end of the segment that
    /// it may land outside, or the repeated-root band.
    bool mayHaveNoValue = false;
};

/// Solves x(t) = frame for the segment. The frame should lie between the two keys.
BezierAnswer solveBezier(const BezierSegment& segment, float frame);

} // namespace kv::test
