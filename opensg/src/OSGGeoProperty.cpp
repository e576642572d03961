// The lists that geometries are made of: all classes from the two tables in the header.

#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGeoProperty.h>

#include <OpenSG/OSGMFieldTypeDef.inl>
#include <OpenSG/OSGSFieldTypeDef.inl>

#include <type_traits>

namespace osg {

template <class Kind>
FieldContainerType AbstractGeoProperty<Kind>::_type(Kind::getTypeName(), "Attachment", nullptr,
                                                    nullptr, nullptr, nullptr, 0);

template <class Kind>
void AbstractGeoProperty<Kind>::changed(BitVector whichField, UInt32 origin) {
    Inherited::changed(whichField, origin);
    // A reader's edit is no news to a geometry that is only being read itself.
    if ((whichField >> Inherited::NextFieldId) == 0 || (origin & ChangedOrigin::Abstract) != 0)
        return;
    for (const FieldContainerPtr& parent : getParents()) {
        const GeometryPtr geometry = GeometryPtr::dcast(parent);
        if (geometry != NullFC && geometry->getPositions() == PtrType(this))
            changedCP(geometry, Geometry::PositionsFieldMask, ChangedOrigin::Child);
    }
}

/// In the files of OpenSG, the colours of all kinds but that of three floats have a capital.
template <class Desc>
const Char8* fieldNameOf() {
    const bool isColors = std::is_same<typename Desc::Kind, GeoColorsKind>::value;
    if (isColors && !std::is_same<Desc, GeoColors3fDesc>::value) return "Colors";
    return Desc::Kind::getFieldName();
}

/// In a function, since the order in which static members of templates are initialised is not
/// fixed.
template <class Desc>
FieldDescription** GeoProperty<Desc>::descriptions() {
    static FieldDescription* all[] = {
        new FieldDescription(StoredFieldType::getClassType(), fieldNameOf<Desc>(),
                             GeoPropDataFieldId, GeoPropDataFieldMask, false,
                             static_cast<FieldAccessMethod>(&GeoProperty::fieldGeoPropData))};
    return all;
}

template <class Desc>
FieldContainerType GeoProperty<Desc>::_type(
    Desc::getTypeName(), Desc::Kind::getTypeName(), nullptr,
    [] { return FieldContainerPtr(GeoProperty<Desc>::createEmpty()); }, nullptr, descriptions(),
    sizeof(void*));

template <class Desc>
UInt32 GeoProperty<Desc>::getBinSize(const BitVector& whichField) {
    const bool withData = (whichField & GeoPropDataFieldMask) != 0;
    return Inherited::getBinSize(whichField) + (withData ? _field.getBinSize() : 0);
}

template <class Desc>
void GeoProperty<Desc>::copyToBin(BinaryDataHandler& memory, const BitVector& whichField) {
    Inherited::copyToBin(memory, whichField);
    if ((whichField & GeoPropDataFieldMask) != 0) _field.copyToBin(memory);
}

template <class Desc>
void GeoProperty<Desc>::copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) {
    Inherited::copyFromBin(memory, whichField);
    if ((whichField & GeoPropDataFieldMask) != 0) _field.copyFromBin(memory);
}

template <class Desc>
void GeoProperty<Desc>::executeSync(FieldContainer& other, const BitVector& whichField) {
    GeoProperty& source = static_cast<GeoProperty&>(other);
    Inherited::executeSyncImpl(&source, whichField);
    if ((whichField & GeoPropDataFieldMask) != 0) _field.syncWith(source._field);
}

#define OSG_DEFINE_GEO_PROPERTY_KIND(KIND, VALUE, FIELD_NAME)                                      \
    OSG_POINTER_FIELDS_DEF(Geo##KIND, Attachment)                                                  \
    template class AbstractGeoProperty<Geo##KIND##Kind>;

#define OSG_DEFINE_GEO_PROPERTY(KIND, SUFFIX, FIELD)                                               \
    template class GeoProperty<Geo##KIND##SUFFIX##Desc>;

// clang-format off
OSG_GEO_PROPERTY_KINDS(OSG_DEFINE_GEO_PROPERTY_KIND)
OSG_GEO_PROPERTIES(OSG_DEFINE_GEO_PROPERTY)
// clang-format on

} // namespace osg
