// Writes a value to a camera, upon which the library asks its host to activate it. Ends with 0 when
// the call arrived in this host's own library, with a message of its own.
#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGNode.h>

#include <kvAnimationController2.h>
#include <kvAnimationManager2.h>
#include <kvOpenSGUtils.h>
#include <OSGCameraSetting.h>

#include <cstdio>
#include <vector>

int main(int argc, char** argv) {
    if (!osg::osgInit(argc, argv)) return 2;
    osg::NodePtr node = osg::Node::create();
    osg::addRefCP(node);
    osg::beginEditCP(node);
    node->setCore(osg::CameraSetting::create());
    osg::endEditCP(node);

    kvAnimationManager2::AnimationMap map;
    map.node = node;
    map.attribute = "fromX";
    map.value = 3.0F;
    kvAnimationController2::execute(std::vector<kvAnimationManager2::AnimationMap>{map});
    map.node = osg::NullFC;
    osg::subRefCP(node);

    std::printf("%s, %d message\n", kvOpenSGUtils::lastCall().c_str(), kvMessage::filled());
    return kvOpenSGUtils::lastCall() == "activateCamera camNode" && kvMessage::filled() == 1 ? 0
                                                                                             : 1;
}
