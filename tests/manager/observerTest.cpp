// The camera on its circle around the target, with either axis up.

#include "manager/fixture.h"

#include <cmath>
#include <limits>

using namespace kv::test;

namespace {

using Manager = kvAnimationManager2;

class Observer : public ManagerTest {
  protected:
    struct Camera {
        osg::Pnt3f from;
        osg::Pnt3f at;
        osg::Vec3f up;
        int number = 0;
        int told = 0;
    };

    static Camera& camera() {
        static Camera only;
        return only;
    }

    Observer() {
        camera() = Camera();
        Manager::setGetFromAtUpCB([](int, osg::Pnt3f& from, osg::Pnt3f& at, osg::Vec3f& up) {
            from = camera().from;
            at = camera().at;
            up = camera().up;
        });
        Manager::setFromAtUpCB(
            [](int number, const osg::Pnt3f& from, const osg::Pnt3f& at, const osg::Vec3f& up) {
                camera().from = from;
                camera().at = at;
                camera().up = up;
                camera().number = number;
                ++camera().told;
            });
    }

    static void zUp() {
        Manager::setGetZUpCB([]() { return true; });
    }

    static void expectFrom(float x, float y, float z) {
        EXPECT_NEAR(camera().from[0], x, 1e-4F);
        EXPECT_NEAR(camera().from[1], y, 1e-4F);
        EXPECT_NEAR(camera().from[2], z, 1e-4F);
    }
};

TEST_F(Observer, withYUpNinetyDegreesLieInZ) {
    // Horizontally 5 from the target, 3 above it.
    Manager::setObserver(osg::Pnt3f(13, 5, 24), osg::Pnt3f(10, 2, 20), osg::Vec3f(9, 9, 9), 90);
    expectFrom(10, 2 + 3, 20 + 5);
    EXPECT_EQ(camera().at[0], 10.0F);
    EXPECT_EQ(camera().at[1], 2.0F);
    EXPECT_EQ(camera().at[2], 20.0F);
    EXPECT_EQ(camera().up[0], 0.0F);
    EXPECT_EQ(camera().up[1], 1.0F);
    EXPECT_EQ(camera().up[2], 0.0F);
    EXPECT_EQ(camera().number, -1);
    EXPECT_EQ(camera().told, 1);
}

TEST_F(Observer, withZUpNinetyDegreesLieInY) {
    zUp();
    Manager::setObserver(osg::Pnt3f(13, 24, 5), osg::Pnt3f(10, 20, 2), osg::Vec3f(9, 9, 9), 90);
    expectFrom(10, 20 + 5, 2 + 3);
    EXPECT_EQ(camera().up[1], 0.0F);
    EXPECT_EQ(camera().up[2], 1.0F);
}

TEST_F(Observer, zeroDegreesLieInX) {
    Manager::setObserver(osg::Pnt3f(3, 0, 4), osg::Pnt3f(0, 0, 0), osg::Vec3f(), 0);
    expectFrom(5, 0, 0);
    Manager::setObserver(osg::Pnt3f(3, 0, 4), osg::Pnt3f(0, 0, 0), osg::Vec3f(), 180);
    expectFrom(-5, 0, 0);
    Manager::setObserver(osg::Pnt3f(3, 0, 4), osg::Pnt3f(0, 0, 0), osg::Vec3f(), 270);
    expectFrom(0, 0, -5);
}

TEST_F(Observer, anObserverBelowItsTargetComesUpAsFarAboveIt) {
    Manager::setObserver(osg::Pnt3f(3, -7, 4), osg::Pnt3f(0, 1, 0), osg::Vec3f(), 0);
    expectFrom(5, 1 + 8, 0);
}

TEST_F(Observer, theDegreeThatWasSetIsComputedBack) {
    for (const bool z : {false, true}) {
        if (z) zUp();
        for (int degree = 0; degree < 360; degree += 5) {
            Manager::setObserver(osg::Pnt3f(13, 5, 24), osg::Pnt3f(10, 2, 20), osg::Vec3f(),
                                 static_cast<float>(degree));
            EXPECT_NEAR(Manager::computeObserverDegree(), static_cast<float>(degree), 0.1F);
        }
    }
}

TEST_F(Observer, theFourAxesGiveTheirDegreesExactly) {
    camera().from = osg::Pnt3f(2, 9, 0);
    EXPECT_EQ(Manager::computeObserverDegree(), 0.0F);
    camera().from = osg::Pnt3f(0, 9, 2);
    EXPECT_EQ(Manager::computeObserverDegree(), 90.0F);
    camera().from = osg::Pnt3f(-2, 9, 0);
    EXPECT_EQ(Manager::computeObserverDegree(), 180.0F);
    camera().from = osg::Pnt3f(0, 9, -2);
    EXPECT_EQ(Manager::computeObserverDegree(), 270.0F);
}

TEST_F(Observer, aCameraStraightAboveOrBelowItsTargetGivesZero) {
    camera().at = osg::Pnt3f(1, 2, 3);
    camera().from = osg::Pnt3f(1, 9, 3);
    EXPECT_EQ(Manager::computeObserverDegree(), 0.0F);
    camera().from = osg::Pnt3f(1, -9, 3);
    EXPECT_EQ(Manager::computeObserverDegree(), 0.0F);
    zUp();
    camera().from = osg::Pnt3f(1, 2, 9);
    EXPECT_EQ(Manager::computeObserverDegree(), 0.0F);
}

TEST_F(Observer, withoutACameraTheDegreeIsZero) {
    Manager::setGetFromAtUpCB(nullptr);
    EXPECT_EQ(Manager::computeObserverDegree(), 0.0F);
}

TEST_F(Observer, offsetsWithinAMillionthCountAsNone) {
    camera().from = osg::Pnt3f(0, 5, -1.0e-6F);
    EXPECT_EQ(Manager::computeObserverDegree(), 0.0F);
    camera().from = osg::Pnt3f(0, 5, -1.1e-6F);
    EXPECT_NEAR(Manager::computeObserverDegree(), 270.0F, 0.1F);
}

TEST_F(Observer, anglesWithinAMillionthOfStraightCountAsStraight) {
    // The cosine of 0.05 degrees is 1 - 3.8e-7, of 0.1 degrees 1 - 1.5e-6.
    const auto stand = [](double degree) {
        const double a = degree * 3.14159265358979 / 180.0;
        camera().from =
            osg::Pnt3f(static_cast<float>(std::cos(a)), 0, static_cast<float>(std::sin(a)));
    };
    stand(0.05);
    EXPECT_EQ(Manager::computeObserverDegree(), 0.0F);
    stand(0.1);
    EXPECT_NEAR(Manager::computeObserverDegree(), 0.1F, 0.02F);
    stand(179.95);
    EXPECT_EQ(Manager::computeObserverDegree(), 180.0F);
}

TEST_F(Observer, numbersThatAreNoneDoNoHarm) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    Manager::setObserver(osg::Pnt3f(nan, 0, 0), osg::Pnt3f(), osg::Vec3f(), nan);
    EXPECT_EQ(camera().told, 1);
    EXPECT_TRUE(std::isnan(Manager::computeObserverDegree()));
}

} // namespace
