// Rotations from three angles and back, in double precision between the float ends.
#include "OSGEulerAngles.h"

#include "OSGTransformAttachment.h"

#include <cmath>

OSG_BEGIN_NAMESPACE

namespace {

constexpr double kDegreesToRadians = 3.14159265358979323846 / 180.0;

/// The axes (0 is x) in the order in which they turn, and whether that order is cyclic.
struct Axes {
    UInt32 first, middle, last;
    double handedness; ///< 1 for a cyclic order, else -1
};

Axes axesOf(Int32 order) {
    switch (order) {
    case TransformAttachment::XZY:
        return {0, 2, 1, -1.0};
    case TransformAttachment::YXZ:
        return {1, 0, 2, -1.0};
    case TransformAttachment::YZX:
        return {1, 2, 0, 1.0};
    case TransformAttachment::ZXY:
        return {2, 0, 1, 1.0};
    case TransformAttachment::ZYX:
        return {2, 1, 0, -1.0};
    default:
        return {0, 1, 2, 1.0};
    }
}

struct Rotation {
    double x, y, z, w;
};

double halfInRadians(Real32 degrees) {
    return double(degrees) * kDegreesToRadians / 2.0;
}

Rotation aboutAxis(UInt32 axis, double sine, double cosine) {
    return {axis == 0 ? sine : 0.0, axis == 1 ? sine : 0.0, axis == 2 ? sine : 0.0, cosine};
}

/// b turns first, then a.
Rotation product(const Rotation& a, const Rotation& b) {
    return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
            a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
            a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w,
            a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

/// Of the rotation about each axis.
Quaternion inOrder(const Rotation (&turns)[3], Int32 order) {
    const Axes axes = axesOf(order);
    const Rotation q = product(turns[axes.last], product(turns[axes.middle], turns[axes.first]));
    Quaternion result;
    result.setValueAsQuat(static_cast<Real32>(q.x), static_cast<Real32>(q.y),
                          static_cast<Real32>(q.z), static_cast<Real32>(q.w));
    return result;
}

/// Whether two angles have the same sine, of which a zero keeps its sign.
bool isSameAngle(Real32 a, Real32 b) {
    return a == b && std::signbit(a) == std::signbit(b);
}

} // namespace

Quaternion EulerAngles::toQuaternion(const Vec3f& degrees, Int32 order) {
    Rotation turns[3];
    for (UInt32 axis = 0; axis < 3; ++axis) {
        const double half = halfInRadians(degrees[axis]);
        turns[axis] = aboutAxis(axis, std::sin(half), std::cos(half));
    }
    return inOrder(turns, order);
}

Quaternion EulerRotation::toQuaternion(const Vec3f& degrees, Int32 order) {
    Rotation turns[3];
    for (UInt32 axis = 0; axis < 3; ++axis) {
        Turn& turn = _turns[axis];
        if (!isSameAngle(turn.degrees, degrees[axis])) {
            const double half = halfInRadians(degrees[axis]);
            turn = {degrees[axis], std::sin(half), std::cos(half)};
        }
        turns[axis] = aboutAxis(axis, turn.sine, turn.cosine);
    }
    return inOrder(turns, order);
}

Vec3f EulerAngles::fromQuaternion(const Quaternion& rotation, Int32 order) {
    const double x = rotation[0], y = rotation[1], z = rotation[2], w = rotation[3];
    const double squared = x * x + y * y + z * z + w * w;
    // Also false for a quaternion that is not a number.
    if (!(squared > 0.0)) return Vec3f(0.0f, 0.0f, 0.0f);
    const double s = 2.0 / squared;
    const double m[3][3] = {{1.0 - s * (y * y + z * z), s * (x * y - z * w), s * (x * z + y * w)},
                            {s * (x * y + z * w), 1.0 - s * (x * x + z * z), s * (y * z - x * w)},
                            {s * (x * z - y * w), s * (y * z + x * w), 1.0 - s * (x * x + y * y)}};

    const auto [i, j, k, sign] = axesOf(order);
    const double cosine = std::hypot(m[i][i], m[j][i]);
    double first, last;
    // In single precision a middle angle of 90 leaves the cosine near 1e-4; below, the directions
    // of the other two angles are noise.
    if (cosine > 2e-4) {
        first = std::atan2(sign * m[k][j], m[k][k]);
        last = std::atan2(sign * m[j][i], m[i][i]);
    } else {
        first = std::atan2(-sign * m[j][k], m[j][j]);
        last = 0.0;
    }
    const double middle = std::atan2(-sign * m[k][i], cosine);

    Vec3f degrees;
    degrees[i] = static_cast<Real32>(first / kDegreesToRadians);
    degrees[j] = static_cast<Real32>(middle / kDegreesToRadians);
    degrees[k] = static_cast<Real32>(last / kDegreesToRadians);
    return degrees;
}

OSG_END_NAMESPACE
