// A material that describes its own parameters.
#include "OSGUberMaterial.h"

extern "C" KV_OPENSG_UBER_MATERIAL_API int kvOpenSGUberMaterialTypes();

/// How many container types this library registers; programs link it by name.
int kvOpenSGUberMaterialTypes() {
    // Naming the types links them. They are looked at through volatile pointers, or an optimiser
    // would see what comes of it and leave the names out.
    const osg::FieldContainerType* const volatile types[] = {&osg::UberMaterial::getClassType()};
    int count = 0;
    for (const osg::FieldContainerType* const type : types)
        if (type != nullptr) ++count;
    return count;
}

OSG_BEGIN_NAMESPACE

KV_CONTAINER_DEF(UberMaterial, ChunkMaterial, KV_UBER_MATERIAL_FIELDS)

std::vector<UberMaterial::ParameterDescription> UberMaterial::getParameterDescriptions(void) const {
    return {{"Color", "baseColor"}, {"Color", "emission"}, {"Float", "roughness"}};
}

OSG_END_NAMESPACE
