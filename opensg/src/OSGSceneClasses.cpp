// Refers to one class of each source file that defines classes of scenes.

#include "OSGSceneClasses.h"

#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGeoProperty.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterial.h>
#include <OpenSG/OSGPerspectiveCamera.h>
#include <OpenSG/OSGPointLight.h>

namespace osg {

namespace detail {

bool linkSceneClasses() {
    for (const FieldContainerType* type :
         {&Group::getClassType(), &Geometry::getClassType(), &GeoPositions3f::getClassType(),
          &Material::getClassType(), &PointLight::getClassType(),
          &PerspectiveCamera::getClassType()}) {
        if (type->getId() == 0) return false;
    }
    return true;
}

} // namespace detail

} // namespace osg
