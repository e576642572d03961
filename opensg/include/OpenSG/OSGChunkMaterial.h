#pragma once

/// @file
/// Materials made of chunks.

#include <OpenSG/OSGMaterial.h>
#include <OpenSG/OSGStateChunk.h>

namespace osg {

class ChunkMaterial;
typedef FCPtr<MaterialPtr, ChunkMaterial> ChunkMaterialPtr;

#define OSG_CHUNK_MATERIAL_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                          \
    POINTERS(MFStateChunkPtr, Chunks, "chunks")                                                    \
    LIST(MFInt32, Slots, "slots")

OSG_TABLE_BASE(ChunkMaterial, Material, OSG_CHUNK_MATERIAL_FIELDS)

/// A material made of chunks. `slots` has an entry for each chunk.
class ChunkMaterial : public ChunkMaterialBase {
    OSG_TABLE_MEMBERS(ChunkMaterial)

  public:
    /// A slot that is chosen when the material is used.
    enum { AutoSlot = -1, AutoSlotReplace = -2 };

    /// Appends a chunk and counts it. Nothing for null.
    void addChunk(const StateChunkPtr& chunk, Int32 slot = AutoSlotReplace);

    /// Removes the first chunk that is equal and has the slot, and releases it. False when there is
    /// none.
    bool subChunk(StateChunkPtr chunk, Int32 slot = AutoSlotReplace);

    /// The first chunk of the type; null when there is none.
    StateChunkPtr find(const FieldContainerType& type);

    void clearChunks();
};

OSG_TABLE_INLINE(ChunkMaterial)

} // namespace osg
