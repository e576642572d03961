// The peer for short curves: Qt's easing curve with a Bezier spline of the same segments. It
// searches for the parameter approximately; the largest difference from the exact value is printed,
// too.
#include "support/curves.h"

#include <kvAnimationManager2.h>

#include <QEasingCurve>
#include <QPointF>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr std::size_t kKeys = 8; // it aborts on longer ones
constexpr std::size_t kFrames = 4096;
constexpr double kEnd = kv::bench::kFramesPerKey * static_cast<double>(kKeys - 1);

/// An easing curve runs from (0, 0) to (1, 1); values are shifted and scaled so that the first key
/// is 0 and the last 1.
struct Easing {
    QEasingCurve curve{QEasingCurve::BezierSpline};
    double first = static_cast<double>(kv::bench::keyValue(0));
    double height = static_cast<double>(kv::bench::keyValue(kKeys - 1)) - first;

    Easing() {
        const auto point = [&](double frame, float value) {
            return QPointF(frame / kEnd, (static_cast<double>(value) - first) / height);
        };
        for (std::size_t i = 0; i + 1 < kKeys; ++i) {
            const double x = kv::bench::kFramesPerKey * static_cast<double>(i);
            curve.addCubicBezierSegment(point(x + 3.0, kv::bench::keyValue(i)),
                                        point(x + 6.0, kv::bench::keyValue(i + 1)),
                                        point(x + 10.0, kv::bench::keyValue(i + 1)));
        }
    }

    double valueAt(double frame) const {
        return curve.valueForProgress(frame / kEnd) * height + first;
    }
};

void easingCurve(benchmark::State& state) {
    const Easing easing;
    const std::vector<float> frames = kv::bench::framesOver(kKeys, kFrames, state.range(1) != 0);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(easing.valueAt(static_cast<double>(frames[i])));
        i = (i + 1) % kFrames;
    }
}

void printError() {
    const Easing easing;
    kvAnimationCurve curve;
    kv::bench::fillCurve(curve, kKeys);
    double worst = 0.0;
    for (const float frame : kv::bench::framesOver(kKeys, kFrames, false)) {
        const double ours =
            static_cast<double>(kvAnimationManager2::computeCurveValue(&curve, frame));
        worst = std::max(worst, std::fabs(ours - easing.valueAt(static_cast<double>(frame))));
    }
    std::fprintf(stderr, "largest difference of Qt's easing curve: %.3g of a height of 10\n",
                 worst);
}

} // namespace

BENCHMARK(easingCurve)->ArgNames({"keys", "random"})->Args({8, 0})->Args({8, 1});

int main(int argc, char** argv) {
    printError();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
