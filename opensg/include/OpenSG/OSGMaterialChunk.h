#pragma once

/// @file
/// The colours of a material as a chunk.

#include <OpenSG/OSGStateChunk.h>

namespace osg {

class MaterialChunk;
typedef FCPtr<StateChunkPtr, MaterialChunk> MaterialChunkPtr;

/// 4609 is GL_DIFFUSE.
#define OSG_MATERIAL_CHUNK_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                          \
    VALUE(SFColor4f, Diffuse, "diffuse", Color4f(1, 1, 1, 0))                                      \
    VALUE(SFColor4f, Ambient, "ambient", Color4f(.2f, .2f, .2f, 0))                                \
    VALUE(SFColor4f, Specular, "specular", Color4f(.5f, .5f, .5f, 0))                              \
    VALUE(SFColor4f, Emission, "emission")                                                         \
    VALUE(SFReal32, Shininess, "shininess", 10)                                                    \
    VALUE(SFBool, Lit, "lit", true)                                                                \
    VALUE(SFGLenum, ColorMaterial, "colorMaterial", 4609)                                          \
    VALUE(SFBool, BackMaterial, "backMaterial")                                                    \
    VALUE(SFColor4f, BackDiffuse, "backDiffuse", Color4f(1, 1, 1, 0))                              \
    VALUE(SFColor4f, BackAmbient, "backAmbient", Color4f(.2f, .2f, .2f, 0))                        \
    VALUE(SFColor4f, BackSpecular, "backSpecular", Color4f(.5f, .5f, .5f, 0))                      \
    VALUE(SFColor4f, BackEmission, "backEmission")                                                 \
    VALUE(SFReal32, BackShininess, "backShininess", 10)                                            \
    VALUE(SFGLenum, BackColorMaterial, "backColorMaterial", 4609)

OSG_TABLE_BASE(MaterialChunk, StateChunk, OSG_MATERIAL_CHUNK_FIELDS)

/// Colours, and whether light falls on them. The fields named `back...` are for the back sides of
/// surfaces and count when `backMaterial` is set.
class MaterialChunk : public MaterialChunkBase {
    OSG_TABLE_MEMBERS(MaterialChunk)
};

OSG_TABLE_INLINE(MaterialChunk)

} // namespace osg
