#pragma once

/// @file
/// The base of cores that can be seen and have a material.

#include <OpenSG/OSGDrawable.h>
#include <OpenSG/OSGMaterial.h>

namespace osg {

class MaterialDrawable;
typedef FCPtr<DrawablePtr, MaterialDrawable> MaterialDrawablePtr;

#define OSG_MATERIAL_DRAWABLE_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                       \
    POINTER(SFMaterialPtr, Material, "material")

OSG_ABSTR_TABLE_BASE(MaterialDrawable, Drawable, OSG_MATERIAL_DRAWABLE_FIELDS)

/// A core that can be seen and has a material, maybe null.
class MaterialDrawable : public MaterialDrawableBase {
    OSG_TABLE_MEMBERS(MaterialDrawable)
};

OSG_ABSTR_TABLE_INLINE(MaterialDrawable)

} // namespace osg
