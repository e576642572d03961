// A tick of a clip: 10, 100 and 1000 blocks of ten curves each, in one clip or spread evenly over
// clips nested two and four deep; once evaluated only, once written into the scene as well.
#include "support/scene.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationController2.h>
#include <kvAnimationManager2.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <benchmark/benchmark.h>

#include <map>
#include <utility>

namespace {

constexpr std::size_t kCurvesOfABlock = 10;
constexpr std::size_t kKeys = 8; // frames 0 to 70

class ClipStage {
  public:
    ClipStage(std::size_t blocks, std::size_t depth) : _root(kv::bench::makeTransform()) {
        osg::addRefCP(_root);
        kv::bench::CurveMaker curves(_root);
        kvAnimationClip* level = &_clip;
        for (std::size_t d = 0; d < depth; ++d) {
            if (d > 0) level = level->newSubclip();
            const std::size_t share = blocks * (d + 1) / depth - blocks * d / depth;
            for (std::size_t b = 0; b < share; ++b) {
                auto* const block = new kvAnimationBlock(_root);
                for (std::size_t c = 0; c < kCurvesOfABlock; ++c)
                    block->addCurve(curves.make(kKeys));
                level->addBlock(block);
            }
        }
        _clip.setRepeat(true);
    }
    ~ClipStage() { osg::subRefCP(_root); }
    ClipStage(const ClipStage&) = delete;
    ClipStage& operator=(const ClipStage&) = delete;

    kvAnimationClip& clip() { return _clip; }

  private:
    osg::NodePtr _root;
    kvAnimationClip _clip;
};

// A benchmark function runs several times; ids are never given back, so each clip is built once and
// kept to the end of the process.
kvAnimationClip& clipFor(const benchmark::State& state) {
    osg::osgInit(0, nullptr);
    static auto& stages = *new std::map<std::pair<std::int64_t, std::int64_t>, ClipStage*>;
    ClipStage*& stage = stages[{state.range(0), state.range(1)}];
    if (stage == nullptr)
        stage = new ClipStage(static_cast<std::size_t>(state.range(0)),
                              static_cast<std::size_t>(state.range(1)));
    return stage->clip();
}

void clipTick(benchmark::State& state) {
    kvAnimationClip& clip = clipFor(state);
    kvAnimationManager2::setSimulationTimeCB(&kv::bench::clock);
    kvAnimationController2::setAnimationManager(&kvAnimationManager2::_the);
    kvAnimationController2::setFPS(60.0F);
    kvAnimationController2::play(&clip, false, false);
    for (auto _ : state) {
        kv::bench::now += 1.0 / 60.0;
        kvAnimationController2::animationLoop();
    }
    kvAnimationController2::stop();
}

void clipEvaluateOnly(benchmark::State& state) {
    kvAnimationClip& clip = clipFor(state);
    float frame = 0.0F;
    for (auto _ : state) {
        frame = frame < 70.0F ? frame + 1.0F : 0.0F;
        benchmark::DoNotOptimize(
            kvAnimationManager2::_the.getUpdatedAnimationFields(&clip, frame, false, false));
    }
}

} // namespace

BENCHMARK(clipEvaluateOnly)
    ->ArgNames({"blocks", "depth"})
    ->ArgsProduct({{10, 100, 1000}, {1, 2, 4}});
BENCHMARK(clipTick)->ArgNames({"blocks", "depth"})->ArgsProduct({{10, 100, 1000}, {1, 2, 4}});
