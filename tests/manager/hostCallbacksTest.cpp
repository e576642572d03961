// The host's callbacks: forwarded when installed, answered by the fallback when not.

#include "manager/fixture.h"

#include <OpenSG/OSGPerspectiveCamera.h>

#include <chrono>
#include <thread>

using namespace kv::test;

namespace {

using Manager = kvAnimationManager2;
using Host = ManagerTest;

float heardFov;
bool heardFlag;
int calls;

TEST_F(Host, withoutCallbacksTheFallbacksAnswer) {
    EXPECT_EQ(Manager::getFOV(), -1.0F);
    EXPECT_FALSE(Manager::getZUp());
    osg::Pnt3f from(1, 2, 3);
    osg::Pnt3f at(4, 5, 6);
    osg::Vec3f up(7, 8, 9);
    Manager::getFromAtUp(from, at, up);
    for (osg::UInt32 i = 0; i < 3; ++i) {
        EXPECT_EQ(from[i], 0.0F);
        EXPECT_EQ(at[i], 0.0F);
        EXPECT_EQ(up[i], 0.0F);
    }
    Manager::setFOV(45);
    Manager::setZUp(true);
    Manager::setFromAtUp(from, at, up);
    Manager::setObserver(from, at, up, 30);
    Manager::updateNavigator(true);
    Manager::updateRender(true);
    EXPECT_FALSE(Manager::getZUp());
}

TEST_F(Host, aTimeCallbackReplacesTheBuiltInClock) {
    Manager::setSimulationTimeCB([]() { return 12.25; });
    EXPECT_EQ(Manager::getSimulationTime(), 12.25);
    Manager::setSimulationTimeCB(nullptr);
    EXPECT_NE(Manager::getSimulationTime(), 12.25);
}

TEST_F(Host, theBuiltInClockCountsSecondsAndNeverGoesBack) {
    const double first = Manager::getSimulationTime();
    EXPECT_GE(first, 0.0);
    const auto before = std::chrono::steady_clock::now();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const double second = Manager::getSimulationTime();
    const std::chrono::duration<double> around = std::chrono::steady_clock::now() - before;
    EXPECT_GE(second - first, 0.02);
    EXPECT_LE(second - first, around.count() + 0.02);
}

TEST_F(Host, fieldOfViewAndUpAxisAreForwarded) {
    Manager::setGetFovCB([]() { return 37.5F; });
    Manager::setFovCB([](float fov) { heardFov = fov; });
    EXPECT_EQ(Manager::getFOV(), 37.5F);
    Manager::setFOV(60.0F);
    EXPECT_EQ(heardFov, 60.0F);

    Manager::setGetZUpCB([]() { return true; });
    Manager::setZUpCB([](bool zUp) { heardFlag = zUp; });
    EXPECT_TRUE(Manager::getZUp());
    heardFlag = false;
    Manager::setZUp(true);
    EXPECT_TRUE(heardFlag);
    Manager::setZUp(false);
    EXPECT_FALSE(heardFlag);
}

TEST_F(Host, updatesAreForwardedWithTheirFlag) {
    calls = 0;
    Manager::setUpdateNavigatorCB([](bool flag) { calls += flag ? 1 : 10; });
    Manager::setUpdateRenderCB([](bool flag) { calls += flag ? 100 : 1000; });
    Manager::updateNavigator(true);
    Manager::updateNavigator(false);
    Manager::updateRender(true);
    Manager::updateRender(false);
    EXPECT_EQ(calls, 1111);
}

TEST_F(Host, theCameraCallbacksAreAskedForTheActiveCamera) {
    static int askedFor = 0;
    static int toldFor = 0;
    static osg::Pnt3f told;
    Manager::setGetFromAtUpCB([](int camera, osg::Pnt3f& from, osg::Pnt3f& at, osg::Vec3f& up) {
        askedFor = camera;
        from.setValues(1, 2, 3);
        at.setValues(4, 5, 6);
        up.setValues(0, 0, 1);
    });
    Manager::setFromAtUpCB(
        [](int camera, const osg::Pnt3f& from, const osg::Pnt3f&, const osg::Vec3f&) {
            toldFor = camera;
            told = from;
        });
    osg::Pnt3f from;
    osg::Pnt3f at;
    osg::Vec3f up;
    Manager::getFromAtUp(from, at, up);
    EXPECT_EQ(askedFor, -1);
    EXPECT_EQ(from[2], 3.0F);
    EXPECT_EQ(at[0], 4.0F);
    EXPECT_EQ(up[2], 1.0F);
    Manager::setFromAtUp(osg::Pnt3f(7, 8, 9), at, up);
    EXPECT_EQ(toldFor, -1);
    EXPECT_EQ(told[1], 8.0F);
}

TEST_F(Host, nullUninstallsEveryCallback) {
    calls = 0;
    Manager::setFovCB([](float) { ++calls; });
    Manager::setFovCB(nullptr);
    Manager::setFOV(1);
    Manager::setZUpCB([](bool) { ++calls; });
    Manager::setZUpCB(nullptr);
    Manager::setZUp(true);
    Manager::setUpdateRenderCB([](bool) { ++calls; });
    Manager::setUpdateRenderCB(nullptr);
    Manager::updateRender(true);
    EXPECT_EQ(calls, 0);
}

TEST_F(Host, theSettingsStartAsDocumentedAndKeepWhatIsSet) {
    EXPECT_EQ(Manager::getActualFrame(), 0.0F);
    EXPECT_FALSE(Manager::_motionBlur);
    EXPECT_EQ(Manager::getMotionBlurSamples(), 64);
    EXPECT_EQ(Manager::getMotionBlurShutterTime(), 1.0F);
    EXPECT_EQ(Manager::getActiveAnimationWidget(), 1);
    EXPECT_TRUE(Manager::getMGLWCamera() == osg::NullFC);

    Manager::setActualFrame(12.5F);
    Manager::setMotionBlurSamples(-3);
    Manager::setMotionBlurShutterTime(0.25F);
    Manager::setActiveAnimationWidget(Manager::TimeLine);
    EXPECT_EQ(Manager::getActualFrame(), 12.5F);
    EXPECT_EQ(Manager::getMotionBlurSamples(), -3);
    EXPECT_EQ(Manager::getMotionBlurShutterTime(), 0.25F);
    EXPECT_EQ(Manager::getActiveAnimationWidget(), 3);
}

TEST_F(Host, theCameraIsKeptWithoutAReference) {
    osg::PerspectiveCameraPtr camera = osg::PerspectiveCamera::create();
    osg::addRefCP(camera);
    Manager::setMGLWCamera(camera);
    EXPECT_TRUE(Manager::getMGLWCamera() == camera);
    EXPECT_EQ(camera.getRefCount(), 1);
    Manager::setMGLWCamera(osg::NullFC);
    osg::subRefCP(camera);
}

TEST(AnimationWidgets, areNumberedFromNone) {
    EXPECT_EQ(static_cast<int>(Manager::NoWidget), 0);
    EXPECT_EQ(static_cast<int>(Manager::CurveEditor), 1);
    EXPECT_EQ(static_cast<int>(Manager::ClipMaker), 2);
    EXPECT_EQ(static_cast<int>(Manager::TimeLine), 3);
}

} // namespace
