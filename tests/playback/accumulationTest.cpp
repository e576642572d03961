// Global playback keeps every record and writes as if all were written again. The scene is compared
// with one on which they really are.

#include "playback/countingCore.h"
#include "playback/playbackFixture.h"
#include "support/access/kvAnimationController2.h"

#include <kvNodeUtils.h>
#include <OSGCameraSetting.h>
#include <OSGTransformAttachment.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace {

using Controller = kvAnimationController2;
using Access = kvTestAccess<kvAnimationController2>;
using Field = kvAnimationUtils2::AnimationField;
using testing::IsEmpty;
using testing::SizeIs;

bool sameRecord(const Field& a, const Field& b) {
    return a.node == b.node && a.fcId == b.fcId && a.coreTypeId == b.coreTypeId &&
           a.fieldName == b.fieldName && a.globalFieldName == b.globalFieldName &&
           (a.value == b.value || (a.value != a.value && b.value != b.value)) &&
           a.valuePosition == b.valuePosition && a.componentCount == b.componentCount &&
           a.dirty == b.dirty && a.metaInfo == b.metaInfo;
}

::testing::AssertionResult sameRecords(const std::vector<Field>& a, const std::vector<Field>& b) {
    if (a.size() != b.size()) {
        return ::testing::AssertionFailure() << a.size() << " records against " << b.size();
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!sameRecord(a[i], b[i])) {
            return ::testing::AssertionFailure() << "record " << i << " differs";
        }
    }
    return ::testing::AssertionSuccess();
}

class Accumulation : public kv::test::PlaybackFixture {
  public:
    Accumulation() {
        hostCalls = 0;
        kvAnimationManager2::setFromAtUpCB(
            [](int, const osg::Pnt3f&, const osg::Pnt3f&, const osg::Vec3f&) { ++hostCalls; });
        Controller::setMaxFrame(1.0e6F);
    }
    ~Accumulation() override { kvAnimationManager2::setFromAtUpCB(nullptr); }

  protected:
    kvAnimationBlock* sceneBlock(const osg::NodePtr& mover, float first, float last) {
        kvAnimationBlock* const block = makeBlock(mover, first, last);
        kvAnimationManager2::_animationBlocks.push_back(block);
        return block;
    }

    static void bind(kvAnimationCurve* curve, const osg::FieldContainerPtr& container,
                     const std::string& name, const std::string& field, std::uint16_t position) {
        Field binding = curve->getAnimationField();
        binding.fcId = osg::getContainerId(container);
        binding.fieldName = name;
        binding.globalFieldName = field;
        binding.valuePosition = position;
        curve->setAnimationField(binding);
    }

    osg::NodePtr makeCamera() {
        const osg::NodePtr camera = osg::Node::create();
        hold(camera);
        camera->setCore(osg::CameraSetting::create());
        return camera;
    }

    kvAnimationBlock* cameraBlock(const osg::NodePtr& camera, float first, float last,
                                  const char* name = "fromX", const char* field = "from") {
        kvAnimationBlock* const block = sceneBlock(camera, first, last);
        bind(block->getBlockCurves()[0], camera->getCore(), name, field, 0);
        return block;
    }

    static void tick(double frames) { tickAt(frames / 25.0); }

    static int hostCalls;
};

int Accumulation::hostCalls = 0;

TEST_F(Accumulation, everyTickAddsItsRecordsToTheValues) {
    sceneBlock(node, 0.0F, 100.0F);
    Controller::playGlobal(false, false, false);
    tick(1);
    tick(2);
    tick(3);
    const std::vector<Field> values = Controller::getValues();
    ASSERT_THAT(values, SizeIs(3));
    EXPECT_NEAR(values[0].value, 1.0F, 1e-4);
    EXPECT_NEAR(values[1].value, 2.0F, 1e-4);
    EXPECT_NEAR(values[2].value, 3.0F, 1e-4);
    EXPECT_EQ(values[0].fieldName, "translationX");
}

TEST_F(Accumulation, startsOnTopOfWhatWasPlayedBefore) {
    const osg::NodePtr other = makeMover();
    Controller::reset(makeBlock(other, 5.0F, 9.0F));
    sceneBlock(node, 0.0F, 100.0F);
    Controller::playGlobal(false, false, false);
    tick(1);
    EXPECT_THAT(Controller::getValues(), SizeIs(2));
    // The older record is written again: what was changed meanwhile is changed back.
    kvNodeUtils::setTransformNodeTranslation(other, 77.0F, 0.0F, 0.0F);
    tick(2);
    EXPECT_EQ(shown(other), 5.0F);
    EXPECT_THAT(Controller::getValues(), SizeIs(3));
}

TEST_F(Accumulation, endsWithTheNextEvaluationOfAnotherKind) {
    sceneBlock(node, 0.0F, 100.0F);
    kvAnimationBlock* const block = makeBlock(node, 0.0F, 100.0F);
    const auto accumulate = [&] {
        Controller::playGlobal(false, false, false);
        tick(1);
        tick(2);
    };
    accumulate();
    Controller::reset(block);
    EXPECT_THAT(Controller::getValues(), SizeIs(1));
    accumulate();
    EXPECT_THAT(Controller::getValues(), SizeIs(3));
    Controller::play(block, false, false);
    tick(2);
    EXPECT_THAT(Controller::getValues(), SizeIs(1));
    accumulate();
    Controller::play(false);
    tick(3);
    EXPECT_THAT(Controller::getValues(), IsEmpty()) << "no curve is selected";
    accumulate();
    Controller::stop();
    EXPECT_THAT(Controller::getValues(), SizeIs(2)) << "stopping keeps the values";
    Controller::gotoStart(block);
    EXPECT_THAT(Controller::getValues(), SizeIs(2)) << "so does a block's own jump";
}

TEST_F(Accumulation, recordsOfABlockThatHasEndedStayInForce) {
    const osg::NodePtr other = makeMover();
    sceneBlock(node, 0.0F, 100.0F);
    kvAnimationBlock* const shortBlock = sceneBlock(other, 0.0F, 100.0F);
    Controller::playGlobal(false, false, false);
    tick(10);
    shortBlock->setActive(false); // contributes nothing from here on
    kvNodeUtils::setTransformNodeTranslation(other, 77.0F, 0.0F, 0.0F);
    tick(11);
    EXPECT_NEAR(shown(other), 10.0F, 1e-4);
    EXPECT_NEAR(shown(node), 11.0F, 1e-4);
}

TEST_F(Accumulation, ofTwoBindingsOfOneNumberTheOneWrittenLastWins) {
    // Different records, the same number in the scene.
    kvAnimationBlock* const a = sceneBlock(node, 0.0F, 100.0F);
    kvAnimationBlock* const b = sceneBlock(node, 0.0F, 100.0F);
    bind(b->getBlockCurves()[0], node->getCore(), "alias", "translation", 0);
    b->getBlockCurves()[0]->stretchRight(200.0F); // half as steep: 100 over 200 frames
    b->updateBlockBounds();
    Controller::playGlobal(false, false, false);
    tick(10);
    EXPECT_NEAR(shown(node), 5.0F, 1e-3);
    b->setActive(false);
    tick(20);
    EXPECT_NEAR(shown(node), 20.0F, 1e-3) << "b is older now";
    b->setActive(true);
    a->setActive(false);
    tick(30);
    EXPECT_NEAR(shown(node), 15.0F, 1e-3);
}

TEST_F(Accumulation, numberOfWritesDoesNotGrowWithTheTicks) {
    cameraBlock(makeCamera(), 0.0F, 1.0e5F);
    Controller::playGlobal(false, false, false);
    for (int i = 1; i <= 2000; ++i) {
        hostCalls = 0;
        tick(i);
        ASSERT_EQ(hostCalls, 1) << "tick " << i;
    }
    EXPECT_THAT(Controller::getValues(), SizeIs(2000));
}

TEST_F(Accumulation, camerasGetEveryRecordOfTheTick) {
    const osg::NodePtr camera = makeCamera();
    cameraBlock(camera, 0.0F, 100.0F);
    cameraBlock(camera, 0.0F, 100.0F); // the same binding once more
    kvAnimationBlock* const third = cameraBlock(camera, 0.0F, 100.0F, "atX", "at");
    Controller::playGlobal(false, false, false);
    tick(1);
    EXPECT_EQ(hostCalls, 3);
    hostCalls = 0;
    third->setActive(false);
    tick(2);
    EXPECT_EQ(hostCalls, 3) << "two current records, and the last older one of at";
}

TEST_F(Accumulation, otherContainersGetOneEditPerBindingAndTick) {
    const osg::NodePtr counter = osg::Node::create();
    hold(counter);
    const osg::CountingCorePtr core = osg::CountingCore::create();
    counter->setCore(core);
    for (int i = 0; i < 3; ++i) {
        bind(sceneBlock(counter, 0.0F, 100.0F)->getBlockCurves()[0], core, "amount", "amount", 0);
    }
    Controller::playGlobal(false, false, false);
    for (int i = 1; i <= 10; ++i) {
        tick(i);
        EXPECT_EQ(core->edits, i);
        EXPECT_NEAR(core->getAmount(), static_cast<float>(i), 1e-4);
    }
    EXPECT_THAT(Controller::getValues(), SizeIs(30));
    Controller::play(kvAnimationManager2::_animationBlocks[0], false, false);
    tick(12);
    EXPECT_EQ(core->edits, 11) << "other playback writes every record, here one";
}

TEST_F(Accumulation, aHostThatCallsBackIntoTheTransportReadsNoFreedMemory) {
    static kvAnimationBlock* block;
    block = makeBlock(node, 3.0F, 9.0F);
    const osg::NodePtr camera = makeCamera();
    cameraBlock(camera, 0.0F, 100.0F);
    cameraBlock(camera, 0.0F, 100.0F, "atX", "at");
    kvAnimationManager2::setFromAtUpCB([](int, const osg::Pnt3f&, const osg::Pnt3f&,
                                          const osg::Vec3f&) { Controller::reset(block); });
    Controller::playGlobal(false, false, false);
    tick(1);
    Controller::playGlobal(false, false, false);
    tick(2);
    EXPECT_EQ(shown(node), 3.0F);

    Access::playingBlock() = kvAnimationManager2::_animationBlocks[0];
    Controller::gotoStart(Controller::PT_BLOCK);
    EXPECT_EQ(shown(node), 3.0F);
}

// --- against literal re-application

// Everything that a write may change on a node.
std::array<float, 11> lookOf(const osg::NodePtr& mover) {
    std::array<float, 11> look{};
    const auto core = osg::ComponentTransformPtr::dcast(mover->getCore());
    for (unsigned i = 0; i < 3; ++i) {
        look[i] = core->getTranslation()[i];
        look[3 + i] = core->getScale()[i];
    }
    for (unsigned i = 0; i < 4; ++i)
        look[6 + i] = core->getRotation()[i];
    look[10] = mover->getActive() ? 1.0F : 0.0F;
    return look;
}

class LiteralReapplication : public Accumulation, public testing::WithParamInterface<unsigned> {
  protected:
    struct Target {
        const char* name;
        const char* field;
        std::uint16_t position;
        bool onNode;
    };

    // Blocks with random curves on few numbers of few nodes, so that bindings meet and end.
    std::vector<osg::NodePtr> buildScene(std::mt19937& random) {
        static const Target kTargets[] = {
            {"translationX", "translation", 0, false},
            {"translationX", "translation", 0, false},
            {"alias", "translation", 0, false},
            {"translationY", "translation", 1, false},
            {"scaleX", "scale", 0, false},
            {"rotationX", "rotation", 0, true},
            {"rotationY", "rotation", 0, true},
            {"visible", "visible", 0, true},
            {"nothing", "nothing", 0, false},
            {"translationQ", "translation", 9, false},
        };
        std::vector<osg::NodePtr> nodes = {makeMover(), makeMover()};
        std::uniform_real_distribution<float> frame(0.0F, 60.0F);
        std::uniform_real_distribution<float> value(-5.0F, 5.0F);
        for (int b = 0; b < 8; ++b) {
            const osg::NodePtr mover = nodes[random() % nodes.size()];
            float first = frame(random);
            kvAnimationBlock* const block = sceneBlock(mover, first, first + frame(random) + 1.0F);
            for (int c = 0; c < 3; ++c) {
                first = frame(random);
                kvAnimationCurve* const curve = makeLine(
                    mover, first, value(random), first + 1.0F + frame(random), value(random));
                const Target& target = kTargets[random() % std::size(kTargets)];
                if (target.onNode) {
                    bind(curve, mover, target.name, target.field, target.position);
                } else {
                    bind(curve, mover->getCore(), target.name, target.field, target.position);
                }
                block->addCurve(curve);
            }
            block->setActive(random() % 8 != 0);
        }
        return nodes;
    }

    // What someone else does to the scene before tick `t`: older records must set it right again.
    static void disturb(const std::vector<osg::NodePtr>& nodes, int t) {
        std::mt19937 random(static_cast<unsigned>(t));
        std::uniform_real_distribution<float> value(-90.0F, 90.0F);
        for (const osg::NodePtr& mover : nodes) {
            const float x = value(random);
            const float y = value(random);
            kvNodeUtils::setTransformNodeTranslation(mover, x, y, x);
            kvNodeUtils::setTransformNodeRotation(mover, y, x, y, -1);
            kvNodeUtils::setTransformNodeScale(mover, x, y, y);
            mover->setActive(x > 0.0F);
        }
    }

    static void clean(const osg::NodePtr& mover) {
        kvNodeUtils::setTransformNodeRotation(mover, 0.0F, 0.0F, 0.0F, -1);
        kvNodeUtils::setTransformNodeScale(mover, 1.0F, 1.0F, 1.0F);
        kvNodeUtils::setTransformNodeTranslation(mover, 0.0F, 0.0F, 0.0F);
        mover->setActive(true);
    }
};

TEST_P(LiteralReapplication, leavesTheSameSceneAndTheSameValues) {
    std::mt19937 random(GetParam());
    const std::vector<osg::NodePtr> nodes = buildScene(random);
    for (const osg::NodePtr& mover : nodes)
        clean(mover);

    constexpr int kTicks = 60;
    Controller::playGlobal(false, false, false);
    std::vector<std::vector<std::array<float, 11>>> looks;
    std::vector<std::vector<Field>> values;
    for (int t = 1; t <= kTicks; ++t) {
        disturb(nodes, t);
        tick(t);
        looks.emplace_back();
        for (const osg::NodePtr& mover : nodes)
            looks.back().push_back(lookOf(mover));
        values.push_back(Controller::getValues());
    }

    for (const osg::NodePtr& mover : nodes)
        clean(mover);
    std::vector<Field> all;
    for (int t = 1; t <= kTicks; ++t) {
        const float frame = static_cast<float>(25.0 * (t / 25.0));
        for (kvAnimationBlock* block : kvAnimationManager2::_animationBlocks) {
            const std::vector<Field> fields =
                kvAnimationManager2::_the.getUpdatedAnimationFields(block, frame, false, false);
            all.insert(all.end(), fields.begin(), fields.end());
        }
        disturb(nodes, t);
        Controller::execute(all);
        const auto index = static_cast<std::size_t>(t - 1);
        for (std::size_t n = 0; n < nodes.size(); ++n) {
            ASSERT_EQ(looks[index][n], lookOf(nodes[n])) << "tick " << t << ", node " << n;
        }
        ASSERT_TRUE(sameRecords(values[index], all)) << "tick " << t;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, LiteralReapplication, testing::Range(1U, 13U));

} // namespace
