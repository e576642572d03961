// The second opinion on curve evaluation: the cubic x(t) = frame is solved by bisection between its
// extrema in 100-digit arithmetic, so that neither the formulas nor the roundings of the evaluator
// are shared. The tolerances follow the rounding errors of Cardano's formula to first order.
#include "support/oracles/bezierOracle.h"

#include <boost/multiprecision/mpfr.hpp>

#include <algorithm>
#include <cmath>

namespace kv::test {
namespace {

using Real = boost::multiprecision::number<boost::multiprecision::mpfr_float_backend<100>,
                                           boost::multiprecision::et_off>;

const Real kUnit = Real(1) / Real(9007199254740992.0); // 2^-53, one rounding in double precision
const Real kSafety = 64;

struct Cubic {
    Real a3, a2, a1, a0;

    Real at(const Real& t) const { return ((a3 * t + a2) * t + a1) * t + a0; }
    Real slopeAt(const Real& t) const { return (Real(3) * a3 * t + Real(2) * a2) * t + a1; }
};

Cubic cubicOf(const std::array<double, 4>& c, const Real& offset) {
    const Real c0 = c[0], c1 = c[1], c2 = c[2], c3 = c[3];
    return {c3 - c0 + Real(3) * (c1 - c2), Real(3) * (c0 + c2) - Real(6) * c1, Real(3) * (c1 - c0),
            c0 - offset};
}

/// The root between low and high, where the cubic changes its sign.
Real bisect(const Cubic& f, Real low, Real high) {
    const bool rising = f.at(low) < 0;
    for (int step = 0; step < 200; ++step) {
        const Real middle = (low + high) / 2;
        const Real value = f.at(middle);
        if (value == 0) return middle;
        ((value < 0) == rising ? low : high) = middle;
    }
    return (low + high) / 2;
}

/// Every real root, ascending: one is searched between each pair of neighbouring extrema and
/// outside the outermost ones.
std::vector<Real> rootsOf(const Cubic& f) {
    const Real bound =
        Real(2) + (abs(f.a2) + abs(f.a1) + abs(f.a0)) / abs(f.a3); // Cauchy's bound and one more
    std::vector<Real> marks{-bound};
    const Real inner = f.a2 * f.a2 - Real(3) * f.a3 * f.a1;
    if (inner > 0) {
        const Real e1 = (-f.a2 - sqrt(inner)) / (Real(3) * f.a3);
        const Real e2 = (-f.a2 + sqrt(inner)) / (Real(3) * f.a3);
        marks.push_back((std::min)(e1, e2));
        marks.push_back((std::max)(e1, e2));
    }
    marks.push_back(bound);
    std::vector<Real> roots;
    for (std::size_t i = 0; i + 1 < marks.size(); ++i) {
        const Real left = f.at(marks[i]), right = f.at(marks[i + 1]);
        if (left == 0) {
            if (roots.empty() || roots.back() != marks[i]) roots.push_back(marks[i]);
        } else if ((left < 0) != (right < 0)) {
            roots.push_back(bisect(f, marks[i], marks[i + 1]));
        }
    }
    return roots;
}

/// p and q of the depressed cubic z^3 + pz + q, z = t + s, and the absolute errors with which
/// double precision computes them: every term loses a few units of its own size, and the
/// coefficients themselves come from differences.
struct Depressed {
    Real p, q, s, dp, dq, ds;
};

Depressed depress(const Cubic& f, const BezierSegment& segment, double frame) {
    const auto magnitude = [&](double w0, double w1, double w2, double w3) {
        return abs(Real(w0 * segment.x[0])) + abs(Real(w1 * segment.x[1])) +
               abs(Real(w2 * segment.x[2])) + abs(Real(w3 * segment.x[3]));
    };
    const Real d3 = kUnit * 4 * magnitude(1, 3, 3, 1), d2 = kUnit * 4 * magnitude(3, 6, 3, 0),
               d1 = kUnit * 4 * magnitude(3, 3, 0, 0),
               d0 = kUnit * (magnitude(1, 0, 0, 0) + abs(Real(frame)));
    const Real r3 = d3 / abs(f.a3);
    Depressed d;
    d.s = f.a2 / (Real(3) * f.a3);
    d.ds = abs(d.s) * (r3 + kUnit * 4) + d2 / abs(Real(3) * f.a3);
    const Real termA = f.a1 / f.a3, termB = f.a2 * f.a2 / (Real(3) * f.a3 * f.a3);
    d.p = termA - termB;
    d.dp = abs(termA) * (r3 + kUnit * 8) + d1 / abs(f.a3) + abs(termB) * (r3 * 2 + kUnit * 8) +
           Real(2) * abs(f.a2) * d2 / (Real(3) * f.a3 * f.a3);
    const Real q1 = Real(2) * f.a2 * f.a2 * f.a2 / (Real(27) * f.a3 * f.a3 * f.a3),
               q2 = f.a2 * f.a1 / (Real(3) * f.a3 * f.a3), q3 = f.a0 / f.a3;
    d.q = q1 - q2 + q3;
    d.dq = abs(q1) * (r3 * 3 + kUnit * 8) +
           Real(6) * f.a2 * f.a2 * d2 / (Real(27) * abs(f.a3 * f.a3 * f.a3)) +
           abs(q2) * (r3 * 2 + kUnit * 8) +
           (abs(f.a2) * d1 + abs(f.a1) * d2) / (Real(3) * f.a3 * f.a3) +
           abs(q3) * (r3 + kUnit * 8) + d0 / abs(f.a3);
    return d;
}

/// The error of t that the errors of p and q and the formula itself cause at the root t.
Real parameterError(const Depressed& d, const Real& delta, const Real& t) {
    const Real z = t + d.s;
    const Real slope = abs(Real(3) * z * z + d.p);
    Real error = d.ds + kUnit * (abs(z) + abs(d.s) + 1);
    if (delta > 0) {
        const Real root = sqrt(delta), half = d.q / 2;
        // The radicand cancels; its error grows in the square root.
        const Real radicand = kUnit * 8 * (abs(d.p * d.p * d.p) / 27 + half * half);
        const Real rootError = radicand / (2 * root) + kUnit * root;
        for (const Real& argument : {Real(-half + root), Real(-half - root)}) {
            const Real argumentError = rootError + kUnit * 4 * (abs(half) + root);
            const Real cube = cbrt(abs(argument));
            // Next to zero the cube root magnifies without bound; there it is at most the cube root
            // of the error itself. The exponent is the double 0.3333333333333333, not a third.
            const Real logarithm = argument == 0 ? Real(0) : Real(abs(log(abs(argument))));
            error += (std::min)(Real(argumentError / (Real(3) * cube * cube + argumentError)),
                                Real(cbrt(argumentError))) +
                     cube * kUnit * (logarithm + 8);
        }
    } else {
        const Real m = 2 * sqrt(-d.p / 3);
        // acos is steep near its ends; pi is cut after twelve digits, which shifts the angles of
        // the second and third candidate by up to 1.5e-11.
        const Real ratio = d.q / (-m * m * m / 4);
        const Real ratioError = kUnit * 16;
        const Real flat = sqrt((std::max)(Real(1 - ratio * ratio), Real(0)));
        const Real angle =
            flat * flat > ratioError ? Real(ratioError / flat) : Real(2 * sqrt(ratioError));
        error += m * (angle + kUnit * 16 + Real("2e-11"));
    }
    if (slope > 0) error += (abs(z) * d.dp + d.dq) / slope;
    return error * kSafety;
}

/// The order in which the candidates of the three-root formula are tried: largest, smallest,
/// middle.
int chosenOf(const std::vector<Real>& roots) {
    const auto inside = [](const Real& t) { return t <= 1 && t + Real("1e-6") >= 0; };
    const int last = static_cast<int>(roots.size()) - 1;
    for (const int i : {last, 0, last / 2})
        if (i >= 0 && inside(roots[static_cast<std::size_t>(i)])) return i;
    return -1;
}

/// The largest change of y within the parameter error around t, second order included.
Real valueError(const Cubic& y, const BezierSegment& segment, const Real& t, const Real& error) {
    Real largest = 0;
    for (double value : segment.y)
        largest = (std::max)(largest, Real(std::fabs(value)));
    const Real here = y.at(t);
    const Real change =
        (std::max)(abs(Real(y.at(t + error) - here)), abs(Real(y.at(t - error) - here)));
    const Real reach = abs(t) + 1; // a root beyond the segment weighs the points more
    return change + abs(y.slopeAt(t)) * error + kUnit * 64 * largest * reach * reach * reach +
           abs(here) * Real(1.2e-7) + Real(1e-6); // to float; and the snap to zero
}

} // namespace

BezierAnswer solveBezier(const BezierSegment& segment, float frame) {
    BezierAnswer answer;
    if (segment.x[0] == segment.x[1] && segment.y[0] == segment.y[1] &&
        segment.x[2] == segment.x[3] && segment.y[2] == segment.y[3]) {
        answer.parameters = {0.0};
        answer.values = {segment.y[0]};
        answer.expected = 0;
        return answer;
    }
    const Cubic x = cubicOf(segment.x, Real(static_cast<double>(frame)));
    const Cubic y = cubicOf(segment.y, Real(0));
    Real size = 0;
    for (double value : segment.x)
        size += abs(Real(value));
    if (abs(x.a3) <= size * Real(1e-9)) {
        answer.kind = BezierCase::Degenerate;
        answer.mayHaveNoValue = true;
        return answer;
    }
    const Depressed d = depress(x, segment, static_cast<double>(frame));
    const Real delta = d.p * d.p * d.p / 27 + d.q * d.q / 4;
    const Real deltaError = kSafety * (d.p * d.p * d.dp / 9 + abs(d.q) * d.dq / 2 +
                                       kUnit * 8 * (abs(d.p * d.p * d.p) / 27 + d.q * d.q / 4));
    const std::vector<Real> roots = rootsOf(x);
    if (abs(delta) <= Real(1e-6) + deltaError)
        answer.kind = BezierCase::RepeatedRoot;
    else
        answer.kind = delta > 0 ? BezierCase::OneRoot : BezierCase::ThreeRoots;
    for (const Real& t : roots) {
        answer.parameters.push_back(t.convert_to<double>());
        answer.values.push_back(y.at(t).convert_to<double>());
    }
    answer.expected = answer.kind == BezierCase::OneRoot ? 0 : chosenOf(roots);
    if (answer.kind == BezierCase::RepeatedRoot) {
        // Taking the roots as equal moves them by up to the cube root of the band's half width
        // times a small factor, or yields none.
        answer.mayHaveNoValue = true;
        answer.parameterTolerance = 0.5;
        answer.valueTolerance = 0.0;
        for (const Real& t : roots)
            answer.valueTolerance = (std::max)(
                answer.valueTolerance, valueError(y, segment, t, Real(0.5)).convert_to<double>());
        return answer;
    }
    Real nearestEdge = 2;
    for (const Real& t : roots) {
        const Real error = parameterError(d, delta, t);
        answer.parameterTolerance =
            (std::max)(answer.parameterTolerance, error.convert_to<double>());
        nearestEdge =
            (std::min)(nearestEdge, (std::min)(abs(Real(t - 1)), abs(Real(t + Real(1e-6)))));
    }
    // A candidate next to the edge of [0, 1] may be taken or passed over.
    answer.mayHaveNoValue = answer.kind == BezierCase::ThreeRoots &&
                            (answer.expected < 0 || nearestEdge <= Real(answer.parameterTolerance));
    if (answer.expected >= 0)
        answer.valueTolerance =
            valueError(y, segment, roots[static_cast<std::size_t>(answer.expected)],
                       Real(answer.parameterTolerance))
                .convert_to<double>();
    return answer;
}

} // namespace kv::test
