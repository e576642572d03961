#pragma once

// The field types behind multi fields. Include it where a field is instantiated with
// OSG_DLLEXPORT_MFIELD_DEF1, and nowhere else.

#include <OpenSG/OSGMField.h>

namespace osg {

template <class T, Int32 ns>
const FieldType MField<T, ns>::_fieldType(MFieldTraits::getMName(), "Field",
                                          MFieldTraits::getType(), MField<T, ns>::create,
                                          FieldType::MULTI_FIELD);

} // namespace osg
