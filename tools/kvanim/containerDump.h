#pragma once

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

#include <string>

namespace kvanim {

/// Every container of a scene with all its fields, one line a field, as text that two programs
/// compare:
///
///     #1 Node
///       attachments [#2, #3]
///       travMask 4294967295
///
/// Containers are numbered in the order in which they are met, breadth first, fields in the order
/// of their ids, attachments in the order of their types' names; a shared container has one number.
/// Numbers are exact, strings quoted with escapes for quotes, backslashes and control characters.
/// Left out is what no file holds: internal fields and attachments, and the volumes of nodes.
std::string containersOf(const osg::NodePtr& root);

} // namespace kvanim
