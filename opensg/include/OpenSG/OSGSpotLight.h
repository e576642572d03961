#pragma once

/// @file
/// Light from one place within a cone.

#include <OpenSG/OSGPointLight.h>

namespace osg {

class SpotLight;
typedef FCPtr<PointLightPtr, SpotLight> SpotLightPtr;

#define OSG_SPOT_LIGHT_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                              \
    VALUE(SFVec3f, Direction, "direction", Vec3f(0, 0, 1))                                         \
    VALUE(SFReal32, SpotExponent, "spotExponent")                                                  \
    VALUE(SFReal32, SpotCutOff, "spotCutOff")

OSG_TABLE_BASE(SpotLight, PointLight, OSG_SPOT_LIGHT_FIELDS)

/// Light from one place within a cone. `spotCutOff` is half the angle of the cone in radians.
class SpotLight : public SpotLightBase {
    OSG_TABLE_MEMBERS(SpotLight)

  public:
    using SpotLightBase::setDirection;
    void setDirection(Real32 x, Real32 y, Real32 z) { setDirection(Vec3f(x, y, z)); }
};

OSG_TABLE_INLINE(SpotLight)

} // namespace osg
