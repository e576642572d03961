// Lights.

#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGLight.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSpotLight.h>

namespace osg {

OSG_ABSTR_TABLE_DEF(Light, Group, OSG_LIGHT_FIELDS)
OSG_TABLE_DEF(PointLight, Light, OSG_POINT_LIGHT_FIELDS)
OSG_TABLE_DEF(SpotLight, PointLight, OSG_SPOT_LIGHT_FIELDS)
OSG_TABLE_DEF(DirectionalLight, Light, OSG_DIRECTIONAL_LIGHT_FIELDS)

} // namespace osg
