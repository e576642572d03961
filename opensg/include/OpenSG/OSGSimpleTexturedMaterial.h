#pragma once

/// @file
/// Materials with a few colours and a texture.

#include <OpenSG/OSGImage.h>
#include <OpenSG/OSGSimpleMaterial.h>

namespace osg {

class SimpleTexturedMaterial;
typedef FCPtr<SimpleMaterialPtr, SimpleTexturedMaterial> SimpleTexturedMaterialPtr;

/// 9987 is GL_LINEAR_MIPMAP_LINEAR, 9729 GL_LINEAR, 7681 GL_REPLACE.
#define OSG_SIMPLE_TEXTURED_MATERIAL_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                \
    POINTER(SFImagePtr, Image, "image")                                                            \
    VALUE(SFGLenum, MinFilter, "minFilter", 9987)                                                  \
    VALUE(SFGLenum, MagFilter, "magFilter", 9729)                                                  \
    VALUE(SFGLenum, EnvMode, "envMode", 7681)                                                      \
    VALUE(SFBool, EnvMap, "envMap")

OSG_TABLE_BASE(SimpleTexturedMaterial, SimpleMaterial, OSG_SIMPLE_TEXTURED_MATERIAL_FIELDS)

/// A SimpleMaterial with a texture.
class SimpleTexturedMaterial : public SimpleTexturedMaterialBase {
    OSG_TABLE_MEMBERS(SimpleTexturedMaterial)
};

OSG_TABLE_INLINE(SimpleTexturedMaterial)

} // namespace osg
