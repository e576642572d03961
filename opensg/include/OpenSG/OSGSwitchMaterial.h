#pragma once

/// @file
/// Materials to choose from.

#include <OpenSG/OSGMaterial.h>

namespace osg {

class SwitchMaterial;
typedef FCPtr<MaterialPtr, SwitchMaterial> SwitchMaterialPtr;

#define OSG_SWITCH_MATERIAL_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                         \
    POINTERS(MFMaterialPtr, Materials, "materials")                                                \
    VALUE(SFUInt32, Choice, "choice")

OSG_TABLE_BASE(SwitchMaterial, Material, OSG_SWITCH_MATERIAL_FIELDS)

/// Is the one of its materials that has the index `choice`.
class SwitchMaterial : public SwitchMaterialBase {
    OSG_TABLE_MEMBERS(SwitchMaterial)

  public:
    /// Appends a material and counts it. Nothing for null.
    void addMaterial(const MaterialPtr& material);

    /// Removes and releases the first one that is equal; nothing when there is none.
    void subMaterial(MaterialPtr material);
};

OSG_TABLE_INLINE(SwitchMaterial)

} // namespace osg
