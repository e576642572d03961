// Materials and what they are made of.

#include <OpenSG/OSGChunkMaterial.h>
#include <OpenSG/OSGImage.h>
#include <OpenSG/OSGLineChunk.h>
#include <OpenSG/OSGMaterial.h>
#include <OpenSG/OSGMaterialChunk.h>
#include <OpenSG/OSGPhongMaterial.h>
#include <OpenSG/OSGPointChunk.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <OpenSG/OSGSimpleTexturedMaterial.h>
#include <OpenSG/OSGStateChunk.h>
#include <OpenSG/OSGSwitchMaterial.h>

#include <OpenSG/OSGMFieldTypeDef.inl>
#include <OpenSG/OSGSFieldTypeDef.inl>

namespace osg {

OSG_POINTER_FIELDS_DEF(Material, AttachmentContainer)
OSG_POINTER_FIELDS_DEF(StateChunk, Attachment)
OSG_POINTER_FIELDS_DEF(Image, AttachmentContainer)

OSG_ABSTR_TABLE_DEF(Material, AttachmentContainer, OSG_MATERIAL_FIELDS)
OSG_TABLE_DEF(ChunkMaterial, Material, OSG_CHUNK_MATERIAL_FIELDS)
OSG_TABLE_DEF(SimpleMaterial, ChunkMaterial, OSG_SIMPLE_MATERIAL_FIELDS)
OSG_TABLE_DEF(SimpleTexturedMaterial, SimpleMaterial, OSG_SIMPLE_TEXTURED_MATERIAL_FIELDS)
OSG_TABLE_DEF(PhongMaterial, ChunkMaterial, OSG_SIMPLE_MATERIAL_FIELDS)
OSG_TABLE_DEF(SwitchMaterial, Material, OSG_SWITCH_MATERIAL_FIELDS)
OSG_ABSTR_TABLE_DEF(StateChunk, Attachment, OSG_STATE_CHUNK_FIELDS)
OSG_TABLE_DEF(MaterialChunk, StateChunk, OSG_MATERIAL_CHUNK_FIELDS)
OSG_TABLE_DEF(PointChunk, StateChunk, OSG_POINT_CHUNK_FIELDS)
OSG_TABLE_DEF(LineChunk, StateChunk, OSG_LINE_CHUNK_FIELDS)
OSG_TABLE_DEF(Image, AttachmentContainer, OSG_IMAGE_FIELDS)

void ChunkMaterial::addChunk(const StateChunkPtr& chunk, Int32 slot) {
    if (chunk == NullFC) return;
    detail::acquire(*this, chunk);
    editChunks().push_back(chunk);
    editSlots().push_back(slot);
}

bool ChunkMaterial::subChunk(StateChunkPtr chunk, Int32 slot) {
    for (UInt32 i = 0; i < getChunks().getSize(); ++i) {
        // A file may hold fewer slots than chunks.
        const bool hasSlot = i < getSlots().getSize();
        const Int32 chunkSlot = hasSlot ? getSlots(i) : Int32(AutoSlotReplace);
        if (getChunks(i) != chunk || chunkSlot != slot) continue;
        editChunks().erase(editChunks().begin() + i);
        if (hasSlot) editSlots().erase(editSlots().begin() + i);
        detail::release(*this, chunk);
        return true;
    }
    return false;
}

StateChunkPtr ChunkMaterial::find(const FieldContainerType& type) {
    for (const StateChunkPtr& chunk : getChunks()) {
        if (chunk != NullFC && chunk->getType() == type) return chunk;
    }
    return NullFC;
}

void ChunkMaterial::clearChunks() {
    editSlots().clear();
    detail::releaseAll(*this, editChunks());
}

void SwitchMaterial::addMaterial(const MaterialPtr& material) {
    if (material == NullFC) return;
    detail::acquire(*this, material);
    editMaterials().push_back(material);
}

void SwitchMaterial::subMaterial(MaterialPtr material) {
    const auto found = editMaterials().find(material);
    if (found == editMaterials().end()) return;
    editMaterials().erase(found);
    detail::release(*this, material);
}

MaterialPtr getDefaultMaterial() {
    static SimpleMaterialPtr material;
    if (material != NullFC) return material;
    material = SimpleMaterial::create();
    if (material == NullFC) return NullFC; // before osgInit or after osgExit
    addRefCP(material);
    beginEditCP(material);
    material->setAmbient(Color3f(.1f, .1f, .1f));
    material->setDiffuse(Color3f(.7f, .7f, .5f));
    material->setSpecular(Color3f(1, 1, 1));
    material->setShininess(20);
    endEditCP(material);
    return material;
}

} // namespace osg
