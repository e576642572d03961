#pragma once

/// @file
/// Helpers that SField and MField share.

#include <OpenSG/OSGFieldDataType.h>

#include <type_traits>

namespace osg {

class FieldContainerPtrBase;
class FieldContainerPtr;

namespace detail {

/// The traits that describe values of T in fields of the name space `ns`.
template <class T, Int32 ns>
struct FieldTraitsOf;

template <class T>
struct FieldTraitsOf<T, 0> {
    typedef FieldDataTraits<T> Type;
};
template <class T>
struct FieldTraitsOf<T, 1> {
    typedef FieldDataTraits1<T> Type;
};
template <class T>
struct FieldTraitsOf<T, 2> {
    typedef FieldDataTraits2<T> Type;
};

/// Whether T is a pointer to containers of a certain type. Fields of those are stored as plain
/// FieldContainerPtr and derive from the field of FieldContainerPtr, so that code that knows
/// nothing but "some pointer field" may use them as such.
template <class T>
constexpr bool isTypedPointer =
    std::is_base_of<FieldContainerPtrBase, T>::value && !std::is_same<FieldContainerPtr, T>::value;

/// FieldContainerPtr, as a name that depends on the pointer type: the field of FieldContainerPtr is
/// completed later than the templates that derive from it.
template <class P>
struct AnyPointer {
    typedef FieldContainerPtr Type;
};

template <class Traits>
constexpr bool hasTextForm = (static_cast<int>(Traits::StringConvertable) &
                              FieldTraits::ToStringConvertable) != 0;

template <class Traits>
constexpr bool readsText = (static_cast<int>(Traits::StringConvertable) &
                            FieldTraits::FromStringConvertable) != 0;

} // namespace detail

} // namespace osg

/// Instantiates a field template for a value type in name space 0. The second argument marks what a
/// Windows DLL exports. Include OSGSFieldTypeDef.inl or OSGMFieldTypeDef.inl first.
#define OSG_DLLEXPORT_DEF1(FIELD, T, MAPPING) template class MAPPING FIELD<T, 0>
/// The same in another name space.
#define OSG_DLLEXPORT_DEF2(FIELD, T, NS, MAPPING) template class MAPPING FIELD<T, NS>
#define OSG_DLLEXPORT_SFIELD_DEF1(T, MAPPING) OSG_DLLEXPORT_DEF1(SField, T, MAPPING)
#define OSG_DLLEXPORT_MFIELD_DEF1(T, MAPPING) OSG_DLLEXPORT_DEF1(MField, T, MAPPING)
#define OSG_DLLEXPORT_SFIELD_DEF2(T, NS, MAPPING) OSG_DLLEXPORT_DEF2(SField, T, NS, MAPPING)
#define OSG_DLLEXPORT_MFIELD_DEF2(T, NS, MAPPING) OSG_DLLEXPORT_DEF2(MField, T, NS, MAPPING)

// Only a Windows build of OpenSG needs these; here the definitions are found without.
#define OSG_DLLEXPORT_DECL1(FIELD, T, MAPPING)
#define OSG_DLLEXPORT_DECL2(FIELD, T, NS, MAPPING)
