// The static state of the manager and of the objects that exist once for the library, in one file
// so that the order of construction is the order below. Plain values and null pointers are
// initialised before any code runs; only what has a constructor depends on the order. Identifiers
// and attribute names live in function-local statics: a host's global objects may create keys or
// register names before this file's turn or after it.

#include <kvAnimationBlock.h>
#include <kvAnimationManager2.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationUtils2.h>

#include "manager/identifiers.h"

#include <string>

namespace {

/// Building the two stores first makes them outlive everything below that is destroyed at exit.
struct StoresFirst {
    StoresFirst() {
        kv::detail::isIssuedId(0);
        kvAnimationUtils2::isAnimationAttribute(std::string());
    }
};

const StoresFirst storesFirst;

} // namespace

kvAnimationManager2 kvAnimationManager2::_the;
std::vector<kvAnimationBlock*> kvAnimationManager2::_animationBlocks;
osg::CameraPtr kvAnimationManager2::_mglwCam;
osg::NodePtr kvAnimationManager2::_beacon;
osg::NodePtr kvAnimationManager2::_appropriateLight;

kvAnimationBlock kvAnimationBlock::_the;
kvAnimationSequence2 kvAnimationSequence2::_the;

bool kvAnimationManager2::_motionBlur = false;
kvAnimationClip* kvAnimationManager2::_activeClip = nullptr;
std::uint32_t kvAnimationManager2::_beaconId = 0;
std::uint32_t kvAnimationManager2::_appropriateLightId = 0;

kvAnimationManager2::SimulationTimeCB kvAnimationManager2::_timeCB = nullptr;
kvAnimationManager2::GetFromAtUpCB kvAnimationManager2::_gCamFAU = nullptr;
kvAnimationManager2::SetFromAtUpCB kvAnimationManager2::_sCamFAU = nullptr;
kvAnimationManager2::GetFovCB kvAnimationManager2::_gFOV = nullptr;
kvAnimationManager2::SetFovCB kvAnimationManager2::_sFOV = nullptr;
kvAnimationManager2::GetZUpCB kvAnimationManager2::_gZUp = nullptr;
kvAnimationManager2::SetZUpCB kvAnimationManager2::_sZUp = nullptr;
kvAnimationManager2::ExecuteSequenceCB kvAnimationManager2::_seffc = nullptr;
kvAnimationManager2::UpdateCB kvAnimationManager2::_updateNavigator = nullptr;
kvAnimationManager2::UpdateCB kvAnimationManager2::_updateRender = nullptr;

float kvAnimationManager2::_actualFrame = 0.0F;
int kvAnimationManager2::_mbSamples = 64;
float kvAnimationManager2::_mbShutterTime = 1.0F;
kvAnimationManager2::AnimationWidgetType kvAnimationManager2::_activeAnimWidget =
    kvAnimationManager2::CurveEditor;
