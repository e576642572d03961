#pragma once

/// @file
/// The core of nodes that only hold their children together.

#include <OpenSG/OSGFieldTable.h>
#include <OpenSG/OSGNodeCore.h>

namespace osg {

class Group;
typedef FCPtr<NodeCorePtr, Group> GroupPtr;

OSG_TABLE_BASE(Group, NodeCore, OSG_NO_FIELDS)

/// Holds the children of its nodes together; the parent of most other cores.
class Group : public GroupBase {
    OSG_TABLE_MEMBERS(Group)
};

OSG_TABLE_INLINE(Group)

} // namespace osg
