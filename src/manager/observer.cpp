// The host's active camera: reading it, setting it, and standing on a horizontal circle around its
// target. The circle is drawn in x and the side axis, which is z when y is up and y when z is up;
// degrees count from +x towards the positive side axis. All in single precision.

#include <OpenSG/OSGConfig.h>

#include <kvAnimationManager2.h>

#include <cmath>

namespace {

constexpr int kActiveCamera = -1;
constexpr float kPi = 3.1415927F;
constexpr float kTolerance = 1.0e-6F;

struct Axes {
    osg::UInt32 up;
    osg::UInt32 side;
};

Axes axesOf(bool zUp) {
    return zUp ? Axes{2, 1} : Axes{1, 2};
}

bool isNearlyZero(const osg::Vec3f& v) {
    return std::fabs(v[0]) <= kTolerance && std::fabs(v[1]) <= kTolerance &&
           std::fabs(v[2]) <= kTolerance;
}

/// The angle between two vectors in radians, 0 to pi; 0 for a vector that is nearly nothing.
float angleBetween(const osg::Vec3f& p, const osg::Vec3f& q) {
    if (isNearlyZero(p) || isNearlyZero(q)) return 0.0F;
    const float cosine = p.dot(q) / (p.length() * q.length());
    if (cosine - kTolerance < -1.0F) return kPi;
    if (cosine + kTolerance > 1.0F) return 0.0F;
    return std::acos(cosine);
}

float degreesBetween(const osg::Vec3f& p, const osg::Vec3f& q) {
    return angleBetween(p, q) / (2.0F * kPi) * 360.0F;
}

} // namespace

void kvAnimationManager2::getFromAtUp(osg::Pnt3f& from, osg::Pnt3f& at, osg::Vec3f& up) {
    if (_gCamFAU) {
        _gCamFAU(kActiveCamera, from, at, up);
        return;
    }
    from.setNull();
    at.setNull();
    up.setNull();
}

void kvAnimationManager2::setFromAtUp(const osg::Pnt3f& from, const osg::Pnt3f& at,
                                      const osg::Vec3f& up) {
    if (_sCamFAU) _sCamFAU(kActiveCamera, from, at, up);
}

void kvAnimationManager2::setObserver(osg::Pnt3f from, osg::Pnt3f at, osg::Vec3f up, float degree) {
    const bool zUp = getZUp();
    const Axes axes = axesOf(zUp);

    const float height = from[axes.up] - at[axes.up];
    from[axes.up] = at[axes.up];
    const float distance = (from - at).length();
    const float angle = degree * 2.0F * kPi / 360.0F;

    from[0] = at[0] + std::cos(angle) * distance;
    from[axes.side] = at[axes.side] + std::sin(angle) * distance;
    // Always above the target, by the height it had: an observer from below comes up on purpose.
    from[axes.up] = at[axes.up] + std::fabs(height);

    up = zUp ? osg::Vec3f(0.0F, 0.0F, 1.0F) : osg::Vec3f(0.0F, 1.0F, 0.0F);
    setFromAtUp(from, at, up);
}

float kvAnimationManager2::computeObserverDegree() {
    const Axes axes = axesOf(getZUp());
    osg::Pnt3f from;
    osg::Pnt3f at;
    osg::Vec3f up;
    getFromAtUp(from, at, up);

    from[axes.up] = at[axes.up];
    const osg::Vec3f view = from - at;
    // Right above the target there is no direction to measure; without this the two angles of zero
    // below would be taken for a full turn.
    if (isNearlyZero(view)) return 0.0F;

    const float distance = view.length();
    const osg::Vec3f right(distance, 0.0F, 0.0F);
    osg::Vec3f minusSide;
    minusSide[axes.side] = -distance;

    const float degree = degreesBetween(view, right);
    return degreesBetween(view, minusSide) < 90.0F ? 360.0F - degree : degree;
}
