// A curve by itself: two keys, and the value between them.
#include <OpenSG/OSGConfig.h>

#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (!osg::osgInit(argc, argv)) return 1;
    //! [curve]
    kvAnimationCurve* curve = new kvAnimationCurve("translateX"); // one scalar over frames
    curve->insertCP(0.0, 0.0);
    curve->insertCP(25.0, 10.0);
    float x = kvAnimationManager2::computeCurveValue(curve, 12.5f); // x at frame 12.5
    //! [curve]
    delete curve;
    std::printf("translateX at frame 12.5: %g\n", static_cast<double>(x));
    // The first key's handle points at the second; the last key's is level: it eases out only.
    return x == 6.875F ? 0 : 1;
}
