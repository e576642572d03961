// Rotations and matrices. Numbers marked as OpenSG's stand in a scene file that OpenSG 1.8 wrote.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGMatrix.h>
#include <OpenSG/OSGQuaternion.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

namespace {

using osg::Matrix;
using osg::Pnt3f;
using osg::Quaternion;
using osg::Vec3f;
using osg::Vec4f;

const float kQuarter = 1.57079633f;

void expectNear(const Matrix& a, const Matrix& b, float tolerance) {
    EXPECT_TRUE(a.equals(b, tolerance)) << a << "instead of\n" << b;
}

void expectNear(const Vec3f& a, const Vec3f& b, float tolerance) {
    EXPECT_TRUE(a.equals(b, tolerance)) << a << " instead of " << b;
}

TEST(Quaternion, isTheIdentityByDefault) {
    const Quaternion q;
    EXPECT_EQ(q[0], 0.f);
    EXPECT_EQ(q[1], 0.f);
    EXPECT_EQ(q[2], 0.f);
    EXPECT_EQ(q[3], 1.f);
}

TEST(Quaternion, setsAndGivesAxisAndAngle) {
    Quaternion q(Vec3f(0, 2, 0), kQuarter);
    EXPECT_NEAR(q[1], std::sqrt(.5), 1e-6);
    EXPECT_NEAR(q[3], std::sqrt(.5), 1e-6);
    float x = 9, y = 9, z = 9, angle = 9;
    q.getValueAsAxisRad(x, y, z, angle);
    expectNear(Vec3f(x, y, z), Vec3f(0, 1, 0), 1e-6f);
    EXPECT_NEAR(angle, kQuarter, 1e-6);
    q.getValueAsAxisDeg(x, y, z, angle);
    EXPECT_NEAR(angle, 90, 1e-4);
    q.setValueAsAxisDeg(0, 0, 1, 180);
    EXPECT_NEAR(q[2], 1, 1e-6);
    q.setValueAsQuat(1, 2, 3, 4);
    q.getValueAsQuat(x, y, z, angle);
    EXPECT_EQ(angle, 4.f);
}

TEST(Quaternion, withAnAxisTooShortIsTheIdentity) {
    EXPECT_EQ(Quaternion(Vec3f(0, 0, 0), 1), Quaternion());
    EXPECT_EQ(Quaternion(Vec3f(9e-7f, 0, 0), 1), Quaternion());
    EXPECT_NE(Quaternion(Vec3f(2e-6f, 0, 0), 1), Quaternion());
}

TEST(Quaternion, identityHasTheAxisZ) {
    float x = 9, y = 9, z = 9, angle = 9;
    Quaternion().getValueAsAxisRad(x, y, z, angle);
    EXPECT_EQ(Vec3f(x, y, z), Vec3f(0, 0, 1));
    EXPECT_EQ(angle, 0.f);
}

TEST(Quaternion, multTurnsByTheOtherFirst) {
    Quaternion q(Vec3f(0, 0, 1), kQuarter);
    q.mult(Quaternion(Vec3f(1, 0, 0), kQuarter));
    Vec3f result;
    q.multVec(Vec3f(0, 1, 0), result);
    expectNear(result, Vec3f(0, 0, 1), 1e-6f); // y to z, which the turn about z keeps
    q.multVec(Vec3f(0, 0, 1), result);
    expectNear(result, Vec3f(1, 0, 0), 1e-6f); // z to -y, then to x
}

TEST(Quaternion, invertTurnsBack) {
    const Quaternion q(Vec3f(1, 2, 3), 1.2f);
    Quaternion back(q);
    back.invert();
    back.mult(q);
    EXPECT_EQ(back, Quaternion());
}

TEST(Quaternion, multVecMayWriteOntoItsSource) {
    Vec3f v(1, 0, 0);
    Quaternion(Vec3f(0, 0, 1), kQuarter).multVec(v, v);
    expectNear(v, Vec3f(0, 1, 0), 1e-6f);
}

TEST(Quaternion, agreesWithItsMatrix) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> number(-1, 1);
    for (int i = 0; i < 500; ++i) {
        const Quaternion q(Vec3f(number(random), number(random), number(random)),
                           3.1f * number(random));
        Matrix m;
        m.setRotate(q);
        const Vec3f v(number(random), number(random), number(random));
        Vec3f byMatrix;
        Vec3f byQuaternion;
        m.mult(v, byMatrix);
        q.multVec(v, byQuaternion);
        expectNear(byMatrix, byQuaternion, 2e-6f);
        const Quaternion again(m);
        Matrix n;
        n.setRotate(again);
        expectNear(n, m, 2e-6f);
    }
}

TEST(Quaternion, takesOneDirectionIntoAnother) {
    Vec3f result;
    Quaternion(Vec3f(2, 0, 0), Vec3f(0, 5, 0)).multVec(Vec3f(1, 0, 0), result);
    expectNear(result, Vec3f(0, 1, 0), 1e-6f);
    Quaternion(Vec3f(1, 0, 0), Vec3f(-1, 0, 0)).multVec(Vec3f(1, 0, 0), result);
    expectNear(result, Vec3f(-1, 0, 0), 1e-6f);
}

TEST(Quaternion, slerpTakesTheShorterArc) {
    const Quaternion a;
    const Quaternion b(Vec3f(0, 0, 1), 1.f);
    EXPECT_EQ(Quaternion::slerp(a, b, 0), a);
    EXPECT_EQ(Quaternion::slerp(a, b, 1), b);
    EXPECT_EQ(Quaternion::slerp(a, b, .25f), Quaternion(Vec3f(0, 0, 1), .25f));
    Quaternion minus;
    minus.setValueAsQuat(-b[0], -b[1], -b[2], -b[3]);
    EXPECT_EQ(Quaternion::slerp(a, minus, .25f), Quaternion(Vec3f(0, 0, 1), .25f));
}

TEST(Matrix, isTheIdentityByDefault) {
    const Matrix m;
    for (osg::UInt32 c = 0; c < 4; ++c)
        for (osg::UInt32 r = 0; r < 4; ++r)
            EXPECT_EQ(m[c][r], c == r ? 1.f : 0.f);
}

TEST(Matrix, takesRowsAndStoresColumns) {
    const Matrix m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    EXPECT_EQ(m[3], Vec4f(4, 8, 12, 16));
    EXPECT_EQ(m[0], Vec4f(1, 5, 9, 13));
    EXPECT_EQ(m.getValues()[1], 5.f);
}

TEST(Matrix, settersChangeTheirPartOnly) {
    Matrix m;
    m.setTranslate(1, 2, 3);
    m.setScale(4, 5, 6);
    EXPECT_EQ(m, Matrix(4, 0, 0, 1, 0, 5, 0, 2, 0, 0, 6, 3, 0, 0, 0, 1));
    m.setRotate(Quaternion());
    EXPECT_EQ(m, Matrix(1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1));
}

TEST(Matrix, setTransformGivesTheNumbersThatOpenSGWrites) {
    Matrix m;
    m.setTransform(Vec3f(1.5f, -2.25f, 3), Quaternion(Vec3f(0, 1, 0), .5f), Vec3f(1, 2, .5f),
                   Quaternion(), Vec3f());
    const float columns[16] = {
        0.8775825500488281f,  0, -0.4794255495071411f, 0, 0,    2,      0, 0,
        0.23971277475357056f, 0, 0.43879127502441406f, 0, 1.5f, -2.25f, 3, 1};
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(m.getValues()[i], columns[i]) << i;
}

TEST(Matrix, setTransformTurnsAndScalesAboutTheCenter) {
    Matrix m;
    m.setTransform(Vec3f(10, 0, 0), Quaternion(Vec3f(0, 0, 1), kQuarter), Vec3f(2, 2, 2),
                   Quaternion(), Vec3f(1, 1, 0));
    Pnt3f p;
    m.mult(Pnt3f(1, 1, 0), p);
    expectNear(p, Vec3f(11, 1, 0), 1e-5f);
    m.mult(Pnt3f(2, 1, 0), p);
    expectNear(p, Vec3f(11, 3, 0), 1e-5f);
}

TEST(Matrix, scaleOrientationTurnsTheAxesOfTheScale) {
    Matrix m;
    // Twice as long along the diagonal of x and y.
    m.setTransform(Vec3f(), Quaternion(), Vec3f(2, 1, 1), Quaternion(Vec3f(0, 0, 1), kQuarter / 2));
    expectNear(m, Matrix(1.5f, .5f, 0, 0, .5f, 1.5f, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1), 1e-6f);
}

TEST(Matrix, getTransformGivesBackPlainParts) {
    Matrix m;
    const Vec3f translation(1, 2, 3);
    const Quaternion rotation(Vec3f(1, 1, 0), .7f);
    const Vec3f scale(3, 1, 2);
    m.setTransform(translation, rotation, scale);
    Vec3f t, s;
    Quaternion r, so;
    m.getTransform(t, r, s, so, Vec3f());
    expectNear(t, translation, 1e-6f);
    expectNear(s, scale, 2e-6f);
    EXPECT_TRUE(r.equals(rotation, 2e-6f));
    EXPECT_EQ(so, Quaternion());
}

TEST(Matrix, getTransformKeepsTheCenterThatItIsGiven) {
    Matrix m;
    const Vec3f center(4, -5, 6);
    m.setTransform(Vec3f(1, 2, 3), Quaternion(Vec3f(0, 1, 0), 1), Vec3f(2, 2, 2), Quaternion(),
                   center);
    Vec3f t, s;
    Quaternion r, so;
    m.getTransform(t, r, s, so, center);
    expectNear(t, Vec3f(1, 2, 3), 1e-5f);
    expectNear(s, Vec3f(2, 2, 2), 2e-6f);
    EXPECT_TRUE(r.equals(Quaternion(Vec3f(0, 1, 0), 1), 2e-6f));
}

TEST(Matrix, mirroringGivesNegativeScales) {
    Matrix m;
    m.setScale(-1, 2, 3);
    Vec3f t, s;
    Quaternion r, so;
    m.getTransform(t, r, s, so, Vec3f());
    EXPECT_EQ(s, Vec3f(-1, -2, -3));
    Matrix again;
    again.setTransform(t, r, s, so);
    EXPECT_EQ(again, m);
}

TEST(Matrix, thatIsNotFiniteIsTakenApartWithoutHanging) {
    Matrix m;
    m[0][0] = std::numeric_limits<float>::quiet_NaN();
    m[1][0] = std::numeric_limits<float>::infinity();
    Vec3f t, s;
    Quaternion r, so;
    m.getTransform(t, r, s, so);
    EXPECT_EQ(t, Vec3f());
}

TEST(Matrix, multAppliesTheOtherFirst) {
    Matrix translate;
    translate.setTranslate(1, 0, 0);
    Matrix turn;
    turn.setRotate(Quaternion(Vec3f(0, 0, 1), kQuarter));
    Matrix m(translate);
    m.mult(turn);
    Pnt3f p;
    m.mult(Pnt3f(1, 0, 0), p);
    expectNear(p, Vec3f(1, 1, 0), 1e-6f);
    m = translate;
    m.multLeft(turn);
    m.mult(Pnt3f(1, 0, 0), p);
    expectNear(p, Vec3f(0, 2, 0), 1e-6f);
}

TEST(Matrix, pointsAreMovedAndDirectionsAreNot) {
    Matrix m;
    m.setTranslate(1, 2, 3);
    Pnt3f p(1, 1, 1);
    m.mult(p, p);
    EXPECT_EQ(p, Pnt3f(2, 3, 4));
    Vec3f v(1, 1, 1);
    m.mult(v, v);
    EXPECT_EQ(v, Vec3f(1, 1, 1));
}

TEST(Matrix, invertUndoes) {
    Matrix m;
    m.setTransform(Vec3f(1, 2, 3), Quaternion(Vec3f(3, 2, 1), 2), Vec3f(1, 2, 4));
    Matrix inverse(m);
    EXPECT_TRUE(inverse.invert());
    inverse.mult(m);
    expectNear(inverse, Matrix(), 2e-6f);
}

TEST(Matrix, isEqualWithinTheTolerance) {
    Matrix m;
    m[2][1] = 9e-7f;
    EXPECT_TRUE(m == Matrix());
    m[2][1] = 1.1e-6f;
    EXPECT_TRUE(m != Matrix());
}

} // namespace
