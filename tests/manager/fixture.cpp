#include "manager/fixture.h"

#include <OpenSG/OSGGroup.h>

namespace kv::test {

SceneTest::SceneTest() : root(osg::Node::create()) {
    osg::addRefCP(root);
    osg::beginEditCP(root, osg::Node::CoreFieldMask);
    root->setCore(osg::Group::create());
    osg::endEditCP(root, osg::Node::CoreFieldMask);
}

SceneTest::~SceneTest() {
    osg::subRefCP(root);
}

} // namespace kv::test
