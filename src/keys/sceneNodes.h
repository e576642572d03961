#pragma once

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGNode.h>

#include <cstdint>

// Nodes of the scene may be destroyed at any time, so the library keeps them as ids. These two are
// the only way from a node to an id and back.
namespace kv::detail {

/// The node with this field-container id; null for 0, for an id never given out, for a destroyed
/// container and for a container that is not a node.
osg::NodePtr nodeById(std::uint32_t id);

/// The field-container id of the node, 0 for null.
std::uint32_t idOf(const osg::NodePtr& node);

} // namespace kv::detail
