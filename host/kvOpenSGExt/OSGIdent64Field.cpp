// The field type of 64-bit identifiers: its text form, and its registration as something that is
// scanned like an integer.
#include "OSGIdent64Field.h"

#include <OpenSG/OSGSFieldTypeDef.inl>

#include <charconv>
#include <cstring>

OSG_BEGIN_NAMESPACE

DataType FieldDataTraits2<UInt64>::_type("Ident64", nullptr);

// Read to the first character that is no digit, as other integer fields are; text without a leading
// number leaves the value as it is. Independent of the locale and of the width of `long`.
bool FieldDataTraits2<UInt64>::getFromString(UInt64& value, const Char8*& text) {
    if (text == nullptr) return false;
    while (*text == ' ' || *text == '\t' || *text == '\n' || *text == '\r' || *text == ',')
        ++text;
    return std::from_chars(text, text + std::strlen(text), value).ec == std::errc();
}

void FieldDataTraits2<UInt64>::putToString(const UInt64& value, std::string& text) {
    text = std::to_string(value);
}

template <>
const FieldType SField<UInt64, 2>::_fieldType("SFIdent64", "Field",
                                              FieldDataTraits2<UInt64>::getType(),
                                              SField<UInt64, 2>::create, FieldType::SINGLE_FIELD,
                                              SFInt32::getClassType());

OSG_END_NAMESPACE
