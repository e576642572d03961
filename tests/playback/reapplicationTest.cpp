// Global playback writes only the newest record of each binding. Two scenes alike, one written by
// that rule and one literally, with all records again on every tick, must not be told apart; and
// where a number is made of several, so that they can be, what happens is what is documented.

#include "playback/accumulatedValues.h"
#include "playback/countingCore.h"
#include "playback/playbackFixture.h"

#include <OpenSG/OSGSwitch.h>
#include <OpenSG/OSGTransform.h>

#include <kvNodeUtils.h>
#include <OSGCameraSetting.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using Field = kvAnimationUtils2::AnimationField;
using kv::detail::AccumulatedValues;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// The host's camera, of whichever scene is written at the time.
struct HostCamera {
    osg::Pnt3f from;
    osg::Pnt3f at;
    osg::Vec3f up;
};
HostCamera* theHostCamera = nullptr;

// One of each thing that records write to.
struct Scene {
    osg::NodePtr mover, plain, chooser, camera, viewpoint;
    HostCamera host;
    std::vector<Field> played; // every record so far

    osg::SwitchPtr choice() const { return osg::SwitchPtr::dcast(chooser->getCore()); }
    osg::CameraSettingPtr setting() const {
        return osg::CameraSettingPtr::dcast(camera->getCore());
    }
};

enum Where { MoverCore, MoverNode, PlainCore, PlainNode, Choice, Camera, Viewpoint };

osg::FieldContainerPtr containerOf(const Scene& scene, Where where) {
    switch (where) {
    case MoverCore:
        return scene.mover->getCore();
    case MoverNode:
        return scene.mover;
    case PlainCore:
        return scene.plain->getCore();
    case PlainNode:
        return scene.plain;
    case Choice:
        return scene.chooser->getCore();
    case Camera:
        return scene.camera->getCore();
    case Viewpoint:
        break;
    }
    return scene.viewpoint->getCore();
}

struct Target {
    Where where;
    const char* name;
    const char* field;
    std::uint16_t position;
};

Field recordOf(const Scene& scene, const Target& target, float value) {
    Field record;
    record.fcId = osg::getContainerId(containerOf(scene, target.where));
    record.fieldName = target.name;
    record.globalFieldName = target.field;
    record.valuePosition = target.position;
    record.value = value;
    return record;
}

// Every number that a record may reach.
std::vector<float> lookOf(const Scene& scene) {
    std::vector<float> look;
    const auto add = [&](const auto& vector) {
        for (osg::UInt32 i = 0; i < 3; ++i)
            look.push_back(vector[i]);
    };
    const auto core = osg::ComponentTransformPtr::dcast(scene.mover->getCore());
    add(core->getTranslation());
    add(core->getScale());
    for (osg::UInt32 i = 0; i < 4; ++i)
        look.push_back(core->getRotation()[i]);
    look.push_back(scene.mover->getActive() ? 1.0F : 0.0F);
    const osg::Matrix matrix = osg::TransformPtr::dcast(scene.plain->getCore())->getMatrix();
    for (osg::UInt32 i = 0; i < 16; ++i)
        look.push_back(matrix[i / 4][i % 4]);
    look.push_back(static_cast<float>(scene.choice()->getChoice()));
    for (const osg::NodePtr& node : {scene.camera, scene.viewpoint}) {
        const auto camera = osg::CameraSettingPtr::dcast(node->getCore());
        add(camera->getFrom());
        add(camera->getAt());
        add(camera->getUp());
        look.push_back(camera->getFieldOfView());
        look.push_back(camera->getRoll());
        look.push_back(camera->getFStop());
        look.push_back(camera->getFocalLength());
        look.push_back(camera->getDistance());
        look.push_back(camera->getHeight());
        look.push_back(camera->getTurnTableAngle());
    }
    add(scene.host.from);
    add(scene.host.at);
    add(scene.host.up);
    return look;
}

// Equal to the bit, but for the many forms of not-a-number.
bool sameNumber(float a, float b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

class Reapplication : public kv::test::PlaybackFixture {
  public:
    Reapplication() {
        kvAnimationManager2::setGetFromAtUpCB(
            [](int, osg::Pnt3f& from, osg::Pnt3f& at, osg::Vec3f& up) {
                from = theHostCamera->from;
                at = theHostCamera->at;
                up = theHostCamera->up;
            });
        kvAnimationManager2::setFromAtUpCB(
            [](int, const osg::Pnt3f& from, const osg::Pnt3f& at, const osg::Vec3f& up) {
                *theHostCamera = {from, at, up};
            });
    }
    ~Reapplication() override {
        kvAnimationManager2::setGetFromAtUpCB(nullptr);
        kvAnimationManager2::setFromAtUpCB(nullptr);
    }

  protected:
    Scene makeScene() {
        Scene scene;
        scene.mover = makeMover();
        scene.plain = makeNode(osg::Transform::create());
        scene.chooser = makeNode(osg::Switch::create());
        scene.camera = makeNode(osg::CameraSetting::create());
        scene.viewpoint = makeNode(osg::CameraSetting::create());
        osg::CameraSettingPtr::dcast(scene.viewpoint->getCore())->setIsViewpoint(true);
        return scene;
    }

    osg::NodePtr makeNode(const osg::NodeCorePtr& core) {
        const osg::NodePtr made = osg::Node::create();
        hold(made);
        made->setCore(core);
        return made;
    }

    // One tick of the accumulation.
    void tick(const std::vector<Field>& records) {
        theHostCamera = &quick.host;
        accumulated.add(records);
        accumulated.write();
    }

    // The same on the other scene, where everything is written again.
    static void tickLiterally(Scene& scene, const std::vector<Field>& records) {
        theHostCamera = &scene.host;
        scene.played.insert(scene.played.end(), records.begin(), records.end());
        for (const Field& record : scene.played)
            kvAnimationUtils2::setRealFieldValue(record);
    }

    // Both scenes through the same 40 ticks of up to six random records; `tolerance` 0 is the bit.
    void play(const std::vector<Target>& targets, unsigned seed, float tolerance) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> value(-20.0F, 20.0F);
        Scene literal = makeScene();
        for (int t = 0; t < 40; ++t) {
            std::vector<Field> records;
            std::vector<Field> literalRecords;
            for (auto n = random() % 7; n > 0; --n) {
                const Target& target = targets[random() % targets.size()];
                const float v = withNaNs && random() % 4 == 0 ? kNaN : value(random);
                records.push_back(recordOf(quick, target, v));
                literalRecords.push_back(recordOf(literal, target, v));
            }
            if (disturbs) {
                const float v = value(random);
                disturb(quick, v);
                disturb(literal, v);
            }
            tick(records);
            tickLiterally(literal, literalRecords);
            const std::vector<float> is = lookOf(quick);
            const std::vector<float> should = lookOf(literal);
            for (std::size_t i = 0; i < is.size(); ++i) {
                if (tolerance == 0.0F) {
                    ASSERT_TRUE(sameNumber(is[i], should[i]))
                        << "number " << i << " at tick " << t << ": " << is[i] << " for "
                        << should[i];
                } else {
                    ASSERT_NEAR(is[i], should[i], tolerance) << "number " << i << " at tick " << t;
                }
            }
        }
    }

    // Somebody else writes between two ticks.
    static void disturb(const Scene& scene, float v) {
        kvNodeUtils::setTransformNodeTranslation(scene.mover, v, -v, v + 1.0F);
        kvNodeUtils::setTransformNodeScale(scene.mover, v, 1.0F, v);
        scene.mover->setActive(v > 0.0F);
        scene.choice()->setChoice(static_cast<osg::Int32>(v));
        const osg::CameraSettingPtr camera = scene.setting();
        osg::beginEditCP(camera);
        camera->setFrom(osg::Pnt3f(v, 30.0F, v));
        camera->setRoll(v);
        osg::endEditCP(camera);
    }

    Scene quick = makeScene();
    AccumulatedValues accumulated;
    bool withNaNs = false;
    bool disturbs = false;
};

const Target kChoice = {Choice, "choice", "choice", 0};

TEST_F(Reapplication, aNumberStaysInForceWhenNotANumberFollowsOnAnInteger) {
    tick({recordOf(quick, kChoice, 5.0F), recordOf(quick, kChoice, kNaN)});
    EXPECT_EQ(quick.choice()->getChoice(), 5);
    quick.choice()->setChoice(9);
    tick({recordOf(quick, kChoice, kNaN)});
    EXPECT_EQ(quick.choice()->getChoice(), 5);
    tick({recordOf(quick, kChoice, 6.0F)});
    tick({});
    EXPECT_EQ(quick.choice()->getChoice(), 6);
}

TEST_F(Reapplication, bindingsThatDifferInTheirFieldAloneAreTwo) {
    tick({recordOf(quick, {MoverCore, "alias", "translation", 0}, 5.0F)});
    tick({recordOf(quick, {MoverCore, "alias", "scale", 0}, 7.0F)});
    const auto core = osg::ComponentTransformPtr::dcast(quick.mover->getCore());
    EXPECT_EQ(core->getTranslation()[0], 5.0F);
    EXPECT_EQ(core->getScale()[0], 7.0F);
    const std::vector<Field> all = accumulated.all();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].globalFieldName, "translation");
    EXPECT_EQ(all[1].globalFieldName, "scale");
}

TEST_F(Reapplication, notANumberCostsASecondWriteOnlyWhileItIsTheNewest) {
    const osg::CountingCorePtr core = osg::CountingCore::create();
    makeNode(core);
    Field record;
    record.fcId = osg::getContainerId(core);
    record.fieldName = record.globalFieldName = "amount";
    const auto editsOf = [&](std::vector<float> values) {
        std::vector<Field> records;
        for (const float value : values) {
            records.push_back(record);
            records.back().value = value;
        }
        const int before = core->edits;
        tick(records);
        return core->edits - before;
    };
    EXPECT_EQ(editsOf({1.0F}), 1);
    EXPECT_EQ(editsOf({kNaN}), 2);
    EXPECT_TRUE(std::isnan(core->getAmount()));
    EXPECT_EQ(editsOf({}), 2);
    EXPECT_TRUE(std::isnan(core->getAmount()));
    EXPECT_EQ(editsOf({2.0F}), 1);
    EXPECT_EQ(core->getAmount(), 2.0F);
    EXPECT_EQ(editsOf({kNaN, 3.0F, kNaN, 4.0F}), 1);
    EXPECT_EQ(core->getAmount(), 4.0F);
    EXPECT_EQ(editsOf({}), 1);
    const std::vector<Field> all = accumulated.all();
    ASSERT_EQ(all.size(), 7U);
    EXPECT_TRUE(std::isnan(all[1].value));
    EXPECT_EQ(all[4].value, 3.0F);
}

class ReapplicationOf : public Reapplication, public testing::WithParamInterface<unsigned> {};

// Several names for one number, numbers that others disturb, and not-a-numbers.
TEST_P(ReapplicationOf, numbersWithSeveralBindingsLeavesTheSameScene) {
    withNaNs = disturbs = true;
    play({{MoverCore, "translationX", "translation", 0},
          {MoverCore, "alias", "translation", 0},
          {MoverCore, "translationZ", "translation", 2},
          {MoverCore, "scaleX", "scale", 0},
          {MoverNode, "visible", "visible", 0},
          {MoverNode, "visible", "travMask", 0},
          {MoverNode, "mask", "travMask", 0},
          kChoice,
          {Choice, "alias", "choice", 0},
          {PlainCore, "m", "matrix", 3}},
         GetParam(), 0.0F);
}

TEST_P(ReapplicationOf, anglesLeavesTheSameScene) {
    play({{MoverNode, "rotationX", "rotation", 0},
          {MoverNode, "rotationY", "rotation", 1},
          {MoverNode, "rotationZ", "rotation", 2},
          {MoverCore, "translationX", "translation", 0}},
         GetParam(), 0.0F);
}

TEST_P(ReapplicationOf, manyRecordsOnACameraLeavesTheSameSceneAndHost) {
    disturbs = true;
    play({{Camera, "fromX", "from", 0},
          {Camera, "alias", "from", 0},
          {Camera, "fromY", "from", 1},
          {Camera, "atX", "at", 0},
          {Camera, "atZ", "at", 2},
          {Camera, "upZ", "up", 2},
          {Camera, "fieldOfView", "fieldOfView", 0},
          {Camera, "roll", "roll", 0},
          {Camera, "fStop", "fStop", 0},
          {Camera, "focalLength", "focalLength", 0}},
         GetParam(), 0.0F);
}

TEST_P(ReapplicationOf, theOrbitOfACameraLeavesTheSameSceneAndHost) {
    play({{Camera, "distance", "distance", 0},
          {Camera, "height", "height", 0},
          {Camera, "turnTableAngle", "turnTableAngle", 0},
          {Camera, "fieldOfView", "fieldOfView", 0}},
         GetParam(), 0.0F);
}

TEST_P(ReapplicationOf, theHostsOwnCameraLeavesItTheSame) {
    play({{Viewpoint, "fromX", "from", 0},
          {Viewpoint, "atY", "at", 1},
          {Viewpoint, "upZ", "up", 2},
          {Viewpoint, "fieldOfView", "fieldOfView", 0},
          {Viewpoint, "fStop", "fStop", 0},
          {Camera, "fromX", "from", 0}},
         GetParam(), 0.0F);
}

// Taking a matrix apart rounds; the older writes, each of which would round again, are left out.
TEST_P(ReapplicationOf, aPlainMatrixLeavesTheSameSceneUpToRounding) {
    play({{PlainNode, "rotationX", "rotation", 0},
          {PlainNode, "rotationZ", "rotation", 2},
          {PlainCore, "m", "matrix", 3},
          {PlainCore, "m", "matrix", 7}},
         GetParam(), 2e-4F);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ReapplicationOf, testing::Range(1U, 9U));

// --- numbers that are made of several: the newest record of each, in order, on what is there

void write(const std::vector<Field>& records) {
    for (const Field& record : records)
        kvAnimationUtils2::setRealFieldValue(record);
}

TEST_F(Reapplication, ofAQuaternionTheNewestNumbersAreWrittenInOrder) {
    Scene expected = makeScene();
    const auto recordsOn = [](const Scene& scene, float v) {
        std::vector<Field> records;
        for (std::uint16_t i = 0; i < 4; ++i)
            records.push_back(recordOf(scene, {MoverCore, "q", "rotation", i}, v + i));
        return records;
    };
    for (const float v : {0.25F, 0.5F, 0.75F}) {
        tick(recordsOn(quick, v));
        write(recordsOn(expected, v));
        const std::vector<float> is = lookOf(quick);
        const std::vector<float> should = lookOf(expected);
        for (std::size_t i = 0; i < is.size(); ++i)
            EXPECT_EQ(is[i], should[i]) << "number " << i;
    }
}

TEST_F(Reapplication, ofAnOrbitAroundAMovingPointTheNewestAreWrittenInOrder) {
    Scene expected = makeScene();
    const auto recordsOn = [](const Scene& scene, float v) {
        return std::vector<Field>{recordOf(scene, {Camera, "atX", "at", 0}, v),
                                  recordOf(scene, {Camera, "distance", "distance", 0}, 2.0F * v)};
    };
    for (const float v : {1.0F, 3.0F, 4.5F}) {
        tick(recordsOn(quick, v));
        theHostCamera = &expected.host;
        write(recordsOn(expected, v));
        const std::vector<float> is = lookOf(quick);
        const std::vector<float> should = lookOf(expected);
        for (std::size_t i = 0; i < is.size(); ++i)
            EXPECT_EQ(is[i], should[i]) << "number " << i;
    }
}

} // namespace
