// The smallest program of a user: a curve with two keys, evaluated between them.
#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (!osg::osgInit(argc, argv)) return 1;
    kvAnimationCurve curve("translateX");
    curve.insertCP(0.0, 0.0);
    curve.insertCP(25.0, 10.0);
    const float value = kvAnimationManager2::computeCurveValue(&curve, 12.5f);
    std::printf("translateX at frame 12.5: %g\n", static_cast<double>(value));
    return value == 6.875F ? 0 : 1;
}
