// Points on the surface of a box are inside it; OpenSG 1.8 says no of the upper corner.
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGDynamicVolume.h>
#include <OpenSG/OSGMatrix.h>
#include <OpenSG/OSGQuaternion.h>

#include <gtest/gtest.h>

namespace {

using osg::DynamicVolume;
using osg::Pnt3f;
using osg::Vec3f;

/// The box between two corners.
DynamicVolume boxOf(const Pnt3f& low, const Pnt3f& high) {
    DynamicVolume volume;
    volume.extendBy(low);
    volume.extendBy(high);
    return volume;
}

TEST(EmbeddedDynamicVolume, containsWhatLiesInsideAndOnIt) {
    EXPECT_FALSE(DynamicVolume().intersect(Pnt3f()));
    const DynamicVolume volume = boxOf(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    EXPECT_TRUE(volume.intersect(Pnt3f(1, 1, 1)));
    EXPECT_FALSE(volume.intersect(Pnt3f(1.1f, 1, 1)));
}

} // namespace
