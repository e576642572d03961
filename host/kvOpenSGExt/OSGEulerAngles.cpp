// Rotations from three angles and back, in double precision between the float ends.
#include "OSGEulerAngles.h"

#include "OSGTransformAttachment.h"

#include <cmath>

OSG_BEGIN_NAMESPACE

namespace {

typedef EulerRotation::HalfTurn HalfTurn;

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

HalfTurn halfTurn(Real32 degrees) {
    const double half = double(degrees) * kDegreesToRadians / 2.0;
    return {std::sin(half), std::cos(half)};
}

Rotation aboutAxis(UInt32 axis, const HalfTurn& turn) {
    return {axis == 0 ? turn.sine : 0.0, axis == 1 ? turn.sine : 0.0, axis == 2 ? turn.sine : 0.0,
            turn.cosine};
}

/// b turns first, then a.
Rotation product(const Rotation& a, const Rotation& b) {
    return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
            a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
            a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w,
            a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

/// The product of the three in full, with the zeros that each turn about an axis has.
Quaternion fullProduct(const HalfTurn (&turns)[3], UInt32 first, UInt32 middle, UInt32 last) {
    const Rotation q =
        product(aboutAxis(last, turns[last]),
                product(aboutAxis(middle, turns[middle]), aboutAxis(first, turns[first])));
    Quaternion result;
    result.setValueAsQuat(static_cast<Real32>(q.x), static_cast<Real32>(q.y),
                          static_cast<Real32>(q.z), static_cast<Real32>(q.w));
    return result;
}

/// The same to the last bit, without the zeros where that can be: to add one changes no other
/// number, and the sine of a float other than 0 is so far from 0 that no product of those here
/// becomes one. Where a sine or cosine is zero itself the signs of zeros are at stake.
template <UInt32 first, UInt32 middle, UInt32 last>
Quaternion turned(const HalfTurn (&turns)[3]) {
    const HalfTurn& a = turns[first];
    const HalfTurn& b = turns[middle];
    const HalfTurn& c = turns[last];
    const double all = (a.sine * a.cosine) * (b.sine * b.cosine) * (c.sine * c.cosine);
    // False also for what is not a number.
    if (!(std::fabs(all) > 0.0)) return fullProduct(turns, first, middle, last);

    constexpr double handedness = (first + 1) % 3 == middle ? 1.0 : -1.0;
    const double aboutFirst = b.cosine * a.sine;
    const double aboutMiddle = b.sine * a.cosine;
    const double aboutLast = -handedness * (b.sine * a.sine);
    const double real = b.cosine * a.cosine;
    const double across = handedness * c.sine;
    Quaternion result;
    result[first] = static_cast<Real32>(c.cosine * aboutFirst - across * aboutMiddle);
    result[middle] = static_cast<Real32>(c.cosine * aboutMiddle + across * aboutFirst);
    result[last] = static_cast<Real32>(c.cosine * aboutLast + c.sine * real);
    result[3] = static_cast<Real32>(c.cosine * real - c.sine * aboutLast);
    return result;
}

/// Of the turn about each axis.
Quaternion inOrder(const HalfTurn (&turns)[3], Int32 order) {
    switch (order) {
    case TransformAttachment::XZY:
        return turned<0, 2, 1>(turns);
    case TransformAttachment::YXZ:
        return turned<1, 0, 2>(turns);
    case TransformAttachment::YZX:
        return turned<1, 2, 0>(turns);
    case TransformAttachment::ZXY:
        return turned<2, 0, 1>(turns);
    case TransformAttachment::ZYX:
        return turned<2, 1, 0>(turns);
    default:
        return turned<0, 1, 2>(turns);
    }
}

/// Whether two angles have the same sine, of which a zero keeps its sign.
bool isSameAngle(Real32 a, Real32 b) {
    return a == b && std::signbit(a) == std::signbit(b);
}

} // namespace

Quaternion EulerAngles::toQuaternion(const Vec3f& degrees, Int32 order) {
    HalfTurn turns[3];
    for (UInt32 axis = 0; axis < 3; ++axis)
        turns[axis] = halfTurn(degrees[axis]);
    return inOrder(turns, order);
}

Quaternion EulerRotation::toQuaternion(const Vec3f& degrees, Int32 order) {
    for (UInt32 axis = 0; axis < 3; ++axis) {
        if (isSameAngle(_degrees[axis], degrees[axis])) continue;
        _degrees[axis] = degrees[axis];
        _turns[axis] = halfTurn(degrees[axis]);
    }
    return inOrder(_turns, order);
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
