// Bounding boxes and spheres.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGDynamicVolume.h>
#include <OpenSG/OSGMatrix.h>
#include <OpenSG/OSGQuaternion.h>

#include <gtest/gtest.h>

namespace {

using osg::DynamicVolume;
using osg::Pnt3f;
using osg::Vec3f;

void expectBounds(const DynamicVolume& volume, const Pnt3f& low, const Pnt3f& high) {
    Pnt3f minimum, maximum;
    volume.getBounds(minimum, maximum);
    EXPECT_EQ(minimum, low);
    EXPECT_EQ(maximum, high);
}

/// The box between two corners.
DynamicVolume boxOf(const Pnt3f& low, const Pnt3f& high) {
    DynamicVolume volume;
    volume.extendBy(low);
    volume.extendBy(high);
    return volume;
}

TEST(DynamicVolume, isAnEmptyBoxByDefault) {
    const DynamicVolume volume;
    EXPECT_EQ(volume.getType(), DynamicVolume::BOX_VOLUME);
    EXPECT_TRUE(volume.isValid());
    EXPECT_TRUE(volume.isEmpty());
    expectBounds(volume, Pnt3f(), Pnt3f());
}

TEST(DynamicVolume, growsAroundPoints) {
    DynamicVolume volume;
    volume.extendBy(Pnt3f(1, 2, 3));
    expectBounds(volume, Pnt3f(1, 2, 3), Pnt3f(1, 2, 3));
    volume.extendBy(Pnt3f(-1, 5, 3));
    expectBounds(volume, Pnt3f(-1, 2, 3), Pnt3f(1, 5, 3));
    EXPECT_FALSE(volume.isEmpty());
}

TEST(DynamicVolume, growsAroundVolumesButNotEmptyOnes) {
    DynamicVolume volume;
    DynamicVolume other;
    volume.extendBy(other);
    EXPECT_TRUE(volume.isEmpty());
    other = boxOf(Pnt3f(1, 1, 1), Pnt3f(2, 2, 2));
    volume.extendBy(other);
    expectBounds(volume, Pnt3f(1, 1, 1), Pnt3f(2, 2, 2));
    volume.extendBy(DynamicVolume());
    expectBounds(volume, Pnt3f(1, 1, 1), Pnt3f(2, 2, 2));
    other.setInfinite();
    volume.extendBy(other);
    EXPECT_TRUE(volume.isInfinite());
}

TEST(DynamicVolume, staysWhatItIsWhileInvalidOrInfinite) {
    DynamicVolume volume;
    volume = boxOf(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    volume.setValid(false);
    volume.extendBy(Pnt3f(9, 9, 9));
    expectBounds(volume, Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    volume.setValid();
    volume.setInfinite();
    volume.extendBy(Pnt3f(9, 9, 9));
    expectBounds(volume, Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
}

TEST(DynamicVolume, isABoxAroundItsTransformedCorners) {
    DynamicVolume volume;
    volume = boxOf(Pnt3f(0, 0, 0), Pnt3f(1, 2, 3));
    osg::Matrix matrix;
    matrix.setTransform(Vec3f(10, 0, 0), osg::Quaternion(Vec3f(0, 0, 1), 1.57079633f));
    volume.transform(matrix);
    Pnt3f low, high;
    volume.getBounds(low, high);
    EXPECT_TRUE(low.equals(Pnt3f(8, 0, 0), 1e-5f)) << low;
    EXPECT_TRUE(high.equals(Pnt3f(10, 1, 3), 1e-5f)) << high;
}

} // namespace
