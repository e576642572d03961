#pragma once

/// @file
/// The base of the parts that materials are made of.

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGFieldTable.h>

namespace osg {

class StateChunk;
typedef FCPtr<AttachmentPtr, StateChunk> StateChunkPtr;
OSG_POINTER_FIELDS(StateChunk, FieldTraitsRecurseMapper)

#define OSG_STATE_CHUNK_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                             \
    VALUE(SFBool, Ignore, "ignore")

OSG_ABSTR_TABLE_BASE(StateChunk, Attachment, OSG_STATE_CHUNK_FIELDS)

/// A part of a material, sharable between materials.
class StateChunk : public StateChunkBase {
    OSG_TABLE_MEMBERS(StateChunk)
};

OSG_ABSTR_TABLE_INLINE(StateChunk)

} // namespace osg
