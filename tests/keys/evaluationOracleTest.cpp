// Curve values against arithmetic with 100 digits: every family of segments, at random frames. The
// second opinion says which solution is selected and by how much the closed form in double
// precision may differ from it; where it says that anything may come out, the case is counted, not
// compared.
#include "support/oracles/bezierOracle.h"

#include "keys/curveEvaluation.h"

#include <OpenSG/OSGConfig.h>

#include <kvAnimationCurve.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <string>

using kv::test::BezierAnswer;
using kv::test::BezierCase;
using kv::test::BezierSegment;

namespace {

using Random = std::mt19937_64;

double between(Random& random, double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
}

struct Family {
    std::string name;
    std::function<BezierSegment(Random&)> make;
    /// How many of the 1000 evaluations must have been compared with a tolerance that means
    /// something (below a thousandth of the segment's height).
    int comparedAtLeast;
};

/// A segment of random place and size whose handles lie at the fractions in and out of its length.
BezierSegment withHandles(Random& random, double out, double in) {
    const double x = between(random, -100.0, 100.0), length = between(random, 0.5, 50.0);
    BezierSegment s{};
    s.x = {x, x + out * length, x + in * length, x + length};
    for (double& y : s.y)
        y = between(random, -10.0, 10.0);
    return s;
}

const std::vector<Family>& families() {
    static const std::vector<Family> all = {
        {"general",
         [](Random& r) { return withHandles(r, between(r, 0.0, 1.0), between(r, 0.0, 1.0)); }, 850},
        {"half handles", [](Random& r) { return withHandles(r, 0.5, 0.5); }, 900},
        // Time stands still in the middle of such a segment; a quarter of the frames are that
        // close.
        {"unit handles", [](Random& r) { return withHandles(r, 1.0, 0.0); }, 700},
        {"near thirds",
         [](Random& r) {
             return withHandles(r, 1.0 / 3.0 + between(r, 1e-4, 1e-2),
                                2.0 / 3.0 + between(r, -1e-2, -1e-4));
         },
         300},
        {"collapsed at the start",
         [](Random& r) { return withHandles(r, 0.0, between(r, 0.1, 0.6)); }, 800},
        {"collapsed at the end",
         [](Random& r) { return withHandles(r, between(r, 0.4, 0.9), 1.0); }, 800},
        {"vertical handles",
         [](Random& r) {
             BezierSegment s = withHandles(r, 0.0, 1.0);
             return s;
         },
         900},
        {"overshooting handles",
         [](Random& r) { return withHandles(r, between(r, 1.0, 2.5), between(r, -1.5, 0.0)); },
         500},
        {"flat",
         [](Random& r) {
             BezierSegment s = withHandles(r, between(r, 0.2, 0.6), between(r, 0.4, 0.8));
             s.y = {5.0, 5.0, 5.0, 5.0};
             return s;
         },
         700},
        {"single-precision handles",
         [](Random& r) {
             BezierSegment s = withHandles(r, between(r, 0.0, 1.0), between(r, 0.0, 1.0));
             for (double& x : s.x)
                 x = static_cast<double>(static_cast<float>(x));
             return s;
         },
         850}};
    return all;
}

/// A curve of two keys whose handles are put where the test wants them.
class TwoKeys {
  public:
    TwoKeys() {
        _curve.importControlPoint(0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 6);
        _curve.importControlPoint(1.0F, 0.0F, 1.0F, 0.0F, 1.0F, 0.0F, 6);
    }

    const kvAnimationCurve* with(const BezierSegment& s) {
        auto& keys = _curve.getCPs();
        keys[0].setPoint({s.x[0], s.y[0]});
        keys[0].setOutTangent({s.x[1], s.y[1]});
        keys[1].setInTangent({s.x[2], s.y[2]});
        keys[1].setPoint({s.x[3], s.y[3]});
        return &_curve;
    }

  private:
    kvAnimationCurve _curve;
};

class EvaluationOracle : public ::testing::TestWithParam<std::size_t> {};

} // namespace

TEST_P(EvaluationOracle, agreesWithExactArithmetic) {
    const Family& family = families()[GetParam()];
    Random random(20240531 + GetParam());
    TwoKeys keys;
    int compared = 0, band = 0, degenerate = 0, loose = 0;
    for (int i = 0; i < 1000; ++i) {
        const BezierSegment segment = family.make(random);
        const float frame = static_cast<float>(between(random, segment.x[0], segment.x[3]));
        const double at = static_cast<double>(frame);
        if (!(segment.x[0] <= at && at < segment.x[3])) continue;
        const float value = kv::detail::evaluateCurve(keys.with(segment), frame);
        const BezierAnswer answer = kv::test::solveBezier(segment, frame);
        if (answer.kind == BezierCase::Degenerate) {
            ++degenerate;
            continue;
        }
        if (value == -1.0e23F) {
            ASSERT_TRUE(answer.mayHaveNoValue)
                << family.name << " #" << i << ": no value at frame " << frame;
            ++band;
            continue;
        }
        double nearest = HUGE_VAL;
        if (answer.kind == BezierCase::RepeatedRoot || answer.mayHaveNoValue) {
            ++band;
            for (double y : answer.values)
                nearest = std::min(nearest, std::fabs(static_cast<double>(value) - y));
        } else {
            ASSERT_GE(answer.expected, 0);
            nearest = std::fabs(static_cast<double>(value) -
                                answer.values[static_cast<std::size_t>(answer.expected)]);
            (answer.valueTolerance < 0.01 ? compared : loose) += 1;
        }
        ASSERT_LE(nearest, answer.valueTolerance)
            << family.name << " #" << i << " at frame " << frame << ": value " << value << ", case "
            << static_cast<int>(answer.kind);
    }
    RecordProperty("compared", compared);
    RecordProperty("loosely compared", loose);
    RecordProperty("repeated-root band or edge", band);
    RecordProperty("degenerate", degenerate);
    EXPECT_GE(compared, family.comparedAtLeast)
        << "band " << band << ", loose " << loose << ", degenerate " << degenerate;
}

INSTANTIATE_TEST_SUITE_P(Families, EvaluationOracle,
                         ::testing::Range<std::size_t>(0, families().size()),
                         [](const ::testing::TestParamInfo<std::size_t>& info) {
                             std::string name = families()[info.param].name;
                             for (char& c : name)
                                 if (c == ' ' || c == '-') c = '_';
                             return name;
                         });
