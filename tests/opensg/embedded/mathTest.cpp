// What only the embedded scene graph offers of volumes, colours and pointers: OpenSG reaches the
// shape of a volume through another object, and has no text form of colours outside of fields.

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGColor.h>
#include <OpenSG/OSGDynamicVolume.h>
#include <OpenSG/OSGNodePtr.h>
#include <OpenSG/OSGVector.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using osg::Color3f;
using osg::DynamicVolume;
using osg::Pnt3f;
using osg::Vec3f;

static_assert(std::is_trivially_destructible<osg::NodePtr>::value, "pointers leave nothing behind");

void expectBounds(const DynamicVolume& volume, const Pnt3f& low, const Pnt3f& high) {
    Pnt3f minimum, maximum;
    volume.getBounds(minimum, maximum);
    EXPECT_EQ(minimum, low);
    EXPECT_EQ(maximum, high);
}

TEST(EmbeddedVector, isZeroWithoutText) {
    Vec3f vector(7, 7, 7);
    vector.setValueFromCString(nullptr);
    EXPECT_EQ(vector, Vec3f(0, 0, 0));
}

TEST(EmbeddedColor, takesTextAndScalesFromTheLeft) {
    Color3f color(9, 9, 9);
    color.setValueFromCString("1 2");
    EXPECT_EQ(color, Color3f(1, 2, 0));
    EXPECT_EQ(2.f * color, Color3f(2, 4, 0));
}

TEST(EmbeddedVolume, sphereGrowsNoMoreThanItMust) {
    DynamicVolume volume(DynamicVolume::SPHERE_VOLUME);
    EXPECT_TRUE(volume.isEmpty());
    volume.setSphere(Pnt3f(0, 0, 0), 1);
    volume.extendBy(Pnt3f(.5f, 0, 0));
    EXPECT_EQ(volume.getRadius(), 1.f);
    volume.extendBy(Pnt3f(3, 0, 0));
    EXPECT_EQ(volume.getRadius(), 2.f);
    Pnt3f center;
    volume.getCenter(center);
    EXPECT_EQ(center, Pnt3f(1, 0, 0));
    expectBounds(volume, Pnt3f(-1, -2, -2), Pnt3f(3, 2, 2));
}

TEST(EmbeddedVolume, sphereContainsWhatLiesInsideAndOnIt) {
    DynamicVolume volume;
    volume.setSphere(Pnt3f(0, 0, 0), 2);
    EXPECT_TRUE(volume.intersect(Pnt3f(0, 2, 0)));
    EXPECT_FALSE(volume.intersect(Pnt3f(2, 2, 0)));
}

TEST(EmbeddedVolume, changesItsTypeAroundTheSameThings) {
    DynamicVolume volume;
    volume.setBounds(Pnt3f(-1, -2, -2), Pnt3f(1, 2, 2));
    volume.setVolumeType(DynamicVolume::SPHERE_VOLUME);
    EXPECT_EQ(volume.getType(), DynamicVolume::SPHERE_VOLUME);
    EXPECT_EQ(volume.getRadius(), 3.f);
    DynamicVolume empty;
    empty.setVolumeType(DynamicVolume::SPHERE_VOLUME);
    EXPECT_TRUE(empty.isEmpty());
}

} // namespace
