#pragma once

/// @file
/// The base of cores that can be seen.

#include <OpenSG/OSGFieldTable.h>
#include <OpenSG/OSGNodeCore.h>

namespace osg {

class Drawable;
typedef FCPtr<NodeCorePtr, Drawable> DrawablePtr;

OSG_ABSTR_TABLE_BASE(Drawable, NodeCore, OSG_NO_FIELDS)

/// A core that can be seen.
class Drawable : public DrawableBase {
    OSG_TABLE_MEMBERS(Drawable)
};

OSG_ABSTR_TABLE_INLINE(Drawable)

} // namespace osg
