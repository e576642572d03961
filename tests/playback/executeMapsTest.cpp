// Values by node and attribute name: what each kind of core makes of an attribute, and what it
// leaves.

#include "playback/playbackFixture.h"

#include <kvMessage.h>
#include <kvNodeUtils.h>
#include <kvOpenSGUtils.h>
#include <OSGCameraSetting.h>
#include <OSGTransform3D.h>
#include <OSGTransformAttachment.h>

#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <OpenSG/OSGSpotLight.h>
#include <OpenSG/OSGSwitch.h>

#include <boost/any.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>
#include <vector>

namespace {

using Controller = kvAnimationController2;
using Maps = std::vector<kvAnimationManager2::AnimationMap>;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;

class ExecuteMaps : public kv::test::PlaybackFixture {
  public:
    ExecuteMaps() {
        kvOpenSGUtils::clearLog();
        hostCamera.clear();
        kvAnimationManager2::setFromAtUpCB(
            [](int, const osg::Pnt3f& from, const osg::Pnt3f& at, const osg::Vec3f& up) {
                hostCamera = {from[0], from[1], from[2], at[0], at[1], at[2], up[0], up[1], up[2]};
            });
    }
    ~ExecuteMaps() override {
        kvAnimationManager2::setFromAtUpCB(nullptr);
        kvOpenSGUtils::clearLog();
    }

  protected:
    static void execute(const osg::NodePtr& target, const std::string& attribute, float value) {
        kvAnimationManager2::AnimationMap map;
        map.node = target;
        map.attribute = attribute;
        map.value = value;
        Controller::execute(Maps{map});
    }

    osg::NodePtr makeNode(const osg::NodeCorePtr& core) {
        const osg::NodePtr made = osg::Node::create();
        hold(made);
        made->setCore(core);
        return made;
    }

    static std::vector<float> translation(const osg::NodePtr& n) {
        std::vector<float> v(3);
        kvNodeUtils::getTransformNodeTranslation(n, v[0], v[1], v[2]);
        return v;
    }
    static std::vector<float> rotation(const osg::NodePtr& n) {
        std::vector<float> v(3);
        kvNodeUtils::getTransformNodeRotation(n, v[0], v[1], v[2]);
        return v;
    }
    static std::vector<float> scale(const osg::NodePtr& n) {
        std::vector<float> v(3);
        kvNodeUtils::getTransformNodeScale(n, v[0], v[1], v[2]);
        return v;
    }

    static std::vector<float> hostCamera;
};

std::vector<float> ExecuteMaps::hostCamera;

// --- transforms

TEST_F(ExecuteMaps, replacesOneComponentOfATransformAndKeepsTheOthers) {
    for (const osg::NodePtr& target : {node, makeNode(osg::Transform3D::create())}) {
        execute(target, "translateX", 1.0F);
        execute(target, "translateY", 2.0F);
        execute(target, "translateZ", 3.0F);
        execute(target, "scaleX", 4.0F);
        execute(target, "scaleZ", 6.0F);
        execute(target, "rotateX", 10.0F);
        execute(target, "rotateY", 20.0F);
        execute(target, "rotateZ", 30.0F);
        EXPECT_THAT(translation(target), ElementsAre(1.0F, 2.0F, 3.0F));
        EXPECT_THAT(scale(target), ElementsAre(4.0F, 1.0F, 6.0F));
        EXPECT_THAT(rotation(target), ElementsAre(10.0F, 20.0F, 30.0F));
    }
}

TEST_F(ExecuteMaps, rotatingKeepsTheOrderOfTheAngles) {
    kvNodeUtils::setTransformNodeRotation(node, 10.0F, 20.0F, 30.0F, osg::TransformAttachment::ZYX);
    execute(node, "rotateY", 25.0F);
    const osg::TransformAttachmentPtr kept = osg::TransformAttachment::find(node);
    EXPECT_EQ(kept->getRotationOrder(), osg::TransformAttachment::ZYX);
    EXPECT_THAT(rotation(node), ElementsAre(10.0F, 25.0F, 30.0F));
}

TEST_F(ExecuteMaps, visibleSetsTheActivityOfATransformNode) {
    execute(node, "visible", 0.49F);
    EXPECT_FALSE(node->getActive());
    execute(node, "visible", 0.5F);
    EXPECT_TRUE(node->getActive());
    execute(node, "visible", std::numeric_limits<float>::quiet_NaN());
    EXPECT_FALSE(node->getActive());
}

TEST_F(ExecuteMaps, skipsEntriesWithoutValueNodeCoreOrMeaning) {
    execute(node, "translateX", -1.0e23F);
    execute(node, "translateX", -2.0e23F);
    execute(node, "translateX", -std::numeric_limits<float>::infinity());
    execute(osg::NullFC, "translateX", 1.0F);
    const osg::NodePtr bare = osg::Node::create();
    hold(bare);
    execute(bare, "translateX", 1.0F);
    execute(node, "translateQ", 1.0F);
    execute(node, "translate", 1.0F);
    execute(node, "translateXX", 1.0F);
    execute(node, "", 1.0F);
    execute(node, "visibleX", 0.0F);
    execute(makeNode(osg::Group::create()), "translateX", 1.0F);
    execute(makeNode(osg::Transform::create()), "translateX", 1.0F); // a plain matrix is not one
    EXPECT_THAT(translation(node), ElementsAre(0.0F, 0.0F, 0.0F));
    EXPECT_TRUE(node->getActive());
    EXPECT_TRUE(kvOpenSGUtils::getLog().empty());
}

TEST_F(ExecuteMaps, appliesTheLargestNegativeNumberThatIsAValue) {
    execute(node, "translateX", std::nextafter(-1.0e23F, 0.0F));
    EXPECT_LT(translation(node)[0], -9.0e22F);
}

TEST_F(ExecuteMaps, appliesEntriesInOrder) {
    Maps maps(3);
    for (std::size_t i = 0; i < maps.size(); ++i) {
        maps[i].node = node;
        maps[i].attribute = "translateX";
        maps[i].value = static_cast<float>(i + 1);
    }
    maps[1].value = -1.0e23F;
    Controller::execute(maps);
    EXPECT_EQ(translation(node)[0], 3.0F);
    Controller::execute(Maps());
}

// --- lights

TEST_F(ExecuteMaps, setsOneColourComponentOfAnyLight) {
    for (const osg::LightPtr& light :
         {osg::LightPtr(osg::PointLight::create()), osg::LightPtr(osg::SpotLight::create()),
          osg::LightPtr(osg::DirectionalLight::create())}) {
        const osg::NodePtr target = makeNode(light);
        light->setAmbient(osg::Color4f(0.1F, 0.2F, 0.3F, 0.4F));
        light->setDiffuse(osg::Color4f(0.1F, 0.2F, 0.3F, 0.4F));
        light->setSpecular(osg::Color4f(0.1F, 0.2F, 0.3F, 0.4F));
        execute(target, "ambientR", 0.9F);
        execute(target, "diffuseG", 0.8F);
        execute(target, "specularB", 0.7F);
        execute(target, "specularA", 0.6F);
        execute(target, "visible", 0.0F);
        EXPECT_EQ(light->getAmbient()[0], 0.9F);
        EXPECT_EQ(light->getAmbient()[1], 0.2F);
        EXPECT_EQ(light->getDiffuse()[1], 0.8F);
        EXPECT_EQ(light->getDiffuse()[3], 0.4F);
        EXPECT_EQ(light->getSpecular()[2], 0.7F);
        EXPECT_EQ(light->getSpecular()[3], 0.6F);
        EXPECT_TRUE(target->getActive()) << "activity belongs to transforms";
    }
}

TEST_F(ExecuteMaps, movesTheBeaconOfALight) {
    const osg::PointLightPtr light = osg::PointLight::create();
    const osg::NodePtr target = makeNode(light);
    execute(target, "translateX", 1.0F); // no beacon yet: nothing to move
    light->setBeacon(node);
    execute(target, "translateY", 2.0F);
    execute(target, "rotateZ", 30.0F);
    execute(target, "scaleX", 3.0F);
    EXPECT_THAT(translation(node), ElementsAre(0.0F, 2.0F, 0.0F));
    EXPECT_THAT(rotation(node), ElementsAre(0.0F, 0.0F, 30.0F));
    EXPECT_THAT(scale(node), ElementsAre(3.0F, 1.0F, 1.0F));
    light->setBeacon(osg::NullFC);
}

// --- switch

TEST_F(ExecuteMaps, switchTakesTheTruncatedValueOfAnyAttribute) {
    const osg::SwitchPtr core = osg::Switch::create();
    const osg::NodePtr target = makeNode(core);
    const std::pair<float, int> cases[] = {{2.9F, 2},
                                           {-0.9F, 0},
                                           {-2.9F, -2},
                                           {0.0F, 0},
                                           {3.0e9F, INT_MIN},
                                           {std::numeric_limits<float>::quiet_NaN(), INT_MIN},
                                           {-2147483648.0F, INT_MIN},
                                           {2147483520.0F, 2147483520}};
    for (const auto& [value, choice] : cases) {
        execute(target, "whatever", value);
        EXPECT_EQ(core->getChoice(), choice) << value;
    }
}

// --- material groups

TEST_F(ExecuteMaps, materialGroupWritesAFieldOfItsMaterial) {
    const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    const osg::NodePtr target = makeNode(group);
    execute(target, "shininess", 9.0F); // no material yet
    group->setMaterial(material);
    material->setDiffuse(osg::Color3f(0.1F, 0.2F, 0.3F));
    execute(target, "shininess", 9.0F);
    execute(target, "diffuseG", 0.75F);
    execute(target, "diffuseA", 0.5F); // a fourth component that is not there
    execute(target, "nothingR", 0.5F);
    execute(target, "R", 0.5F);
    execute(target, "", 0.5F);
    EXPECT_EQ(material->getShininess(), 9.0F);
    EXPECT_EQ(material->getDiffuse()[0], 0.1F);
    EXPECT_EQ(material->getDiffuse()[1], 0.75F);
    EXPECT_EQ(material->getDiffuse()[2], 0.3F);
}

TEST_F(ExecuteMaps, materialGroupPrefersTheExactFieldName) {
    const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    const osg::NodePtr target = makeNode(group);
    group->setMaterial(material);
    material->setDiffuse(osg::Color3f(0.1F, 0.2F, 0.3F));
    execute(target, "diffuse", 0.75F); // the first component
    EXPECT_EQ(material->getDiffuse()[0], 0.75F);
    EXPECT_EQ(material->getDiffuse()[1], 0.2F);
}

// --- camera settings

class ExecuteMapsOnCamera : public ExecuteMaps {
  protected:
    osg::CameraSettingPtr camera = osg::CameraSetting::create();
    osg::NodePtr target = makeNode(camera);
};

TEST_F(ExecuteMapsOnCamera, activatesTheCameraOncePerEntryAndHandsItOver) {
    camera->setFrom(osg::Pnt3f(1.0F, 2.0F, 3.0F));
    camera->setAt(osg::Pnt3f(4.0F, 5.0F, 6.0F));
    camera->setUp(osg::Vec3f(0.0F, 0.0F, 1.0F));
    execute(target, "nobodyKnowsThis", 1.0F);
    ASSERT_EQ(kvOpenSGUtils::getLog().size(), 1U);
    const kvOpenSGUtils::Call& call = kvOpenSGUtils::getLog()[0];
    EXPECT_EQ(call.name, "activateCamera");
    EXPECT_EQ(call.flags, 0);
    EXPECT_EQ(call.message.size(), 1U);
    osg::NodePtr named;
    ASSERT_TRUE(call.message.get("camNode", named));
    EXPECT_EQ(named, target);
    EXPECT_THAT(hostCamera, ElementsAre(1, 2, 3, 4, 5, 6, 0, 0, 1));

    Maps maps(2);
    maps[0].node = target;
    maps[1].node = target;
    maps[0].value = maps[1].value = 1.0F;
    Controller::execute(maps);
    EXPECT_EQ(kvOpenSGUtils::getLog().size(), 3U);
}

TEST_F(ExecuteMapsOnCamera, skippedEntriesActivateNothing) {
    execute(target, "roll", -1.0e23F);
    EXPECT_TRUE(kvOpenSGUtils::getLog().empty());
    EXPECT_THAT(hostCamera, IsEmpty());
}

TEST_F(ExecuteMapsOnCamera, setsEveryQuantity) {
    execute(target, "fieldOfView", 90.0F);
    execute(target, "fStop", 2.0F);
    execute(target, "focalLength", 3.0F);
    execute(target, "roll", 4.0F);
    execute(target, "shutterSpeed", 5.0F);
    execute(target, "focusDistance", 6.0F);
    execute(target, "apertureDiameter", 7.0F);
    EXPECT_EQ(camera->getFieldOfView(), 1.5707964F);
    EXPECT_EQ(camera->getFStop(), 2.0F);
    EXPECT_EQ(camera->getFocalLength(), 3.0F);
    EXPECT_EQ(camera->getRoll(), 4.0F);
    EXPECT_EQ(camera->getShutterSpeed(), 5.0F);
    EXPECT_EQ(camera->getFocusDistance(), 6.0F);
    EXPECT_EQ(camera->getApertureDiameter(), 7.0F);
}

TEST_F(ExecuteMapsOnCamera, setsOneComponentOfFromAtAndUp) {
    camera->setFrom(osg::Pnt3f(1.0F, 2.0F, 3.0F));
    execute(target, "fromY", 20.0F);
    execute(target, "atX", 40.0F);
    execute(target, "upZ", 60.0F);
    EXPECT_EQ(camera->getFrom()[0], 1.0F);
    EXPECT_EQ(camera->getFrom()[1], 20.0F);
    EXPECT_EQ(camera->getAt()[0], 40.0F);
    EXPECT_EQ(camera->getUp()[2], 60.0F);
    EXPECT_EQ(hostCamera[1], 20.0F);
    EXPECT_EQ(hostCamera[3], 40.0F);
    EXPECT_EQ(hostCamera[8], 60.0F);
}

TEST_F(ExecuteMapsOnCamera, orbitQuantitiesMoveTheCameraAndReachTheHost) {
    camera->setFrom(osg::Pnt3f(0.0F, 0.0F, 5.0F));
    execute(target, "distance", 10.0F);
    execute(target, "height", 3.0F);
    execute(target, "turnTableAngle", 0.0F); // towards +x
    EXPECT_NEAR(camera->getDistance(), 10.0F, 1e-4);
    EXPECT_NEAR(camera->getHeight(), 3.0F, 1e-4);
    EXPECT_NEAR(camera->getTurnTableAngle(), 0.0F, 1e-4);
    EXPECT_THAT(hostCamera[0], FloatNear(10.0F, 1e-4F));
    EXPECT_THAT(hostCamera[1], FloatNear(3.0F, 1e-4F));
    EXPECT_THAT(hostCamera[2], FloatNear(0.0F, 1e-4F));
}

TEST_F(ExecuteMapsOnCamera, movesAndTurnsTheNodeOfTheCamera) {
    node->addChild(target); // the transform of the camera node is its parent's
    execute(target, "translateX", 5.0F);
    execute(target, "rotateY", 15.0F);
    execute(target, "scaleX", 9.0F); // no camera attribute
    EXPECT_THAT(translation(node), ElementsAre(5.0F, 0.0F, 0.0F));
    EXPECT_THAT(rotation(target), ElementsAre(0.0F, 15.0F, 0.0F));
    EXPECT_THAT(scale(node), ElementsAre(1.0F, 1.0F, 1.0F));
    EXPECT_EQ(kvOpenSGUtils::getLog().size(), 3U);
}

TEST_F(ExecuteMapsOnCamera, aViewpointIsTreatedLikeAnyOther) {
    camera->setIsViewpoint(true);
    execute(target, "fromX", 5.0F);
    EXPECT_EQ(camera->getFrom()[0], 5.0F);
    EXPECT_EQ(hostCamera[0], 5.0F);
}

} // namespace
