#pragma once

/// @file
/// Points and vectors as field values.

#include <OpenSG/OSGFieldForms.h>
#include <OpenSG/OSGVector.h>

namespace osg {

/// Two blanks between the components, as OpenSG prints them.
template <class T>
struct VectorNumbers {
    static const typename T::ValueType* numbers(const T& value) { return value.getValues(); }
    static typename T::ValueType* numbers(T& value) { return value.getValues(); }
    static const Char8* separator() { return "  "; }
};

template <class T>
struct VectorFieldForm
    : public TupleFieldForm<T, typename T::ValueType, T::_iSize, VectorNumbers<T>> {};

} // namespace osg

/// Two, three and four components of one kind. One line a family: class, letters of its names.
#define OSG_VEC_VALUE_FAMILY(DO, NAME, KIND)                                                       \
    DO(FieldDataTraits, NAME##2##KIND, VectorFieldForm<NAME##2##KIND>, #NAME "2" #KIND,            \
       #NAME "2" #KIND)                                                                            \
    DO(FieldDataTraits, NAME##3##KIND, VectorFieldForm<NAME##3##KIND>, #NAME "3" #KIND,            \
       #NAME "3" #KIND)                                                                            \
    DO(FieldDataTraits, NAME##4##KIND, VectorFieldForm<NAME##4##KIND>, #NAME "4" #KIND,            \
       #NAME "4" #KIND)

#define OSG_VEC_VALUE_TYPES(DO)                                                                    \
    OSG_VEC_VALUE_FAMILY(DO, Vec, f)                                                               \
    OSG_VEC_VALUE_FAMILY(DO, Vec, d)                                                               \
    OSG_VEC_VALUE_FAMILY(DO, Vec, b)                                                               \
    OSG_VEC_VALUE_FAMILY(DO, Vec, ub)                                                              \
    OSG_VEC_VALUE_FAMILY(DO, Vec, s)                                                               \
    OSG_VEC_VALUE_FAMILY(DO, Vec, us)                                                              \
    OSG_VEC_VALUE_FAMILY(DO, Pnt, f)                                                               \
    OSG_VEC_VALUE_FAMILY(DO, Pnt, d)                                                               \
    OSG_VEC_VALUE_FAMILY(DO, Pnt, s)

namespace osg {

OSG_VEC_VALUE_TYPES(OSG_DECLARE_VALUE_TYPE)

} // namespace osg
