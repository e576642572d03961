#pragma once

/// @file
/// What a type must tell about itself to be the value of a field.
///
/// `FieldDataTraits<T>` of a value type has
/// - `static DataType &getType()`: the content type,
/// - `static const Char8 *getSName()`, `getMName()`: the names of the single and the multi field,
/// - `enum { StringConvertable, bHasParent }`,
/// - `static bool getFromString(T &, const Char8 *&)`: false, and nothing changed, when the text is
///   not one of T,
/// - `static void putToString(const T &, std::string &)`: replaces the string,
/// - `static UInt32 getBinSize(const T &)`, `copyToBin(BinaryDataHandler &, const T &)`,
///   `copyFromBin(BinaryDataHandler &, T &)`: the binary form, numbers with the highest byte first.
///
/// Two field types may have values of one C++ type (`UInt32` and `GLenum`): `SField<T, 1>` asks
/// `FieldDataTraits1<T>` and `SField<T, 2>` asks `FieldDataTraits2<T>`.

#include <OpenSG/OSGBaseTypes.h>
#include <OpenSG/OSGBinaryDataHandler.h>

namespace osg {

class DataType;

/// Bits of the enumerator `StringConvertable`.
struct FieldTraits {
    enum { ToStringConvertable = 0x01, FromStringConvertable = 0x02 };
};

template <class T>
struct FieldDataTraits : public FieldTraits {};

template <class T>
struct FieldDataTraits1 : public FieldTraits {};

template <class T>
struct FieldDataTraits2 : public FieldTraits {};

/// What all value types have in common unless they say otherwise.
template <class T>
struct FieldTraitsRecurseBase : public FieldTraits {
    enum { StringConvertable = 0x00, bHasParent = 0x00 };
};

/// The binary form of a type that the data handler puts and gets as it is: numbers, bool, strings.
template <class T>
struct FieldTraitsIntegralRecurseMapper : public FieldTraitsRecurseBase<T> {
    static UInt32 getBinSize(const T& value) { return BinaryDataHandler::sizeOf(value); }
    static void copyToBin(BinaryDataHandler& handler, const T& value) { handler.putValue(value); }
    static void copyFromBin(BinaryDataHandler& handler, T& value) { handler.getValue(value); }
};

} // namespace osg
