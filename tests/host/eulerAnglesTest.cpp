// Rotations from three angles and back, against products of plain rotation matrices.
#include <OSGEulerAngles.h>
#include <OSGTransformAttachment.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

typedef std::array<std::array<double, 3>, 3> Matrix3;

const int kAxesOf[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};

Matrix3 product(const Matrix3& a, const Matrix3& b) {
    Matrix3 r{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            for (std::size_t k = 0; k < 3; ++k)
                r[i][j] += a[i][k] * b[k][j];
    return r;
}

Matrix3 about(int axis, double degrees) {
    const double a = degrees * std::acos(-1.0) / 180.0;
    const double c = std::cos(a), s = std::sin(a);
    if (axis == 0) return {{{1, 0, 0}, {0, c, -s}, {0, s, c}}};
    if (axis == 1) return {{{c, 0, s}, {0, 1, 0}, {-s, 0, c}}};
    return {{{c, -s, 0}, {s, c, 0}, {0, 0, 1}}};
}

Matrix3 expected(const osg::Vec3f& degrees, int order) {
    Matrix3 r{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    for (const int axis : kAxesOf[order])
        r = product(about(axis, degrees[static_cast<osg::UInt32>(axis)]), r);
    return r;
}

/// The columns are where the quaternion takes the axes: v + 2 u x (u x v + w v).
Matrix3 matrixOf(const osg::Quaternion& q) {
    const double u[3] = {q[0], q[1], q[2]}, w = q[3];
    const auto cross = [](const double* a, const double* b, double* r) {
        r[0] = a[1] * b[2] - a[2] * b[1];
        r[1] = a[2] * b[0] - a[0] * b[2];
        r[2] = a[0] * b[1] - a[1] * b[0];
    };
    Matrix3 m{};
    for (std::size_t column = 0; column < 3; ++column) {
        double v[3] = {0, 0, 0}, inner[3], outer[3];
        v[column] = 1.0;
        cross(u, v, inner);
        for (std::size_t i = 0; i < 3; ++i)
            inner[i] += w * v[i];
        cross(u, inner, outer);
        for (std::size_t i = 0; i < 3; ++i)
            m[i][column] = v[i] + 2.0 * outer[i];
    }
    return m;
}

/// x, y, z, w.
typedef std::array<double, 4> Quaternion4;

/// b turns first, then a.
Quaternion4 product(const Quaternion4& a, const Quaternion4& b) {
    return {a[3] * b[0] + a[0] * b[3] + a[1] * b[2] - a[2] * b[1],
            a[3] * b[1] - a[0] * b[2] + a[1] * b[3] + a[2] * b[0],
            a[3] * b[2] + a[0] * b[1] - a[1] * b[0] + a[2] * b[3],
            a[3] * b[3] - a[0] * b[0] - a[1] * b[1] - a[2] * b[2]};
}

/// Every term of the product, those with zeros too.
Quaternion4 spelledOut(const osg::Vec3f& degrees, int order) {
    Quaternion4 turns[3] = {};
    for (osg::UInt32 axis = 0; axis < 3; ++axis) {
        const double half = double(degrees[axis]) * (3.14159265358979323846 / 180.0) / 2.0;
        turns[axis][axis] = std::sin(half);
        turns[axis][3] = std::cos(half);
    }
    const int* const axes = kAxesOf[order < 0 || order > 5 ? 0 : order];
    return product(turns[axes[2]], product(turns[axes[1]], turns[axes[0]]));
}

void expectNear(const Matrix3& a, const Matrix3& b, double tolerance) {
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            EXPECT_NEAR(a[i][j], b[i][j], tolerance);
}

TEST(EulerAngles, xTurnsFirstByDefault) {
    // The y axis: 90 about x takes it to z, then 90 about y takes it to x.
    const osg::Quaternion q = osg::EulerAngles::toQuaternion(osg::Vec3f(90.0f, 90.0f, 0.0f), -1);
    const Matrix3 m = matrixOf(q);
    EXPECT_NEAR(m[0][1], 1.0, 1e-6);
    EXPECT_NEAR(m[1][1], 0.0, 1e-6);
    EXPECT_NEAR(m[2][1], 0.0, 1e-6);
}

TEST(EulerAngles, everyOrderTurnsAboutFixedAxesOneAfterTheOther) {
    const osg::Vec3f degrees(25.0f, -70.0f, 140.0f);
    for (int order = 0; order < 6; ++order) {
        SCOPED_TRACE(order);
        expectNear(matrixOf(osg::EulerAngles::toQuaternion(degrees, order)),
                   expected(degrees, order), 1e-6);
    }
}

TEST(EulerAngles, anUnknownOrderCountsAsXyz) {
    const osg::Vec3f degrees(25.0f, -70.0f, 140.0f);
    for (const int order : {-1, 6, 1000})
        expectNear(matrixOf(osg::EulerAngles::toQuaternion(degrees, order)), expected(degrees, 0),
                   1e-6);
}

TEST(EulerAngles, anglesWithinTheirRangesComeBack) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> full(-179.0f, 179.0f), half(-88.0f, 88.0f);
    for (int order = 0; order < 6; ++order) {
        for (int i = 0; i < 200; ++i) {
            osg::Vec3f degrees(full(random), full(random), full(random));
            degrees[static_cast<osg::UInt32>(kAxesOf[order][1])] = half(random);
            const osg::Vec3f back = osg::EulerAngles::fromQuaternion(
                osg::EulerAngles::toQuaternion(degrees, order), order);
            for (osg::UInt32 c = 0; c < 3; ++c)
                EXPECT_NEAR(back[c], degrees[c], 0.002) << "order " << order;
        }
    }
}

TEST(EulerAngles, whereTheMiddleAngleIsARightAngleTheRotationStillComesBack) {
    for (int order = 0; order < 6; ++order) {
        for (const float middle : {90.0f, -90.0f}) {
            SCOPED_TRACE(order);
            osg::Vec3f degrees(20.0f, 20.0f, 20.0f);
            degrees[static_cast<osg::UInt32>(kAxesOf[order][1])] = middle;
            degrees[static_cast<osg::UInt32>(kAxesOf[order][2])] = 65.0f;
            const osg::Vec3f back = osg::EulerAngles::fromQuaternion(
                osg::EulerAngles::toQuaternion(degrees, order), order);
            EXPECT_EQ(back[static_cast<osg::UInt32>(kAxesOf[order][2])], 0.0f);
            expectNear(expected(back, order), expected(degrees, order), 1e-3);
        }
    }
}

TEST(EulerAngles, ofNoRotationAreZero) {
    osg::Quaternion zero;
    zero.setValueAsQuat(0.0f, 0.0f, 0.0f, 0.0f);
    for (const osg::Quaternion& q : {osg::Quaternion(), zero}) {
        const osg::Vec3f degrees = osg::EulerAngles::fromQuaternion(q, 0);
        for (osg::UInt32 c = 0; c < 3; ++c)
            EXPECT_EQ(degrees[c], 0.0f);
    }
}

TEST(EulerAngles, areTheProductOfThreeTurnsToTheLastBit) {
    const float special[] = {0.0F,
                             -0.0F,
                             90.0F,
                             -180.0F,
                             360.0F,
                             std::numeric_limits<float>::infinity(),
                             std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::denorm_min(),
                             -std::numeric_limits<float>::denorm_min(),
                             (std::numeric_limits<float>::max)()};
    std::mt19937 random(5);
    std::uniform_real_distribution<float> anyAngle(-720.0F, 720.0F);
    for (int i = 0; i < 100000; ++i) {
        osg::Vec3f degrees;
        for (osg::UInt32 axis = 0; axis < 3; ++axis)
            degrees[axis] = random() % 3 == 0 ? special[random() % 10] : anyAngle(random);
        const int order = static_cast<int>(random() % 8) - 1;
        const osg::Quaternion quick = osg::EulerAngles::toQuaternion(degrees, order);
        const Quaternion4 literal = spelledOut(degrees, order);
        for (osg::UInt32 c = 0; c < 4; ++c) {
            const float a = quick[c], b = static_cast<float>(literal[c]);
            if (std::isnan(a) && std::isnan(b)) continue;
            ASSERT_EQ(std::memcmp(&a, &b, sizeof(a)), 0) << i << ": " << a << " and " << b;
        }
    }
}

TEST(EulerRotation, isThatOfTheAnglesToTheLastBit) {
    const float special[] = {0.0F,
                             -0.0F,
                             90.0F,
                             std::numeric_limits<float>::infinity(),
                             std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::denorm_min()};
    std::mt19937 random(3);
    std::uniform_real_distribution<float> anyAngle(-720.0F, 720.0F);
    osg::EulerRotation rotation;
    osg::Vec3f degrees(0, 0, 0);
    for (int i = 0; i < 5000; ++i) {
        const auto axis = static_cast<osg::UInt32>(random() % 3);
        degrees[axis] = random() % 4 == 0 ? special[random() % 6] : anyAngle(random);
        const int order = static_cast<int>(random() % 7);
        const osg::Quaternion fast = rotation.toQuaternion(degrees, order);
        const osg::Quaternion plain = osg::EulerAngles::toQuaternion(degrees, order);
        for (osg::UInt32 c = 0; c < 4; ++c) {
            const float a = fast[c], b = plain[c];
            // The sign of what is no number is nobody's business.
            if (std::isnan(a) && std::isnan(b)) continue;
            ASSERT_EQ(std::memcmp(&a, &b, sizeof(a)), 0) << i << ": " << a << " and " << b;
        }
    }
}

} // namespace
