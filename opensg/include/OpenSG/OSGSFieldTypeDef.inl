#pragma once

// The field types behind single fields. Include it where a field is instantiated with
// OSG_DLLEXPORT_SFIELD_DEF1, and nowhere else.

#include <OpenSG/OSGSField.h>

namespace osg {

template <class T, Int32 ns>
const FieldType SField<T, ns>::_fieldType(SFieldTraits::getSName(), "Field",
                                          SFieldTraits::getType(), SField<T, ns>::create,
                                          FieldType::SINGLE_FIELD);

} // namespace osg
