#pragma once

/// @file
/// Materials with a few colours.

#include <OpenSG/OSGChunkMaterial.h>

namespace osg {

class SimpleMaterial;
typedef FCPtr<ChunkMaterialPtr, SimpleMaterial> SimpleMaterialPtr;

/// 4609 is GL_DIFFUSE.
#define OSG_SIMPLE_MATERIAL_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                         \
    VALUE(SFColor3f, Ambient, "ambient")                                                           \
    VALUE(SFColor3f, Diffuse, "diffuse")                                                           \
    VALUE(SFColor3f, Specular, "specular")                                                         \
    VALUE(SFReal32, Shininess, "shininess", 1)                                                     \
    VALUE(SFColor3f, Emission, "emission")                                                         \
    VALUE(SFReal32, Transparency, "transparency")                                                  \
    VALUE(SFBool, Lit, "lit", true)                                                                \
    VALUE(SFGLenum, ColorMaterial, "colorMaterial", 4609)

OSG_TABLE_BASE(SimpleMaterial, ChunkMaterial, OSG_SIMPLE_MATERIAL_FIELDS)

/// A material with a few colours. `transparency` 0 is opaque, 1 invisible.
class SimpleMaterial : public SimpleMaterialBase {
    OSG_TABLE_MEMBERS(SimpleMaterial)
};

OSG_TABLE_INLINE(SimpleMaterial)

} // namespace osg
