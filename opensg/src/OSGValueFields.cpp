// The single and multi fields of all value types, made once here so that no other source has to.

#include <OpenSG/OSGBaseFieldDataType.h>
#include <OpenSG/OSGMathFieldDataType.h>
#include <OpenSG/OSGMFieldTypeDef.inl>
#include <OpenSG/OSGSFieldTypeDef.inl>
#include <OpenSG/OSGSysFieldDataType.h>
#include <OpenSG/OSGVecFieldDataType.h>

namespace osg {

// The name space of a field follows from its traits.
#define OSG_NAMESPACE_OF_FieldDataTraits 0
#define OSG_NAMESPACE_OF_FieldDataTraits1 1
#define OSG_NAMESPACE_OF_FieldDataTraits2 2

#define OSG_INSTANTIATE_FIELDS(TRAITS, TYPE, FORM, SUFFIX, CONTENT)                                \
    template class SField<TYPE, OSG_NAMESPACE_OF_##TRAITS>;                                        \
    template class MField<TYPE, OSG_NAMESPACE_OF_##TRAITS>;

// clang-format off
OSG_SYS_VALUE_TYPES(OSG_INSTANTIATE_FIELDS)
OSG_VEC_VALUE_TYPES(OSG_INSTANTIATE_FIELDS)
OSG_MATH_VALUE_TYPES(OSG_INSTANTIATE_FIELDS)
OSG_BASE_VALUE_TYPES(OSG_INSTANTIATE_FIELDS)
// clang-format on

} // namespace osg
