// The peer for long curves and for whole ticks: OpenSceneGraph's cubic Bezier sampler. It does not
// solve for time: the parameter is the share of the interval that has passed.
#include <osgAnimation/Sampler>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <random>
#include <vector>

namespace {

constexpr std::size_t kFrames = 4096;
constexpr double kFramesPerKey = 10.0;

float keyValue(std::size_t i) {
    return static_cast<float>((i * 7919U) % 101U) * 0.1F;
}

void sampler(benchmark::State& state) {
    const std::size_t keys = static_cast<std::size_t>(state.range(0));
    osg::ref_ptr<osgAnimation::FloatCubicBezierSampler> sampler =
        new osgAnimation::FloatCubicBezierSampler;
    osgAnimation::FloatCubicBezierKeyframeContainer* container =
        sampler->getOrCreateKeyframeContainer();
    for (std::size_t i = 0; i < keys; ++i) {
        const float y = keyValue(i);
        container->push_back(osgAnimation::FloatCubicBezierKeyframe(
            kFramesPerKey * static_cast<double>(i), osgAnimation::FloatCubicBezier(y, y, y)));
    }
    const double end = kFramesPerKey * static_cast<double>(keys - 1);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> anywhere(0.0, end);
    std::vector<double> frames(kFrames);
    for (std::size_t i = 0; i < kFrames; ++i)
        frames[i] = state.range(1) != 0
                        ? anywhere(random)
                        : end * static_cast<double>(i) / static_cast<double>(kFrames);
    std::size_t i = 0;
    float value = 0.0F;
    for (auto _ : state) {
        sampler->getValueAt(frames[i], value);
        benchmark::DoNotOptimize(value);
        i = (i + 1) % kFrames;
    }
}

} // namespace

BENCHMARK(sampler)
    ->ArgNames({"keys", "random"})
    ->Args({8, 0})
    ->Args({8, 1})
    ->Args({64, 0})
    ->Args({64, 1})
    ->Args({1024, 0})
    ->Args({1024, 1})
    ->Args({8192, 0})
    ->Args({8192, 1});
