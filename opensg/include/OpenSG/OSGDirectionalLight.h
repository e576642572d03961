#pragma once

/// @file
/// Light from one direction.

#include <OpenSG/OSGLight.h>

namespace osg {

class DirectionalLight;
typedef FCPtr<LightPtr, DirectionalLight> DirectionalLightPtr;

#define OSG_DIRECTIONAL_LIGHT_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                       \
    VALUE(SFVec3f, Direction, "direction", Vec3f(0, 0, 1))

OSG_TABLE_BASE(DirectionalLight, Light, OSG_DIRECTIONAL_LIGHT_FIELDS)

/// Light from far away; `direction` points to where it comes from.
class DirectionalLight : public DirectionalLightBase {
    OSG_TABLE_MEMBERS(DirectionalLight)

  public:
    using DirectionalLightBase::setDirection;
    void setDirection(Real32 x, Real32 y, Real32 z) { setDirection(Vec3f(x, y, z)); }
};

OSG_TABLE_INLINE(DirectionalLight)

} // namespace osg
