// Nodes kept as field-container ids.
#include "keys/sceneNodes.h"

#include <OpenSG/OSGFieldContainerFactory.h>

namespace kv::detail {

osg::NodePtr nodeById(std::uint32_t id) {
    if (id == 0) return osg::NullFC;
    // dcast gives null unless the container's type is Node or derives from it.
    return osg::NodePtr::dcast(osg::FieldContainerFactory::the()->getContainer(id));
}

std::uint32_t idOf(const osg::NodePtr& node) {
    if (node == osg::NullFC) return 0;
    return osg::getContainerId(node);
}

} // namespace kv::detail
