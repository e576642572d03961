#pragma once

/// @file
/// How points are drawn.

#include <OpenSG/OSGStateChunk.h>

namespace osg {

class PointChunk;
typedef FCPtr<StateChunkPtr, PointChunk> PointChunkPtr;

#define OSG_POINT_CHUNK_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                             \
    VALUE(SFReal32, Size, "size", 1)                                                               \
    VALUE(SFBool, Smooth, "smooth")                                                                \
    VALUE(SFReal32, MinSize, "minSize", -1)                                                        \
    VALUE(SFReal32, MaxSize, "maxSize", -1)                                                        \
    VALUE(SFReal32, ConstantAttenuation, "constantAttenuation", 1)                                 \
    VALUE(SFReal32, LinearAttenuation, "linearAttenuation")                                        \
    VALUE(SFReal32, QuadraticAttenuation, "quadraticAttenuation")                                  \
    VALUE(SFReal32, FadeThreshold, "fadeThreshold")                                                \
    VALUE(SFBool, Sprite, "sprite")                                                                \
    VALUE(SFGLenum, RMode, "rMode")

OSG_TABLE_BASE(PointChunk, StateChunk, OSG_POINT_CHUNK_FIELDS)

/// `size` is in pixels; `minSize` below 0 turns attenuation by distance off.
class PointChunk : public PointChunkBase {
    OSG_TABLE_MEMBERS(PointChunk)
};

OSG_TABLE_INLINE(PointChunk)

} // namespace osg
