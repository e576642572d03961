#pragma once

/// @file
/// Numbers and bool as field values.

#include <OpenSG/OSGFieldForms.h>

/// One line a type: traits, C++ type, form, field name, content name. GLenum shares its C++ type
/// with UInt32, hence the second traits; bool has the third, as in OpenSG.
#define OSG_SYS_VALUE_TYPES(DO)                                                                    \
    DO(FieldDataTraits2, bool, BoolFieldForm, "Bool", "bool")                                      \
    DO(FieldDataTraits, Int8, NumberFieldForm<Int8>, "Int8", "Int8")                               \
    DO(FieldDataTraits, UInt8, NumberFieldForm<UInt8>, "UInt8", "UInt8")                           \
    DO(FieldDataTraits, Int16, NumberFieldForm<Int16>, "Int16", "Int16")                           \
    DO(FieldDataTraits, UInt16, NumberFieldForm<UInt16>, "UInt16", "UInt16")                       \
    DO(FieldDataTraits, Int32, NumberFieldForm<Int32>, "Int32", "Int32")                           \
    DO(FieldDataTraits, UInt32, NumberFieldForm<UInt32>, "UInt32", "UInt32")                       \
    DO(FieldDataTraits, Int64, NumberFieldForm<Int64>, "Int64", "Int64")                           \
    DO(FieldDataTraits, UInt64, NumberFieldForm<UInt64>, "UInt64", "UInt64")                       \
    DO(FieldDataTraits, Real32, NumberFieldForm<Real32>, "Real32", "Real32")                       \
    DO(FieldDataTraits, Real64, NumberFieldForm<Real64>, "Real64", "Real64")                       \
    DO(FieldDataTraits1, GLenum, NumberFieldForm<GLenum>, "GLenum", "GLenum")

namespace osg {

OSG_SYS_VALUE_TYPES(OSG_DECLARE_VALUE_TYPE)

} // namespace osg
