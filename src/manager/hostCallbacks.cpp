// Everything that the library asks of the host goes through one function pointer each, with a fixed
// answer for a host that installed none, and the few settings that the host and playback share.

#include <OpenSG/OSGConfig.h>

#include <kvAnimationManager2.h>

#if defined(_WIN32)
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <chrono>
#endif

namespace {

/// Seconds since the first call. The start is a function-local static: captured once, also when
/// first calls come from several threads.
double secondsOfBuiltInClock() {
#if defined(_WIN32)
    struct Start {
        LARGE_INTEGER count;
        double period;
        Start() {
            LARGE_INTEGER frequency;
            QueryPerformanceFrequency(&frequency);
            period = 1.0 / static_cast<double>(frequency.QuadPart);
            QueryPerformanceCounter(&count);
        }
    };
    static const Start start;
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart - start.count.QuadPart) * start.period;
#else
    static const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
#endif
}

} // namespace

// --- installing -------------------------------------------------------------------------------

void kvAnimationManager2::setSimulationTimeCB(SimulationTimeCB callback) {
    _timeCB = callback;
}

void kvAnimationManager2::setGetFromAtUpCB(GetFromAtUpCB callback) {
    _gCamFAU = callback;
}

void kvAnimationManager2::setFromAtUpCB(SetFromAtUpCB callback) {
    _sCamFAU = callback;
}

void kvAnimationManager2::setGetFovCB(GetFovCB callback) {
    _gFOV = callback;
}

void kvAnimationManager2::setFovCB(SetFovCB callback) {
    _sFOV = callback;
}

void kvAnimationManager2::setGetZUpCB(GetZUpCB callback) {
    _gZUp = callback;
}

void kvAnimationManager2::setZUpCB(SetZUpCB callback) {
    _sZUp = callback;
}

void kvAnimationManager2::setExecuteSequenceCB(ExecuteSequenceCB callback) {
    _seffc = callback;
}

void kvAnimationManager2::setUpdateNavigatorCB(UpdateCB callback) {
    _updateNavigator = callback;
}

void kvAnimationManager2::setUpdateRenderCB(UpdateCB callback) {
    _updateRender = callback;
}

// --- asking and telling -----------------------------------------------------------------------

double kvAnimationManager2::getSimulationTime() {
    return _timeCB ? _timeCB() : secondsOfBuiltInClock();
}

float kvAnimationManager2::getFOV() {
    return _gFOV ? _gFOV() : -1.0F;
}

void kvAnimationManager2::setFOV(float fov) {
    if (_sFOV) _sFOV(fov);
}

bool kvAnimationManager2::getZUp() {
    return _gZUp && _gZUp();
}

void kvAnimationManager2::setZUp(bool zUp) {
    if (_sZUp) _sZUp(zUp);
}

void kvAnimationManager2::updateNavigator(bool flag) {
    if (_updateNavigator) _updateNavigator(flag);
}

void kvAnimationManager2::updateRender(bool flag) {
    if (_updateRender) _updateRender(flag);
}

// --- settings ---------------------------------------------------------------------------------

float kvAnimationManager2::getActualFrame() {
    return _actualFrame;
}

void kvAnimationManager2::setActualFrame(float frame) {
    _actualFrame = frame;
}

void kvAnimationManager2::setMotionBlurSamples(int samples) {
    _mbSamples = samples;
}

int kvAnimationManager2::getMotionBlurSamples() {
    return _mbSamples;
}

void kvAnimationManager2::setMotionBlurShutterTime(float time) {
    _mbShutterTime = time;
}

float kvAnimationManager2::getMotionBlurShutterTime() {
    return _mbShutterTime;
}

void kvAnimationManager2::setActiveAnimationWidget(AnimationWidgetType widget) {
    _activeAnimWidget = widget;
}

kvAnimationManager2::AnimationWidgetType kvAnimationManager2::getActiveAnimationWidget() {
    return _activeAnimWidget;
}

void kvAnimationManager2::setMGLWCamera(osg::CameraPtr camera) {
    _mglwCam = camera;
}

osg::CameraPtr kvAnimationManager2::getMGLWCamera() {
    return _mglwCam;
}
