// A tick of playback through the controller: a block of 10, 100 and 1000 curves, evaluated and
// written into the transforms of its nodes.
#include "support/scene.h"

#include <kvAnimationBlock.h>
#include <kvAnimationController2.h>
#include <kvAnimationManager2.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <benchmark/benchmark.h>

namespace {

class Stage {
  public:
    explicit Stage(std::size_t curves) : _root(kv::bench::makeTransform()), _block(_root) {
        osg::addRefCP(_root);
        kv::bench::CurveMaker maker(_root);
        for (std::size_t i = 0; i < curves; ++i)
            _block.addCurve(maker.make(100));
        _block.setRepeat(true);
    }
    ~Stage() { osg::subRefCP(_root); }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    kvAnimationBlock& block() { return _block; }

  private:
    osg::NodePtr _root;
    kvAnimationBlock _block;
};

void tick(benchmark::State& state) {
    osg::osgInit(0, nullptr);
    Stage stage(static_cast<std::size_t>(state.range(0)));
    kvAnimationManager2::setSimulationTimeCB(&kv::bench::clock);
    kvAnimationController2::setAnimationManager(&kvAnimationManager2::_the);
    kvAnimationController2::setFPS(60.0F);
    kvAnimationController2::play(&stage.block(), false, false);
    for (auto _ : state) {
        kv::bench::now += 1.0 / 60.0;
        kvAnimationController2::animationLoop();
    }
    kvAnimationController2::stop();
}

void evaluateOnly(benchmark::State& state) {
    osg::osgInit(0, nullptr);
    Stage stage(static_cast<std::size_t>(state.range(0)));
    float frame = 0.0F;
    for (auto _ : state) {
        frame = frame < 980.0F ? frame + 1.0F : 0.0F;
        benchmark::DoNotOptimize(kvAnimationManager2::_the.getUpdatedAnimationFields(
            &stage.block(), frame, false, false));
    }
}

} // namespace

BENCHMARK(evaluateOnly)->ArgName("curves")->Arg(10)->Arg(100)->Arg(1000);
BENCHMARK(tick)->ArgName("curves")->Arg(10)->Arg(100)->Arg(1000);
