// A material that describes its own parameters.
#include "OSGUberMaterial.h"

extern "C" KV_OPENSG_UBER_MATERIAL_API int kvOpenSGUberMaterialTypes();

/// How many container types this library registers; programs link it by name.
int kvOpenSGUberMaterialTypes() {
    // Naming the types links them. Only their number is used, so that an optimiser would leave the
    // names out if it were allowed to.
    const osg::FieldContainerType* const volatile types[] = {&osg::UberMaterial::getClassType()};
    return static_cast<int>(sizeof(types) / sizeof(types[0]));
}

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(UberMaterial, ChunkMaterial, KV_UBER_MATERIAL_FIELDS)

std::vector<UberMaterial::ParameterDescription> UberMaterial::getParameterDescriptions(void) const {
    return {{"Color", "baseColor"}, {"Color", "emission"}, {"Float", "roughness"}};
}

OSG_END_NAMESPACE
