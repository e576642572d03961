// What exists before main() runs: a host's global objects may make keys and curves, register
// attribute names and fill the manager, whatever the order in which globals are constructed.

#include "manager/fixture.h"

#include <kvAnimationUtils2.h>

using namespace kv::test;

namespace {

struct EarlyHost {
    EarlyHost() : key(1.0, 2.0, 5), wasIssued(kvAnimationManager2::checkId(idOf(key))) {
        kvAnimationUtils2::addAnimationAttribute("registered before main");
        curve.insertCP(3.0, 4.0);
        kvAnimationManager2::_the.addCurve(&curve);
        wasListed = kvAnimationManager2::_the.getLastInsertedCurve() == &curve;
        kvAnimationManager2::_the.subCurve(&curve);
    }

    static unsigned long long idOf(const kvControlPoint& key) {
        return static_cast<unsigned long long>(key.getId());
    }

    kvControlPoint key;
    kvAnimationCurve curve;
    bool wasIssued;
    bool wasListed = false;
};

EarlyHost earlyHost;

/// The settings before the first test: fixtures set them anew.
struct StartOfTheManager : ::testing::Environment {
    void SetUp() override {
        using Manager = kvAnimationManager2;
        frame = Manager::getActualFrame();
        samples = Manager::getMotionBlurSamples();
        shutterTime = Manager::getMotionBlurShutterTime();
        widget = Manager::getActiveAnimationWidget();
        motionBlur = Manager::_motionBlur;
        hasClip = Manager::getActiveClip() != nullptr;
        hasCamera = Manager::getMGLWCamera() != osg::NullFC;
        dirty = Manager::_the.isDirty();
        fov = Manager::getFOV();
        zUp = Manager::getZUp();
    }
    float frame = -1.0F;
    int samples = -1;
    float shutterTime = -1.0F;
    int widget = -1;
    bool motionBlur = true;
    bool hasClip = true;
    bool hasCamera = true;
    bool dirty = false;
    float fov = 0.0F;
    bool zUp = true;
};

const auto* const startOfTheManager =
    static_cast<StartOfTheManager*>(::testing::AddGlobalTestEnvironment(new StartOfTheManager));

TEST(Statics, theSettingsHaveTheirStartValuesBeforeAnyoneSetsThem) {
    EXPECT_EQ(startOfTheManager->frame, 0.0F);
    EXPECT_EQ(startOfTheManager->samples, 64);
    EXPECT_EQ(startOfTheManager->shutterTime, 1.0F);
    EXPECT_EQ(startOfTheManager->widget, 1);
    EXPECT_FALSE(startOfTheManager->motionBlur);
    EXPECT_FALSE(startOfTheManager->hasClip);
    EXPECT_FALSE(startOfTheManager->hasCamera);
    EXPECT_TRUE(startOfTheManager->dirty);
    EXPECT_EQ(startOfTheManager->fov, -1.0F);
    EXPECT_FALSE(startOfTheManager->zUp);
}

TEST(Statics, keysMadeBeforeMainHaveIssuedIds) {
    EXPECT_TRUE(earlyHost.wasIssued);
    EXPECT_TRUE(kvAnimationManager2::checkId(EarlyHost::idOf(earlyHost.key)))
        << "nothing that was constructed later has forgotten it";
    EXPECT_EQ(earlyHost.curve.getCPs().size(), 1U);
}

TEST(Statics, namesRegisteredBeforeMainStay) {
    EXPECT_TRUE(kvAnimationUtils2::isAnimationAttribute("registered before main"));
}

TEST(Statics, theManagerServesBeforeMain) {
    EXPECT_TRUE(earlyHost.wasListed);
}

} // namespace
