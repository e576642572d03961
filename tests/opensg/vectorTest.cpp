// Points, vectors and colours: construction that surprises, comparison within a tolerance, text.

#include <OpenSG/OSGColor.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGVector.h>

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <type_traits>

namespace {

using osg::Color3f;
using osg::Color4f;
using osg::Pnt3f;
using osg::Vec2f;
using osg::Vec3f;
using osg::Vec4f;

template <class T>
void expectExactly(const T& value, std::initializer_list<float> components) {
    osg::UInt32 i = 0;
    for (const float component : components) {
        EXPECT_EQ(value[i], component) << "component " << i;
        ++i;
    }
}

TEST(Vector, isZeroByDefault) {
    expectExactly(Vec2f(), {0, 0});
    expectExactly(Vec3f(), {0, 0, 0});
    expectExactly(Vec4f(), {0, 0, 0, 0});
}

TEST(Vector, ofOneNumberHasItInTheFirstComponentOnly) {
    expectExactly(Vec3f(5), {5, 0, 0});
    const Vec3f implicit = 2.f;
    expectExactly(implicit, {2, 0, 0});
    expectExactly(Vec3f(0.f), {0, 0, 0});
}

TEST(Vector, convertsBetweenPointsVectorsSizesAndMemory) {
    const Pnt3f point = Vec3f(1, 2, 3);
    const Vec3f vector = point;
    expectExactly(vector, {1, 2, 3});
    const Vec2f smaller = vector;
    expectExactly(smaller, {1, 2});
    const Vec4f larger = smaller;
    expectExactly(larger, {1, 2, 0, 0});
    const float numbers[] = {7, 8, 9};
    const Vec3f copied = numbers;
    expectExactly(copied, {7, 8, 9});
    const osg::Vec3d wide = vector;
    EXPECT_EQ(wide[2], 3.);
    EXPECT_TRUE((std::is_same<Vec3f, osg::Vector<float, 3>>::value));
    EXPECT_TRUE((std::is_base_of<Pnt3f, Vec3f>::value));
}

TEST(Vector, arithmeticGivesPointsOrVectors) {
    const Vec3f a(1, 2, 3);
    const Vec3f b(10, 20, 30);
    const Pnt3f p(5, 5, 5);
    EXPECT_TRUE((std::is_same<decltype(a + b), Vec3f>::value));
    EXPECT_TRUE((std::is_same<decltype(b - a), Vec3f>::value));
    EXPECT_TRUE((std::is_same<decltype(p + a), Pnt3f>::value));
    EXPECT_TRUE((std::is_same<decltype(p - a), Pnt3f>::value));
    EXPECT_TRUE((std::is_same<decltype(p - p), Vec3f>::value));
    expectExactly(a + b, {11, 22, 33});
    expectExactly(b - a, {9, 18, 27});
    expectExactly(-a, {-1, -2, -3});
    expectExactly(a * 2.f, {2, 4, 6});
    expectExactly(p + a, {6, 7, 8});
    expectExactly(p - a, {4, 3, 2});
    expectExactly(p - Pnt3f(1, 1, 1), {4, 4, 4});
    EXPECT_EQ(a * b, 140.f);
}

TEST(Vector, assigningOperatorsReturnNothing) {
    Vec3f v(1, 2, 3);
    EXPECT_TRUE((std::is_void<decltype(v += v)>::value));
    EXPECT_TRUE((std::is_void<decltype(v /= 2.f)>::value));
    v += Vec3f(1, 1, 1);
    v -= Vec3f(0, 1, 2);
    v *= 3.f;
    v /= 2.f;
    expectExactly(v, {3, 3, 3});
}

TEST(Vector, measures) {
    EXPECT_EQ(Vec3f(3, 4, 12).length(), 13.f);
    EXPECT_EQ(Vec3f(3, 4, 12).squareLength(), 169.f);
    EXPECT_EQ(Vec3f(1, 2, 3).dot(Vec3f(4, 5, 6)), 32.f);
    expectExactly(Vec3f(1, 0, 0).cross(Vec3f(0, 1, 0)), {0, 0, 1});
    EXPECT_EQ(Pnt3f(1, 1, 1).dist(Pnt3f(1, 4, 5)), 5.f);
    EXPECT_EQ(Pnt3f(1, 1, 1).dist2(Pnt3f(1, 4, 5)), 25.f);
    EXPECT_NEAR(Vec3f(2, 0, 0).enclosedAngle(Vec3f(0, 0, 9)), 1.5707963, 1e-6);
}

TEST(Vector, normalizeLeavesWhatIsShorterThanTheTolerance) {
    Vec3f v(0, 3, 4);
    v.normalize();
    EXPECT_EQ(v, Vec3f(0, .6f, .8f));
    Vec3f tooShort(9e-7f, 0, 0);
    tooShort.normalize();
    expectExactly(tooShort, {9e-7f, 0, 0});
    Vec3f longEnough(2e-6f, 0, 0);
    longEnough.normalize();
    EXPECT_NEAR(longEnough[0], 1, 1e-6);
}

TEST(Vector, isEqualWithinTheToleranceOfEachComponent) {
    EXPECT_TRUE(Vec3f(0, 0, 0) == Vec3f(9e-7f, -9e-7f, 9e-7f));
    EXPECT_FALSE(Vec3f(0, 0, 0) == Vec3f(0, 0, 1.1e-6f));
    EXPECT_TRUE(Vec3f(0, 0, 0) != Vec3f(0, 2e-6f, 0));
    EXPECT_TRUE(Vec3f(1, 2, 3).equals(Vec3f(1.4f, 2, 3), .5f));
    EXPECT_FALSE(Vec3f(1, 2, 3).equals(Vec3f(1.6f, 2, 3), .5f));
    EXPECT_TRUE(Vec3f(9e-7f, 0, 0).isZero());
    EXPECT_FALSE(Vec3f(2e-6f, 0, 0).isZero());
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(Vec3f(nan, 0, 0) == Vec3f(nan, 0, 0));
    EXPECT_FALSE(osg::Vec2ub(1, 0) == osg::Vec2ub(0, 0));
}

TEST(Vector, isOrderedByItsFirstDifference) {
    EXPECT_TRUE(Vec3f(1, 9, 9) < Vec3f(2, 0, 0));
    EXPECT_TRUE(Vec3f(1, 2, 3) < Vec3f(1, 2, 4));
    EXPECT_FALSE(Vec3f(1, 2, 3) < Vec3f(1, 2, 3));
    EXPECT_FALSE(Vec3f(2, 0, 0) < Vec3f(1, 9, 9));
}

TEST(Vector, accessors) {
    Vec4f v(1, 2, 3, 4);
    EXPECT_EQ(v.x() + v.y() + v.z() + v.w(), 10.f);
    v[1] = 20;
    EXPECT_EQ(v.getValues()[1], 20.f);
    v.setValues(4, 3, 2, 1);
    expectExactly(v, {4, 3, 2, 1});
    v.setNull();
    expectExactly(v, {0, 0, 0, 0});
}

TEST(Vector, setValueFromTextTakesWhatIsThere) {
    Vec3f v(7, 7, 7);
    v.setValueFromCString("1,x\t3 4");
    expectExactly(v, {1, 0, 3});
    v.setValueFromCString("2");
    expectExactly(v, {2, 0, 0});
}

TEST(Vector, isPrintedInTheFormatOfTheStream) {
    std::ostringstream stream;
    stream << Vec3f(1.5f, 2, 3) << '|' << osg::Vec2ub(65, 66) << '|' << Color3f(0, .5f, 1);
    EXPECT_EQ(stream.str(), "1.5, 2, 3|65, 66|0, 0.5, 1");
}

TEST(Color, isBlackByDefaultAndTransparent) {
    expectExactly(Color3f(), {0, 0, 0});
    expectExactly(Color4f(), {0, 0, 0, 0});
}

TEST(Color, accessors) {
    Color4f color(.1f, .2f, .3f, .4f);
    EXPECT_EQ(color.red(), .1f);
    EXPECT_EQ(color.green(), .2f);
    EXPECT_EQ(color.blue(), .3f);
    EXPECT_EQ(color.alpha(), .4f);
    color.setValuesRGBA(1, 2, 3, 4);
    EXPECT_EQ(color.getValuesRGBA()[3], 4.f);
    Color3f rgb;
    rgb.setValuesRGB(1, 2, 3);
    EXPECT_EQ(rgb.getValuesRGB()[2], 3.f);
    rgb[0] = 9;
    expectExactly(rgb, {9, 2, 3});
}

TEST(Color, computesByComponentAndClampsNothing) {
    const Color3f a(1, 2, 3);
    expectExactly(a + a, {2, 4, 6});
    expectExactly(a - 1.f, {0, 1, 2});
    expectExactly(a * a, {1, 4, 9});
    expectExactly(a * 2.f, {2, 4, 6});
    expectExactly(a / 2.f, {.5f, 1, 1.5f});
    expectExactly(a / a, {1, 1, 1});
    EXPECT_TRUE(a == Color3f(1, 2, 3.0000002f));
    EXPECT_TRUE(a != Color3f(1, 2, 3.1f));
}

} // namespace
