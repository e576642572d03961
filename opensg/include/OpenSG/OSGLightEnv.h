#pragma once

/// @file
/// The core that stands for the light of the surroundings.

#include <OpenSG/OSGFieldTable.h>
#include <OpenSG/OSGNodeCore.h>

namespace osg {

class LightEnv;
typedef FCPtr<NodeCorePtr, LightEnv> LightEnvPtr;

OSG_TABLE_BASE(LightEnv, NodeCore, OSG_NO_FIELDS)

/// The light of the surroundings. Neither a Light nor a Group.
class LightEnv : public LightEnvBase {
    OSG_TABLE_MEMBERS(LightEnv)
};

OSG_TABLE_INLINE(LightEnv)

} // namespace osg
