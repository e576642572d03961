#pragma once

/// @file
/// Constants and text forms of the base types.
///
/// The text forms are those of the C library in its "C" locale and do not follow `LC_NUMERIC`: a
/// host that switches to a decimal comma reads and writes the same files.

#include <OpenSG/OSGBaseTypes.h>

#include <string>

namespace osg {

namespace detail {

/// Floating-point text. `%e`, that is seven significant digits.
std::string realToText(Real64 value);

/// Appends instead of making a string of its own.
void appendReal(std::string& text, Real64 value);

/// `strtof`, `strtod`: leading white space, sign, decimal with exponent, `0x` hexadecimal, `inf`,
/// `nan`; stops at the first other character, 0 when nothing can be read. Too large a number is
/// infinite, too small a one is 0 or denormal. Null counts as empty text.
Real32 textToReal32(const Char8* text);
Real64 textToReal64(const Char8* text);

/// `strtoll`, `strtoull` with base 0: decimal, `0x` hexadecimal, octal after a leading 0; stops at
/// the first other character. Outside 64 bits the nearest limit. Null counts as empty text.
Int64 textToInteger(const Char8* text);
UInt64 textToUnsigned(const Char8* text);

/// One component of a vector or colour in a list of numbers separated by blanks, tabs, newlines or
/// commas: returns the start of the next number and moves `text` behind it; null at the end.
const Char8* nextToken(const Char8*& text);

} // namespace detail

/// Constants and text form of a number type.
template <class T>
struct TypeTraits;

/// The part that signed and unsigned integers share. Text wraps into the narrower types: "300" is
/// 44 in a `UInt8`.
template <class T>
struct IntegerTypeTraits {
    static constexpr T One = T(1);
    static constexpr T BitsClear = T(0);
    static constexpr T BitsSet = static_cast<T>(~T(0));

    static constexpr T getZeroElement() { return T(0); }
    static constexpr T getOneElement() { return T(1); }
    static std::string putToString(const T& value) { return std::to_string(value); }
};

template <class T>
struct SignedTypeTraits : public IntegerTypeTraits<T> {
    static T getFromString(const Char8* text) {
        return static_cast<T>(detail::textToInteger(text));
    }
};

template <class T>
struct UnsignedTypeTraits : public IntegerTypeTraits<T> {
    static T getFromString(const Char8* text) {
        return static_cast<T>(detail::textToUnsigned(text));
    }
};

template <>
struct TypeTraits<Int8> : public SignedTypeTraits<Int8> {};
template <>
struct TypeTraits<Int16> : public SignedTypeTraits<Int16> {};
template <>
struct TypeTraits<Int32> : public SignedTypeTraits<Int32> {};
template <>
struct TypeTraits<Int64> : public SignedTypeTraits<Int64> {};
template <>
struct TypeTraits<UInt8> : public UnsignedTypeTraits<UInt8> {};
template <>
struct TypeTraits<UInt16> : public UnsignedTypeTraits<UInt16> {};
template <>
struct TypeTraits<UInt32> : public UnsignedTypeTraits<UInt32> {};
template <>
struct TypeTraits<UInt64> : public UnsignedTypeTraits<UInt64> {};

template <>
struct TypeTraits<Real32> {
    static constexpr Real32 One = 1.f;

    static constexpr Real32 getZeroElement() { return 0.f; }
    static constexpr Real32 getOneElement() { return 1.f; }
    static Real32 getFromString(const Char8* text) { return detail::textToReal32(text); }
    static std::string putToString(const Real32& value) { return detail::realToText(value); }
};

template <>
struct TypeTraits<Real64> {
    static constexpr Real64 One = 1.;

    static constexpr Real64 getZeroElement() { return 0.; }
    static constexpr Real64 getOneElement() { return 1.; }
    static Real64 getFromString(const Char8* text) { return detail::textToReal64(text); }
    static std::string putToString(const Real64& value) { return detail::realToText(value); }
};

template <>
struct TypeTraits<bool> {
    static constexpr bool getZeroElement() { return false; }
    static constexpr bool getOneElement() { return true; }

    /// True for text that starts with "true" in any letter case, false for all other text. A field
    /// of bool makes a difference between "false" and text that is neither.
    static bool getFromString(const Char8* text);
    static std::string putToString(const bool& value) { return value ? "TRUE" : "FALSE"; }

    /// Whether the text starts with "true" or "false" in any letter case; sets `value` then.
    static bool parse(const Char8* text, bool& value);
};

} // namespace osg
