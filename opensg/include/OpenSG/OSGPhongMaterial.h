#pragma once

/// @file
/// Materials that are lit in every pixel.

#include <OpenSG/OSGSimpleMaterial.h>

namespace osg {

class PhongMaterial;
typedef FCPtr<ChunkMaterialPtr, PhongMaterial> PhongMaterialPtr;

OSG_TABLE_BASE(PhongMaterial, ChunkMaterial, OSG_SIMPLE_MATERIAL_FIELDS)

/// The fields of a SimpleMaterial, lit in every pixel instead of every vertex.
class PhongMaterial : public PhongMaterialBase {
    OSG_TABLE_MEMBERS(PhongMaterial)
};

OSG_TABLE_INLINE(PhongMaterial)

} // namespace osg
