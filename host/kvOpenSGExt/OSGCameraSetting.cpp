// A camera as a node core: its orbit around the point that it looks at.
#include "OSGCameraSetting.h"

#include <algorithm>
#include <cmath>

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(CameraSetting, NodeCore, KV_CAMERA_SETTING_FIELDS)

namespace {

constexpr double kDegreesToRadians = 3.14159265358979323846 / 180.0;

/// How far `from` may be from the place where the stored orbit puts it, in parts of the largest
/// coordinate: more than the rounding of the seven digits that a text file may keep.
constexpr double kOrbitTolerance = 2e-6;

CameraSetting::ZUpCB zUpCallback = nullptr;

struct Axes {
    UInt32 up, side;
};

Axes currentAxes() {
    return zUpCallback != nullptr && zUpCallback() ? Axes{2, 1} : Axes{1, 2};
}

/// Whether two places are the same for a camera that looks at `at`. False for what is not a number.
bool isNear(const Pnt3f& place, const Pnt3f& expected, const Pnt3f& at) {
    double largest = 0.0;
    for (UInt32 i = 0; i < 3; ++i)
        largest = (std::max)({largest, std::fabs(double(place[i])), std::fabs(double(at[i]))});
    for (UInt32 i = 0; i < 3; ++i)
        if (!(std::fabs(double(place[i]) - expected[i]) <= kOrbitTolerance * largest)) return false;
    return true;
}

} // namespace

void CameraSetting::setZUpCB(ZUpCB callback) {
    zUpCallback = callback;
}

void CameraSetting::changed(BitVector which, UInt32 origin) {
    countRead(which, origin);
    if (which & (FromFieldMask | AtFieldMask)) storeOrbit(getOrbit());
    Inherited::changed(which, origin);
}

Pnt3f CameraSetting::pointOnOrbit(const Orbit& orbit) const {
    const Axes axes = currentAxes();
    const Pnt3f& at = getAt();
    const double radians = orbit.degrees * kDegreesToRadians;
    Pnt3f point;
    point[0] = static_cast<Real32>(at[0] + std::cos(radians) * orbit.radius);
    point[axes.side] = static_cast<Real32>(at[axes.side] + std::sin(radians) * orbit.radius);
    point[axes.up] = static_cast<Real32>(double(at[axes.up]) + orbit.height);
    return point;
}

CameraSetting::Orbit CameraSetting::getOrbit(void) const {
    const Orbit stored = {getOrbitRadius(), getOrbitHeight(), getOrbitAngle()};
    const Pnt3f& from = getFrom();
    const Pnt3f& at = getAt();
    if (isNear(from, pointOnOrbit(stored), at)) return stored;

    const Axes axes = currentAxes();
    const double x = double(from[0]) - at[0];
    const double side = double(from[axes.side]) - at[axes.side];
    Orbit orbit = stored;
    orbit.radius = static_cast<Real32>(std::hypot(x, side));
    orbit.height = static_cast<Real32>(double(from[axes.up]) - at[axes.up]);
    if (orbit.radius > 0.0f) {
        const double degrees = std::atan2(side, x) / kDegreesToRadians;
        orbit.degrees = static_cast<Real32>(degrees < 0.0 ? degrees + 360.0 : degrees);
        // Rounding may have reached the full turn.
        if (orbit.degrees >= 360.0f) orbit.degrees = 0.0f;
    }
    return orbit;
}

void CameraSetting::storeOrbit(const Orbit& orbit) {
    setOrbitRadius(orbit.radius);
    setOrbitHeight(orbit.height);
    setOrbitAngle(orbit.degrees);
}

void CameraSetting::moveOnOrbit(const Orbit& orbit) {
    storeOrbit(orbit);
    setFrom(pointOnOrbit(orbit));
}

void CameraSetting::setDistance(Real32 value) {
    Orbit orbit = getOrbit();
    orbit.radius = std::fabs(value);
    moveOnOrbit(orbit);
}

void CameraSetting::setHeight(Real32 value) {
    Orbit orbit = getOrbit();
    orbit.height = value;
    moveOnOrbit(orbit);
}

void CameraSetting::setTurnTableAngle(Real32 degrees) {
    Orbit orbit = getOrbit();
    orbit.degrees = degrees;
    moveOnOrbit(orbit);
}

OSG_END_NAMESPACE
