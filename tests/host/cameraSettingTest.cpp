// The camera and its orbit.
#include <OSGCameraSetting.h>

#include "held.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using osg::CameraSetting;
using osg::Pnt3f;

namespace {

bool zIsUp = false;
bool tellZUp() {
    return zIsUp;
}

class Camera : public ::testing::Test {
  protected:
    void SetUp() override {
        zIsUp = false;
        CameraSetting::setZUpCB(&tellZUp);
    }
    void TearDown() override { CameraSetting::setZUpCB(nullptr); }

    void editFrom(const Pnt3f& from) {
        osg::beginEditCP(camera.get(), CameraSetting::FromFieldMask);
        camera->setFrom(from);
        osg::endEditCP(camera.get(), CameraSetting::FromFieldMask);
    }

    void editAt(const Pnt3f& at) {
        osg::beginEditCP(camera.get(), CameraSetting::AtFieldMask);
        camera->setAt(at);
        osg::endEditCP(camera.get(), CameraSetting::AtFieldMask);
    }

    void expectFrom(float x, float y, float z, float tolerance = 1e-5f) {
        EXPECT_NEAR(camera->getFrom()[0], x, tolerance);
        EXPECT_NEAR(camera->getFrom()[1], y, tolerance);
        EXPECT_NEAR(camera->getFrom()[2], z, tolerance);
    }

    kvtest::Made<CameraSetting> camera;
};

TEST_F(Camera, isACoreOfANode) {
    const kvtest::Held<osg::NodePtr> node(kvtest::makeNode(camera.get()));
    EXPECT_TRUE(osg::CameraSettingPtr::dcast(node->getCore()) == camera.get());
}

TEST_F(Camera, aNewOneLooksUpright) {
    EXPECT_FALSE(camera->getIsViewpoint());
    EXPECT_EQ(camera->getUp()[1], 1.0f);
    EXPECT_NEAR(camera->getFieldOfView(), std::acos(-1.0) / 4.0, 1e-6);
    EXPECT_EQ(camera->getDistance(), 0.0f);
}

TEST_F(Camera, lensAndOrbitAreNoFieldsOfTheirOwnNames) {
    for (const char* name : {"fStop", "focalLength", "height", "distance", "turnTableAngle"})
        EXPECT_EQ(camera->getField(name), nullptr) << name;
    for (const char* name : {"from", "at", "up", "fieldOfView", "roll", "shutterSpeed",
                             "focusDistance", "apertureDiameter", "isViewpoint"})
        EXPECT_NE(camera->getField(name), nullptr) << name;
}

TEST_F(Camera, lensReadsBackAsSet) {
    camera->setFStop(2.8f);
    camera->setFocalLength(35.0f);
    EXPECT_EQ(camera->getFStop(), 2.8f);
    EXPECT_EQ(camera->getFocalLength(), 35.0f);
}

TEST_F(Camera, orbitIsReadFromFromAndAt) {
    editAt(Pnt3f(1.0f, 2.0f, 3.0f));
    editFrom(Pnt3f(4.0f, 7.0f, 7.0f));
    EXPECT_FLOAT_EQ(camera->getDistance(), 5.0f);
    EXPECT_FLOAT_EQ(camera->getHeight(), 5.0f);
    EXPECT_NEAR(camera->getTurnTableAngle(), 53.130102, 1e-4);
    editFrom(Pnt3f(1.0f, 1.0f, 1.0f));
    EXPECT_FLOAT_EQ(camera->getDistance(), 2.0f);
    EXPECT_FLOAT_EQ(camera->getHeight(), -1.0f);
    EXPECT_NEAR(camera->getTurnTableAngle(), 270.0, 1e-4);
}

TEST_F(Camera, theAngleRunsFromXTowardsZWithYUp) {
    camera->setDistance(2.0f);
    camera->setTurnTableAngle(0.0f);
    expectFrom(2.0f, 0.0f, 0.0f);
    camera->setTurnTableAngle(90.0f);
    expectFrom(0.0f, 0.0f, 2.0f);
    camera->setTurnTableAngle(180.0f);
    expectFrom(-2.0f, 0.0f, 0.0f);
}

TEST_F(Camera, theAngleRunsFromXTowardsYWithZUp) {
    zIsUp = true;
    camera->setDistance(2.0f);
    camera->setHeight(3.0f);
    camera->setTurnTableAngle(90.0f);
    expectFrom(0.0f, 2.0f, 3.0f);
    EXPECT_EQ(camera->getHeight(), 3.0f);
}

TEST_F(Camera, withoutACallbackYIsUp) {
    zIsUp = true;
    CameraSetting::setZUpCB(nullptr);
    camera->setHeight(3.0f);
    expectFrom(0.0f, 3.0f, 0.0f);
}

TEST_F(Camera, theThreeAreIndependent) {
    editAt(Pnt3f(10.0f, -4.0f, 0.5f));
    camera->setDistance(5.0f);
    camera->setTurnTableAngle(370.0f);
    camera->setHeight(-1.5f);
    EXPECT_EQ(camera->getDistance(), 5.0f);
    EXPECT_EQ(camera->getTurnTableAngle(), 370.0f);
    EXPECT_EQ(camera->getHeight(), -1.5f);
    expectFrom(10.0f + 4.9240388f, -5.5f, 0.5f + 0.8682409f);
    camera->setDistance(1.0f);
    EXPECT_EQ(camera->getTurnTableAngle(), 370.0f);
    EXPECT_EQ(camera->getHeight(), -1.5f);
    expectFrom(10.0f + 0.9848078f, -5.5f, 0.5f + 0.1736482f);
}

TEST_F(Camera, theAngleIsRememberedAtDistanceZero) {
    camera->setDistance(5.0f);
    camera->setTurnTableAngle(30.0f);
    camera->setDistance(0.0f);
    expectFrom(0.0f, 0.0f, 0.0f);
    EXPECT_EQ(camera->getTurnTableAngle(), 30.0f);
    camera->setTurnTableAngle(60.0f);
    camera->setDistance(2.0f);
    expectFrom(1.0f, 0.0f, 1.7320508f);
}

TEST_F(Camera, theAngleIsRememberedWhenAnEditPutsFromAboveAt) {
    editFrom(Pnt3f(0.0f, 0.0f, 3.0f));
    editFrom(Pnt3f(0.0f, 4.0f, 0.0f));
    EXPECT_EQ(camera->getDistance(), 0.0f);
    EXPECT_EQ(camera->getHeight(), 4.0f);
    EXPECT_NEAR(camera->getTurnTableAngle(), 90.0, 1e-4);
    camera->setDistance(2.0f);
    expectFrom(0.0f, 4.0f, 2.0f);
}

TEST_F(Camera, anEditOfFromOrAtRecomputesTheAngle) {
    camera->setDistance(5.0f);
    camera->setTurnTableAngle(370.0f);
    editFrom(Pnt3f(0.0f, 0.0f, 5.0f));
    EXPECT_NEAR(camera->getTurnTableAngle(), 90.0, 1e-4);
    editAt(Pnt3f(0.0f, 0.0f, 10.0f));
    EXPECT_NEAR(camera->getTurnTableAngle(), 270.0, 1e-4);
}

TEST_F(Camera, anEditThatLeavesThemInPlaceKeepsTheAngleAsItWasSet) {
    camera->setDistance(5.0f);
    camera->setTurnTableAngle(370.0f);
    editFrom(camera->getFrom());
    EXPECT_EQ(camera->getTurnTableAngle(), 370.0f);
    // As far as seven digits of text move it.
    const Pnt3f from = camera->getFrom();
    editFrom(Pnt3f(from[0] * (1.0f + 5e-7f), from[1], from[2]));
    EXPECT_EQ(camera->getTurnTableAngle(), 370.0f);
    editFrom(Pnt3f(from[0] * (1.0f + 1e-5f), from[1], from[2]));
    EXPECT_NEAR(camera->getTurnTableAngle(), 10.0, 1e-3);
}

TEST_F(Camera, theAngleStaysBelowAFullTurn) {
    editFrom(Pnt3f(1.0f, 0.0f, -1e-12f));
    EXPECT_GE(camera->getTurnTableAngle(), 0.0f);
    EXPECT_LT(camera->getTurnTableAngle(), 360.0f);
}

TEST_F(Camera, aNegativeDistanceIsTakenWithoutItsSign) {
    camera->setDistance(-2.0f);
    EXPECT_EQ(camera->getDistance(), 2.0f);
    expectFrom(2.0f, 0.0f, 0.0f);
}

TEST_F(Camera, nothingDriftsWhenTheAngleIsAnimated) {
    editAt(Pnt3f(100.0f, 50.0f, -30.0f));
    camera->setDistance(7.3f);
    camera->setHeight(1.1f);
    for (int i = 0; i < 10000; ++i)
        camera->setTurnTableAngle(static_cast<float>(i) * 0.37f);
    EXPECT_EQ(camera->getDistance(), 7.3f);
    EXPECT_EQ(camera->getHeight(), 1.1f);
}

TEST_F(Camera, numbersThatAreNoneAreSurvived) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    camera->setDistance(nan);
    camera->setHeight(inf);
    camera->setTurnTableAngle(nan);
    camera->getDistance();
    editFrom(Pnt3f(3.0f, 0.0f, 4.0f));
    EXPECT_FLOAT_EQ(camera->getDistance(), 5.0f);
    EXPECT_FLOAT_EQ(camera->getHeight(), 0.0f);
}

TEST_F(Camera, aCopyKeepsTheOrbit) {
    camera->setDistance(5.0f);
    camera->setTurnTableAngle(370.0f);
    camera->setFStop(4.0f);
    const kvtest::Held<osg::CameraSettingPtr> copy(
        osg::CameraSettingPtr::dcast(camera->shallowCopy()));
    EXPECT_EQ(copy->getTurnTableAngle(), 370.0f);
    EXPECT_EQ(copy->getDistance(), 5.0f);
    EXPECT_EQ(copy->getFStop(), 4.0f);
}

} // namespace
