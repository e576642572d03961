#pragma once

/// @file
/// The text and binary forms of field values, and the macros that name a type and choose its form
/// in one line. See OSGFieldDataType.h for what the functions promise.

#include <OpenSG/OSGBaseTypeTraits.h>
#include <OpenSG/OSGFieldDataType.h>

#include <string>

namespace osg {

/// What value types that have both text directions say of themselves.
struct ConvertableFieldTraits : public FieldTraits {
    enum { StringConvertable = ToStringConvertable | FromStringConvertable, bHasParent = 0x00 };
};

/// Numbers: the text of TypeTraits; every text is accepted, what cannot be read is 0.
template <class T>
struct NumberFieldForm : public ConvertableFieldTraits {
    static bool getFromString(T& value, const Char8*& text) {
        value = TypeTraits<T>::getFromString(text);
        return true;
    }
    static void putToString(const T& value, std::string& text) {
        text = TypeTraits<T>::putToString(value);
    }
    static UInt32 getBinSize(const T& value) { return BinaryDataHandler::sizeOf(value); }
    static void copyToBin(BinaryDataHandler& handler, const T& value) { handler.putValue(value); }
    static void copyFromBin(BinaryDataHandler& handler, T& value) { handler.getValue(value); }
};

/// "TRUE" and "FALSE"; text that starts with neither, in whatever letter case, is refused.
struct BoolFieldForm : public NumberFieldForm<bool> {
    static bool getFromString(bool& value, const Char8*& text) {
        return TypeTraits<bool>::parse(text, value);
    }
};

/// Quotes go around the text when it is put and are not taken off when it is read: the quotes
/// become part of the string, as in OpenSG. Nothing is escaped.
struct StringFieldForm : public ConvertableFieldTraits {
    static bool getFromString(std::string& value, const Char8*& text) {
        if (text == nullptr) return false;
        value = text;
        return true;
    }
    static void putToString(const std::string& value, std::string& text) {
        text = '"' + value + '"';
    }
    static UInt32 getBinSize(const std::string& value) { return BinaryDataHandler::sizeOf(value); }
    static void copyToBin(BinaryDataHandler& handler, const std::string& value) {
        handler.putValue(value);
    }
    static void copyFromBin(BinaryDataHandler& handler, std::string& value) {
        handler.getValue(value);
    }
};

/// `N` numbers in a row. `Access` finds them: `static const Number *numbers(const T &)` and the
/// same for a T that may change. Put with `separator()` between them.
template <class T, class Number, UInt32 N, class Access>
struct TupleFieldForm : public ConvertableFieldTraits {
    static bool getFromString(T& value, const Char8*& text) {
        if (text == nullptr) return false;
        value.setValueFromCString(text);
        return true;
    }
    static void putToString(const T& value, std::string& text) {
        text.clear();
        for (UInt32 i = 0; i < N; ++i) {
            if (i > 0) text += Access::separator();
            text += TypeTraits<Number>::putToString(Access::numbers(value)[i]);
        }
    }
    static UInt32 getBinSize(const T&) { return static_cast<UInt32>(N * sizeof(Number)); }
    static void copyToBin(BinaryDataHandler& handler, const T& value) {
        handler.putValues(Access::numbers(value), N);
    }
    static void copyFromBin(BinaryDataHandler& handler, T& value) {
        Number read[N];
        handler.getValues(read, N);
        for (UInt32 i = 0; i < N; ++i)
            Access::numbers(value)[i] = read[i];
    }
};

} // namespace osg

/// Declares `TRAITS<TYPE>` with the text and binary form FORM. SUFFIX is the name of the field
/// types without SF and MF. In namespace osg; the content type is defined by OSG_DEFINE_VALUE_TYPE.
#define OSG_DECLARE_VALUE_TYPE(TRAITS, TYPE, FORM, SUFFIX, CONTENT)                                \
    template <>                                                                                    \
    struct TRAITS<TYPE> : public FORM {                                                            \
        static DataType& getType(void);                                                            \
        static const Char8* getSName(void) { return "SF" SUFFIX; }                                 \
        static const Char8* getMName(void) { return "MF" SUFFIX; }                                 \
    };

/// Defines the content type, named CONTENT; in one .cpp, with the complete DataType.
#define OSG_DEFINE_VALUE_TYPE(TRAITS, TYPE, FORM, SUFFIX, CONTENT)                                 \
    DataType& TRAITS<TYPE>::getType(void) {                                                        \
        static DataType type(CONTENT, nullptr);                                                    \
        return type;                                                                               \
    }
