#pragma once

/// @file
/// How lines are drawn.

#include <OpenSG/OSGStateChunk.h>

namespace osg {

class LineChunk;
typedef FCPtr<StateChunkPtr, LineChunk> LineChunkPtr;

#define OSG_LINE_CHUNK_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                              \
    VALUE(SFReal32, Width, "width", 1)                                                             \
    VALUE(SFInt32, StippleRepeat, "stippleRepeat", 1)                                              \
    VALUE(SFUInt16, StipplePattern, "stipplePattern", 0xffff)                                      \
    VALUE(SFBool, Smooth, "smooth")

OSG_TABLE_BASE(LineChunk, StateChunk, OSG_LINE_CHUNK_FIELDS)

/// `width` is in pixels; the bits of `stipplePattern`, highest first, say which pixels are drawn.
class LineChunk : public LineChunkBase {
    OSG_TABLE_MEMBERS(LineChunk)
};

OSG_TABLE_INLINE(LineChunk)

} // namespace osg
