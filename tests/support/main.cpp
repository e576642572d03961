// The main function of every test program: the scene graph has to be running before the first test.
#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (!osg::osgInit(0, nullptr)) return 1;
    return RUN_ALL_TESTS();
}
