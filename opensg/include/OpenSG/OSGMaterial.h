#pragma once

/// @file
/// The base of materials.

#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGFieldTable.h>

namespace osg {

class Material;
typedef FCPtr<AttachmentContainerPtr, Material> MaterialPtr;
OSG_POINTER_FIELDS(Material, FieldTraitsRecurseMapper)

#define OSG_MATERIAL_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                                \
    VALUE(SFInt32, SortKey, "sortKey")                                                             \
    VALUE(SFInt32, TransparencyMode, "transparencyMode")

OSG_ABSTR_TABLE_BASE(Material, AttachmentContainer, OSG_MATERIAL_FIELDS)

/// How surfaces look.
class Material : public MaterialBase {
    OSG_TABLE_MEMBERS(Material)
};

OSG_ABSTR_TABLE_INLINE(Material)

/// The material of the ready-made geometries, one for the program. Made on first use, which must
/// come after osgInit; the library keeps a reference to it.
MaterialPtr getDefaultMaterial();

} // namespace osg
