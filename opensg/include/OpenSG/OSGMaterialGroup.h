#pragma once

/// @file
/// The core of nodes that give everything below them a material.

#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterial.h>

namespace osg {

class MaterialGroup;
typedef FCPtr<GroupPtr, MaterialGroup> MaterialGroupPtr;

#define OSG_MATERIAL_GROUP_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                          \
    POINTER(SFMaterialPtr, Material, "material")

OSG_TABLE_BASE(MaterialGroup, Group, OSG_MATERIAL_GROUP_FIELDS)

/// The material overrides those of geometries below; null overrides nothing.
class MaterialGroup : public MaterialGroupBase {
    OSG_TABLE_MEMBERS(MaterialGroup)
};

OSG_TABLE_INLINE(MaterialGroup)

} // namespace osg
