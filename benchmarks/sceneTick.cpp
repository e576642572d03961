// A tick of a whole scene, alone in its process, so that neither the keys of other measurements nor
// their memory are in the way.
//
//   kv_bench_scene_tick curves N       a clip of N / 10 blocks, each with ten curves of 100 keys
//                                      for the ten numbers of one transform: evaluated, written,
//                                      and every matrix read; nanoseconds a curve
//   kv_bench_scene_tick staggered N    the same with the keys of each curve at other frames than
//                                      those of the curves beside it
//   kv_bench_scene_tick edited N       the same while a key of the first curve is dragged: every
//                                      tick looks at every curve again
//   kv_bench_scene_tick allocations N  the allocations of 100 such ticks, all whole frames
//   kv_bench_scene_tick global N       global playback of ten curves: the tick with number N;
//                                      nanoseconds
#include "support/scene.h"
#include "support/ticks.h"
#include "tests/support/allocationCount.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationController2.h>
#include <kvAnimationManager2.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGTransform.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kKeys = 100;
constexpr double kFramesPerSecond = 60.0;

/// Transforms, and for each of them a block with a curve for each of its ten numbers.
struct Scene {
    osg::NodePtr root = kv::bench::makeTransform();
    std::vector<osg::TransformPtr> transforms;
    std::vector<kvAnimationBlock*> blocks;

    explicit Scene(std::size_t count, bool staggered = false) {
        std::size_t curves = 0;
        // Less than the time between two keys.
        const auto start = [&] {
            return staggered ? 0.07F * static_cast<float>(curves++ % 101) : 0.0F;
        };
        osg::addRefCP(root);
        for (std::size_t i = 0; i < count; ++i) {
            const osg::NodePtr node = kv::bench::makeTransform();
            root->addChild(node);
            transforms.push_back(osg::TransformPtr::dcast(node->getCore()));
            auto* const block = new kvAnimationBlock(node);
            for (const char* const attribute : kv::bench::kAttributes)
                block->addCurve(kv::bench::makeCurve(node, attribute, kKeys, start()));
            block->addCurve(kv::bench::makeCurve(node, "centerX", kKeys, start()));
            blocks.push_back(block);
        }
    }

    float readMatrices() const {
        float sum = 0.0F;
        for (const osg::TransformPtr& transform : transforms)
            sum += transform->getMatrix()[3][0];
        return sum;
    }
};

void preparePlayback() {
    kvAnimationManager2::setSimulationTimeCB(&kv::bench::clock);
    kvAnimationController2::setAnimationManager(&kvAnimationManager2::_the);
    kvAnimationController2::setFPS(static_cast<float>(kFramesPerSecond));
}

void tick() {
    kv::bench::now += 1.0 / kFramesPerSecond;
    kvAnimationController2::animationLoop();
}

void playClipOf(const Scene& scene) {
    auto* const clip = new kvAnimationClip;
    for (kvAnimationBlock* const block : scene.blocks)
        clip->addBlock(block);
    clip->setRepeat(true);
    preparePlayback();
    kvAnimationController2::play(clip, false, false);
}

/// Moves the tenth key of the first curve up or down.
void dragAKeyOf(const Scene& scene) {
    kvAnimationCurve* const curve = scene.blocks[0]->getBlockCurves()[0];
    static float value = 0.0F;
    value = 1.0F - value;
    if (kvControlPoint* const key = curve->getControlPoint(10))
        curve->moveCPTo(key, static_cast<float>(key->getPoint().x), value);
}

enum class Keys { Shared, Staggered, Edited };

double curves(std::size_t count, Keys keys) {
    const Scene scene(count / 10, keys == Keys::Staggered);
    playClipOf(scene);
    float sum = 0.0F;
    const double seconds = kv::bench::medianTick([&] {
        if (keys == Keys::Edited) dragAKeyOf(scene);
        tick();
        sum += scene.readMatrices();
    });
    // Uses the sum, or nothing would have to be read.
    return sum == sum ? seconds / static_cast<double>(count) * 1e9 : 0.0;
}

double allocations(std::size_t count) {
    const Scene scene(count / 10);
    playClipOf(scene);
    for (int i = 0; i < 20; ++i)
        tick();
    return static_cast<double>(kvtest::allocationsOf([] {
        for (int i = 0; i < 100; ++i)
            tick();
    }));
}

/// The median over the sixteen ticks around this one: one alone is too short to be measured.
double global(std::size_t number) {
    const Scene scene(1);
    kvAnimationManager2::_animationBlocks = scene.blocks;
    preparePlayback();
    kvAnimationController2::setMaxFrame(1.0e9F);
    kvAnimationController2::playGlobal(false, false, false);
    for (std::size_t i = 8; i < number; ++i)
        tick();
    std::vector<double> seconds;
    for (int i = 0; i < 16; ++i)
        seconds.push_back(kv::bench::secondsOf(&tick));
    return kv::bench::median(seconds) * 1e9;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3 || !osg::osgInit(0, nullptr)) return 2;
    const std::string what = argv[1];
    const auto count = static_cast<std::size_t>(std::strtoull(argv[2], nullptr, 10));
    double result = 0.0;
    if (what == "curves")
        result = curves(count, Keys::Shared);
    else if (what == "staggered")
        result = curves(count, Keys::Staggered);
    else if (what == "edited")
        result = curves(count, Keys::Edited);
    else if (what == "allocations")
        result = allocations(count);
    else if (what == "global")
        result = global(count);
    else
        return 2;
    std::printf("%.6g\n", result);
    std::fflush(stdout);
    std::_Exit(0); // the scene's destruction is not what is measured
}
