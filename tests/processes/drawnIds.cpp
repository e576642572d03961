// Prints the identifiers that a process gives to the objects it makes, one a line. With a number as
// its argument it seeds the standard library's generator first, which the library never does.

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>
#include <kvAnimationSequence2.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGConfig.h>

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    if (argc > 1) std::srand(static_cast<unsigned>(std::atoi(argv[1])));
    for (int i = 0; i < 100; ++i)
        std::cout << kvAnimationManager2::createUniqueId() << '\n';

    if (!osg::osgInit(0, nullptr)) return 1;
    kvAnimationManager2& manager = kvAnimationManager2::_the;
    kvAnimationCurve curve("translateX");
    for (int i = 0; i < 100; ++i)
        curve.insertCP(i, i);
    manager.addCurve(&curve);
    for (const kvControlPoint& key : curve.getCPs())
        std::cout << key.getId() << '\n';
    kvAnimationBlock block("block");
    block.addCurve(new kvAnimationCurve(curve));
    manager.addAnimationBlock(&block);
    kvAnimationClip clip("clip");
    clip.addBlock(new kvAnimationBlock(block));
    clip.addSequence(new kvAnimationSequence2("step"));
    manager.addClip(&clip);
    const kvAnimationClip copy(clip);
    std::cout << curve.getId() << '\n' << block.getId() << '\n' << clip.getId() << '\n';
    std::cout << block.getLastInsertedCurve()->getId() << '\n' << copy.getId() << '\n';
    for (const kvAnimationSequence2* item : clip.getSequences(false, false))
        std::cout << item->getId() << '\n';
    manager.clear(true);
    osg::osgExit();
    return 0;
}
