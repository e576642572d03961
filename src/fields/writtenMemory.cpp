// What a write touches beside its container: the rotation of a node is kept in an attachment, and a
// core tells its nodes of every change.

#include "fields/writtenMemory.h"

#include "fields/fieldPlan.h"
#include "keys/prefetch.h"

#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>

#include <OSGTransformAttachment.h>

namespace kv::detail {

WrittenMemory WrittenMemory::of(std::uint32_t id) {
    WrittenMemory memory;
    const osg::FieldContainerPtr container = containerById(id);
    if (container == osg::NullFC) return memory;
    memory._container = container.operator->();
    const osg::NodeCorePtr core = osg::NodeCorePtr::dcast(container);
    if (core != osg::NullFC && !core->getParents().empty()) memory._nodes = &core->getParents()[0];
    const osg::NodePtr node = osg::NodePtr::dcast(container);
    if (node == osg::NullFC) return memory;
    for (const auto& slot : node->getSFAttachments()->getValue()) {
        const auto angles = osg::TransformAttachmentPtr::dcast(slot.second);
        if (angles == osg::NullFC) continue;
        memory._slot = &slot;
        memory._attachment = angles.operator->();
    }
    return memory;
}

void WrittenMemory::prefetch() const {
    constexpr std::size_t kContainerLines = 7; // as long as a transform with angles
    constexpr std::size_t kAttachmentLines = 3;
    if (_container != nullptr) prefetchLines(_container, kContainerLines);
    if (_nodes != nullptr) prefetchLines(_nodes, 1);
    if (_slot != nullptr) prefetchLines(_slot, 1);
    if (_attachment != nullptr) prefetchLines(_attachment, kAttachmentLines);
}

} // namespace kv::detail
