// The parameters of the host's uber materials, asked of the material itself. KV_HAS_UBER_MATERIAL
// is defined when the host brings that library.

#include "fields/uberParameters.h"

#if defined(KV_HAS_UBER_MATERIAL)
#include <OSGUberMaterial.h>
#endif

namespace kv::detail {

#if defined(KV_HAS_UBER_MATERIAL)

UberParameter uberParameter(const osg::FieldContainerPtr& container, const std::string& fieldName) {
    const osg::UberMaterialPtr material = osg::UberMaterialPtr::dcast(container);
    if (material == osg::NullFC) return UberParameter::NoUberMaterial;
    for (const auto& parameter : material->getParameterDescriptions())
        if (parameter.getName() == fieldName)
            return parameter.getTypeName() == "Color" ? UberParameter::Color
                                                      : UberParameter::Number;
    return UberParameter::NoParameter;
}

#else

UberParameter uberParameter(const osg::FieldContainerPtr&, const std::string&) {
    return UberParameter::NoUberMaterial;
}

#endif

} // namespace kv::detail
