#pragma once

/// @file
/// Light from one place in all directions.

#include <OpenSG/OSGLight.h>

namespace osg {

class PointLight;
typedef FCPtr<LightPtr, PointLight> PointLightPtr;

#define OSG_POINT_LIGHT_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                             \
    VALUE(SFPnt3f, Position, "position")

OSG_TABLE_BASE(PointLight, Light, OSG_POINT_LIGHT_FIELDS)

/// Light from one place in all directions.
class PointLight : public PointLightBase {
    OSG_TABLE_MEMBERS(PointLight)

  public:
    using PointLightBase::setPosition;
    void setPosition(Real32 x, Real32 y, Real32 z) { setPosition(Pnt3f(x, y, z)); }
};

OSG_TABLE_INLINE(PointLight)

} // namespace osg
