#pragma once

/// @file
/// The lists that a geometry is made of: primitive types and lengths, positions, normals, colours,
/// texture coordinates, indices.
///
/// There is an abstract class for each kind of list (`GeoPositions`), through which a list is used
/// with values of one type (`Pnt3f`), and a class for each way to store it (`GeoPositions2f`,
/// `GeoPositions3f`).

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGFieldTable.h>

#include <cmath>

namespace osg {

/// A list of one kind. `Kind` says the type of its values and its name.
///
/// Numbers are converted to what is stored; missing components are 0. An index must be less than
/// the size.
template <class Kind>
class AbstractGeoProperty : public Attachment {
    typedef Attachment Inherited;

  public:
    typedef FCPtr<AttachmentPtr, AbstractGeoProperty> PtrType;
    typedef PtrType Ptr;
    typedef typename Kind::ValueType GenericType;

    static FieldContainerType& getClassType() { return _type; }
    static UInt32 getClassTypeId() { return _type.getId(); }
    static UInt16 getClassGroupId() { return _type.getGroupId(); }
    FieldContainerType& getType() override { return _type; }
    const FieldContainerType& getType() const override { return _type; }

    virtual UInt32 getSize() const = 0;
    UInt32 size() const { return getSize(); }
    bool empty() const { return getSize() == 0; }

    virtual GenericType getValue(UInt32 index) const = 0;
    void getValue(GenericType& result, UInt32 index) const { result = getValue(index); }
    virtual void setValue(const GenericType& value, UInt32 index) = 0;
    virtual void push_back(const GenericType& value) = 0;
    virtual void resize(UInt32 size) = 0;
    void clear() { resize(0); }

    /// The end of an edit is passed on to the geometries that use the list.
    void changed(BitVector whichField, UInt32 origin) override;

  protected:
    AbstractGeoProperty() = default;
    AbstractGeoProperty(const AbstractGeoProperty&) = default;
    ~AbstractGeoProperty() override = default;

  private:
    static FieldContainerType _type;
};

namespace detail {

/// Between the type that a list is used with and the one that it is stored as. Colours of whole
/// numbers are 0 to 255 where the others are 0 to 1; what has no alpha is opaque.
template <class Stored, class Generic>
struct GeoValue {
    static Generic toGeneric(const Stored& value) { return static_cast<Generic>(value); }
    static Stored toStored(const Generic& value) { return static_cast<Stored>(value); }
};

inline Real32 fromByte(UInt8 value) {
    return static_cast<Real32>(value) / 255.f;
}
inline UInt8 toByte(Real32 value) {
    if (!(value > 0)) return 0;
    return value >= 1 ? UInt8(255) : static_cast<UInt8>(std::lround(value * 255.f));
}

template <>
struct GeoValue<Color4f, Color3f> {
    static Color3f toGeneric(const Color4f& c) { return Color3f(c[0], c[1], c[2]); }
    static Color4f toStored(const Color3f& c) { return Color4f(c[0], c[1], c[2], 1); }
};
template <>
struct GeoValue<Color3ub, Color3f> {
    static Color3f toGeneric(const Color3ub& c) {
        return Color3f(fromByte(c[0]), fromByte(c[1]), fromByte(c[2]));
    }
    static Color3ub toStored(const Color3f& c) {
        return Color3ub(toByte(c[0]), toByte(c[1]), toByte(c[2]));
    }
};
template <>
struct GeoValue<Color4ub, Color3f> {
    static Color3f toGeneric(const Color4ub& c) {
        return Color3f(fromByte(c[0]), fromByte(c[1]), fromByte(c[2]));
    }
    static Color4ub toStored(const Color3f& c) {
        return Color4ub(toByte(c[0]), toByte(c[1]), toByte(c[2]), 255);
    }
};
template <>
struct GeoValue<Real32, Vec2f> {
    static Vec2f toGeneric(Real32 value) { return Vec2f(value, 0); }
    static Real32 toStored(const Vec2f& value) { return value[0]; }
};

} // namespace detail

/// A list in a field. `Desc` says its name, its kind and the field.
template <class Desc>
class GeoProperty : public AbstractGeoProperty<typename Desc::Kind> {
    typedef AbstractGeoProperty<typename Desc::Kind> Inherited;

  public:
    typedef FCPtr<typename Inherited::PtrType, GeoProperty> PtrType;
    typedef PtrType Ptr;
    typedef typename Inherited::GenericType GenericType;
    typedef typename Desc::FieldType StoredFieldType;
    typedef typename StoredFieldType::StoredType StoredType;
    enum { GeoPropDataFieldId = Inherited::NextFieldId, NextFieldId };
    static constexpr BitVector GeoPropDataFieldMask = BitVector(1) << GeoPropDataFieldId;

    static FieldContainerType& getClassType() { return _type; }
    static UInt32 getClassTypeId() { return _type.getId(); }
    static UInt16 getClassGroupId() { return _type.getGroupId(); }
    static PtrType create() { return PtrType::dcast(_type.createFieldContainer()); }
    static PtrType createEmpty() {
        PtrType result;
        FieldContainer::newPtr(result);
        return result;
    }

    FieldContainerType& getType() override { return _type; }
    const FieldContainerType& getType() const override { return _type; }
    UInt32 getContainerSize() const override { return static_cast<UInt32>(sizeof(GeoProperty)); }
    FieldContainerPtr shallowCopy() const override {
        PtrType result;
        FieldContainer::newPtr(result, this);
        return result;
    }

    /// The field, with the values as they are stored.
    StoredFieldType* getFieldPtr() { return &_field; }
    const StoredFieldType* getFieldPtr() const { return &_field; }

    using Inherited::getValue;
    UInt32 getSize() const override { return _field.getSize(); }
    GenericType getValue(UInt32 index) const override {
        return detail::GeoValue<StoredType, GenericType>::toGeneric(_field[index]);
    }
    void setValue(const GenericType& value, UInt32 index) override {
        _field[index] = detail::GeoValue<StoredType, GenericType>::toStored(value);
    }
    void push_back(const GenericType& value) override {
        _field.push_back(detail::GeoValue<StoredType, GenericType>::toStored(value));
    }
    void resize(UInt32 size) override { _field.resize(size); }

    UInt32 getBinSize(const BitVector& whichField) override;
    void copyToBin(BinaryDataHandler& memory, const BitVector& whichField) override;
    void copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) override;

  protected:
    GeoProperty() = default;
    GeoProperty(const GeoProperty& source) : Inherited(source), _field(source._field) {}
    ~GeoProperty() override = default;

    void executeSync(FieldContainer& other, const BitVector& whichField) override;

  private:
    friend class FieldContainer;

    Field* fieldGeoPropData() { return &_field; }
    static FieldDescription** descriptions();
    static FieldContainerType _type;

    StoredFieldType _field;
};

} // namespace osg

/// The kinds: name, type of the values in use, name of the field in files.
#define OSG_GEO_PROPERTY_KINDS(DO)                                                                 \
    DO(PTypes, UInt32, "types")                                                                    \
    DO(PLengths, UInt32, "lengths")                                                                \
    DO(Positions, Pnt3f, "positions")                                                              \
    DO(Normals, Vec3f, "normals")                                                                  \
    DO(Colors, Color3f, "colors")                                                                  \
    DO(TexCoords, Vec2f, "TexCoords")                                                              \
    DO(Indices, UInt32, "indices")

/// The ways to store them: kind, suffix of the name, field.
#define OSG_GEO_PROPERTIES(DO)                                                                     \
    DO(PTypes, UI8, MFUInt8)                                                                       \
    DO(PLengths, UI8, MFUInt8)                                                                     \
    DO(PLengths, UI16, MFUInt16)                                                                   \
    DO(PLengths, UI32, MFUInt32)                                                                   \
    DO(Positions, 2s, MFPnt2s)                                                                     \
    DO(Positions, 3s, MFPnt3s)                                                                     \
    DO(Positions, 4s, MFPnt4s)                                                                     \
    DO(Positions, 2f, MFPnt2f)                                                                     \
    DO(Positions, 3f, MFPnt3f)                                                                     \
    DO(Positions, 4f, MFPnt4f)                                                                     \
    DO(Positions, 2d, MFPnt2d)                                                                     \
    DO(Positions, 3d, MFPnt3d)                                                                     \
    DO(Positions, 4d, MFPnt4d)                                                                     \
    DO(Normals, 3s, MFVec3s)                                                                       \
    DO(Normals, 3b, MFVec3b)                                                                       \
    DO(Normals, 3f, MFVec3f)                                                                       \
    DO(Colors, 3f, MFColor3f)                                                                      \
    DO(Colors, 4f, MFColor4f)                                                                      \
    DO(Colors, 3ub, MFColor3ub)                                                                    \
    DO(Colors, 4ub, MFColor4ub)                                                                    \
    DO(TexCoords, 1f, MFReal32)                                                                    \
    DO(TexCoords, 2f, MFVec2f)                                                                     \
    DO(TexCoords, 3f, MFVec3f)                                                                     \
    DO(TexCoords, 4f, MFVec4f)                                                                     \
    DO(Indices, UI16, MFUInt16)                                                                    \
    DO(Indices, UI32, MFUInt32)

#define OSG_DECLARE_GEO_PROPERTY_KIND(KIND, VALUE, FIELD_NAME)                                     \
    struct Geo##KIND##Kind {                                                                       \
        typedef VALUE ValueType;                                                                   \
        static const Char8* getTypeName() { return "Geo" #KIND; }                                  \
        static const Char8* getFieldName() { return FIELD_NAME; }                                  \
    };                                                                                             \
    typedef AbstractGeoProperty<Geo##KIND##Kind> Geo##KIND;                                        \
    typedef Geo##KIND::PtrType Geo##KIND##Ptr;                                                     \
    extern template class AbstractGeoProperty<Geo##KIND##Kind>;                                    \
    OSG_POINTER_FIELDS(Geo##KIND, detail::PrintedPointerTraits)

#define OSG_DECLARE_GEO_PROPERTY(KIND, SUFFIX, FIELD)                                              \
    struct Geo##KIND##SUFFIX##Desc {                                                               \
        typedef Geo##KIND##Kind Kind;                                                              \
        typedef FIELD FieldType;                                                                   \
        static const Char8* getTypeName() { return "Geo" #KIND #SUFFIX; }                          \
    };                                                                                             \
    typedef GeoProperty<Geo##KIND##SUFFIX##Desc> Geo##KIND##SUFFIX;                                \
    typedef Geo##KIND##SUFFIX::PtrType Geo##KIND##SUFFIX##Ptr;                                     \
    extern template class GeoProperty<Geo##KIND##SUFFIX##Desc>;

namespace osg {

OSG_GEO_PROPERTY_KINDS(OSG_DECLARE_GEO_PROPERTY_KIND)
OSG_GEO_PROPERTIES(OSG_DECLARE_GEO_PROPERTY)

} // namespace osg
