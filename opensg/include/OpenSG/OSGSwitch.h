#pragma once

/// @file
/// The core of nodes that show one of their children.

#include <OpenSG/OSGGroup.h>

namespace osg {

class Switch;
typedef FCPtr<GroupPtr, Switch> SwitchPtr;

#define OSG_SWITCH_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                                  \
    VALUE(SFInt32, Choice, "choice", -1)

OSG_TABLE_BASE(Switch, Group, OSG_SWITCH_FIELDS)

/// `choice` is the index of the child that is drawn, or NONE or ALL. Traversal visits all children.
class Switch : public SwitchBase {
    OSG_TABLE_MEMBERS(Switch)

  public:
    enum { ALL = -2, NONE = -1 };
};

OSG_TABLE_INLINE(Switch)

} // namespace osg
