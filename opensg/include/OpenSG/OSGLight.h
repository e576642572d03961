#pragma once

/// @file
/// The base of lights.

#include <OpenSG/OSGGroup.h>

namespace osg {

class Light;
typedef FCPtr<GroupPtr, Light> LightPtr;

#define OSG_LIGHT_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                                   \
    VALUE(SFColor4f, Ambient, "ambient", Color4f(0, 0, 0, 1))                                      \
    VALUE(SFColor4f, Diffuse, "diffuse", Color4f(1, 1, 1, 1))                                      \
    VALUE(SFColor4f, Specular, "specular", Color4f(1, 1, 1, 1))                                    \
    POINTER(SFNodePtr, Beacon, "beacon")                                                           \
    VALUE(SFBool, On, "on", true)                                                                  \
    VALUE(SFReal32, ConstantAttenuation, "constantAttenuation", 1)                                 \
    VALUE(SFReal32, LinearAttenuation, "linearAttenuation")                                        \
    VALUE(SFReal32, QuadraticAttenuation, "quadraticAttenuation")                                  \
    VALUE(SFReal32, ShadowIntensity, "shadowIntensity")                                            \
    VALUE(SFUInt32, ShadowMode, "shadowMode")

OSG_ABSTR_TABLE_BASE(Light, Group, OSG_LIGHT_FIELDS)

/// Lights everything below its node. Position and direction are in the coordinates of the beacon,
/// which is counted; null means those of the world.
class Light : public LightBase {
    OSG_TABLE_MEMBERS(Light)

  public:
    using LightBase::setAmbient;
    using LightBase::setDiffuse;
    using LightBase::setSpecular;
    void setAmbient(Real32 red, Real32 green, Real32 blue, Real32 alpha) {
        setAmbient(Color4f(red, green, blue, alpha));
    }
    void setDiffuse(Real32 red, Real32 green, Real32 blue, Real32 alpha) {
        setDiffuse(Color4f(red, green, blue, alpha));
    }
    void setSpecular(Real32 red, Real32 green, Real32 blue, Real32 alpha) {
        setSpecular(Color4f(red, green, blue, alpha));
    }
};

OSG_ABSTR_TABLE_INLINE(Light)

} // namespace osg
