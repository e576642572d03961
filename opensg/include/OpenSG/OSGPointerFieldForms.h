#pragma once

/// @file
/// The macros that make pointers to containers of one class the values of fields, in one line.

#include <OpenSG/OSGFieldContainerFields.h>

/// Declares SFCLASSPtr and MFCLASSPtr. TEXT is FieldTraitsRecurseMapper for pointers without a text
/// form, detail::PrintedPointerTraits for those that show an address.
#define OSG_POINTER_FIELDS(CLASS, TEXT)                                                            \
    template <>                                                                                    \
    struct FieldDataTraits<CLASS##Ptr> : public TEXT<CLASS##Ptr> {                                 \
        static DataType& getType(void);                                                            \
        enum { bHasParent = 0x01 };                                                                \
        static const Char8* getSName(void) { return "SF" #CLASS "Ptr"; }                           \
        static const Char8* getMName(void) { return "MF" #CLASS "Ptr"; }                           \
    };                                                                                             \
    typedef SField<CLASS##Ptr> SF##CLASS##Ptr;                                                     \
    typedef MField<CLASS##Ptr> MF##CLASS##Ptr;                                                     \
    extern template class SField<CLASS##Ptr, 0>;                                                   \
    extern template class MField<CLASS##Ptr, 0>;

/// In one source file, after OSGSFieldTypeDef.inl and OSGMFieldTypeDef.inl. PARENT is the class
/// that the parent pointer points at.
#define OSG_POINTER_FIELDS_DEF(CLASS, PARENT)                                                      \
    DataType& FieldDataTraits<CLASS##Ptr>::getType(void) {                                         \
        static DataType type(#CLASS "Ptr", #PARENT "Ptr");                                         \
        return type;                                                                               \
    }                                                                                              \
    template class SField<CLASS##Ptr, 0>;                                                          \
    template class MField<CLASS##Ptr, 0>;
