// Texts of volumes: OpenSG 1.8 gets numbers of its own text wrong.
#include <OpenSG/OSGBaseFieldDataType.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGMathFieldDataType.h>
#include <OpenSG/OSGSysFieldDataType.h>
#include <OpenSG/OSGVecFieldDataType.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace {

template <class T, template <class> class Traits = osg::FieldDataTraits>
std::string textOf(const T& value) {
    std::string text("left over");
    Traits<T>::putToString(value, text);
    return text;
}

template <class T, template <class> class Traits = osg::FieldDataTraits>
T parsed(const char* text, T start = T()) {
    Traits<T>::getFromString(start, text);
    return start;
}

TEST(EmbeddedVolumeText, isABoxOfSixOrASphereOfFourNumbers) {
    osg::DynamicVolume volume;
    EXPECT_EQ(textOf(volume), "0.000000e+00 0.000000e+00 0.000000e+00 "
                              "0.000000e+00 0.000000e+00 0.000000e+00");
    volume = parsed<osg::DynamicVolume>("1 2 3 4 5 6");
    EXPECT_EQ(volume.getType(), osg::DynamicVolume::BOX_VOLUME);
    EXPECT_EQ(textOf(volume), "1.000000e+00 2.000000e+00 3.000000e+00 "
                              "4.000000e+00 5.000000e+00 6.000000e+00");
    volume = parsed<osg::DynamicVolume>("1 2 3 4");
    EXPECT_EQ(volume.getType(), osg::DynamicVolume::SPHERE_VOLUME);
    EXPECT_EQ(textOf(volume), "1.000000e+00 2.000000e+00 3.000000e+00 4.000000e+00");
}

} // namespace
