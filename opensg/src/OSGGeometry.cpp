// Geometry and its base classes.

#include <OpenSG/OSGDrawable.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGMaterialDrawable.h>

namespace osg {

OSG_ABSTR_TABLE_DEF(Drawable, NodeCore, OSG_NO_FIELDS)
OSG_ABSTR_TABLE_DEF(MaterialDrawable, Drawable, OSG_MATERIAL_DRAWABLE_FIELDS)
OSG_TABLE_DEF(Geometry, MaterialDrawable, OSG_GEOMETRY_FIELDS)

void Geometry::adjustVolume(Volume& volume) {
    Inherited::adjustVolume(volume);
    const GeoPositionsPtr positions = getPositions();
    if (positions == NullFC) return;
    const UInt32 count = positions->getSize();
    for (UInt32 i = 0; i < count; ++i)
        volume.extendBy(positions->getValue(i));
}

void Geometry::changed(BitVector whichField, UInt32 origin) {
    if ((whichField & PositionsFieldMask) != 0) invalidateVolume();
    Inherited::changed(whichField, origin);
}

} // namespace osg
