// The price of each layer of curve evaluation: look-up of the interval, one segment, a curve of 8
// to 8192 keys with frames in playback order and in random order.
#include "support/curves.h"

#include <kvAnimationManager2.h>

#include <benchmark/benchmark.h>

namespace {

constexpr std::size_t kFrames = 4096;

struct Work {
    kvAnimationCurve curve;
    std::vector<float> frames;

    explicit Work(const benchmark::State& state) {
        const std::size_t keys = static_cast<std::size_t>(state.range(0));
        kv::bench::fillCurve(curve, keys);
        frames = kv::bench::framesOver(keys, kFrames, state.range(1) != 0);
    }
};

void interval(benchmark::State& state) {
    Work work(state);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(work.curve.getBezierIntervalCPs(work.frames[i]));
        i = (i + 1) % kFrames;
    }
}

void curve(benchmark::State& state) {
    Work work(state);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            kvAnimationManager2::computeCurveValue(&work.curve, work.frames[i]));
        i = (i + 1) % kFrames;
    }
}

void keysAndOrder(benchmark::internal::Benchmark* b) {
    b->ArgNames({"keys", "random"});
    for (const int keys : {8, 64, 1024, 8192})
        for (const int random : {0, 1})
            b->Args({keys, random});
}

} // namespace

BENCHMARK(interval)->Apply(keysAndOrder);
BENCHMARK(curve)->Name("segment")->ArgNames({"keys", "random"})->Args({2, 1});
BENCHMARK(curve)->Apply(keysAndOrder);
