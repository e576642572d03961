// Matrices at the edges, where OpenSG 1.8 gives up: singular ones come apart wrongly and become the
// identity when they are inverted; points are not divided by w; rows are printed with a blank
// behind.
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

void expectNear(const Matrix& a, const Matrix& b, float tolerance) {
    EXPECT_TRUE(a.equals(b, tolerance)) << a << "instead of\n" << b;
}

void expectNear(const Vec3f& a, const Vec3f& b, float tolerance) {
    EXPECT_TRUE(a.equals(b, tolerance)) << a << " instead of " << b;
}

TEST(EmbeddedMatrix, everyPlainOrSkewedMatrixIsTheProductOfItsParts) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> number(-2, 2);
    for (int i = 0; i < 2000; ++i) {
        Matrix m;
        for (osg::UInt32 c = 0; c < 4; ++c)
            for (osg::UInt32 row = 0; row < 3; ++row)
                m[c][row] = number(random);
        if (i % 5 == 0) m[1] = m[0]; // flat
        const Vec3f center(number(random), number(random), number(random));
        Vec3f t, s;
        Quaternion r, so;
        m.getTransform(t, r, s, so, center);
        Matrix again;
        again.setTransform(t, r, s, so, center);
        expectNear(again, m, 2e-5f);
        EXPECT_NEAR(r.length(), 1, 1e-5);
        EXPECT_NEAR(so.length(), 1, 1e-5);
    }
}

TEST(EmbeddedMatrix, flatMatricesHaveARotationNevertheless) {
    const Vec3f scales[] = {{0, 1, 2}, {1, 0, 2}, {1, 2, 0}, {0, 0, 3},
                            {0, 3, 0}, {3, 0, 0}, {0, 0, 0}};
    const Quaternion rotation(Vec3f(1, 2, 3), .9f);
    for (const Vec3f& scale : scales) {
        Matrix m;
        m.setTransform(Vec3f(1, 2, 3), rotation, scale);
        Vec3f t, s;
        Quaternion r, so;
        m.getTransform(t, r, s, so, Vec3f());
        expectNear(s, scale, 1e-6f);
        EXPECT_NEAR(r.length(), 1, 1e-5);
        Matrix again;
        again.setTransform(t, r, s, so);
        expectNear(again, m, 2e-6f);
    }
}

TEST(EmbeddedMatrix, perspectiveDividesPoints) {
    Matrix m;
    m[2][3] = 1; // w = z + 1
    Pnt3f p;
    m.mult(Pnt3f(2, 4, 1), p);
    EXPECT_EQ(p, Pnt3f(1, 2, .5f));
}

TEST(EmbeddedMatrix, withoutAnInverseStaysAsItIs) {
    const Matrix flat(1, 2, 3, 0, 2, 4, 6, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    Matrix m(flat);
    EXPECT_FALSE(m.invert());
    EXPECT_EQ(m, flat);
}

TEST(EmbeddedMatrix, isPrintedAsFourRows) {
    Matrix m;
    m.setTranslate(1.5f, -22, 3);
    std::ostringstream stream;
    stream << m << 0.123456789;
    EXPECT_EQ(stream.str(), "   1.000    0.000    0.000    1.500\n"
                            "   0.000    1.000    0.000  -22.000\n"
                            "   0.000    0.000    1.000    3.000\n"
                            "   0.000    0.000    0.000    1.000\n"
                            "0.123457");
}

} // namespace
