// Colours in bytes are rounded; OpenSG cuts them off.
#include "opensg/held.h"

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGGeometry.h>

#include <gtest/gtest.h>

namespace {

TEST(EmbeddedGeoProperty, colorsInBytesAreRoundedAndBounded) {
    const Held<osg::GeoColors4ubPtr> bytes(osg::GeoColors4ub::create());
    bytes->push_back(osg::Color3f(0, .5f, 2));
    EXPECT_EQ((*bytes->getFieldPtr())[0], osg::Color4ub(0, 128, 255, 255));
    EXPECT_EQ(bytes->getValue(0)[2], 1.f);
}

} // namespace
