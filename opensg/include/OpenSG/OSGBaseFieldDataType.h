#pragma once

/// @file
/// Strings, colours, times, bit masks and volumes as field values.

#include <OpenSG/OSGColor.h>
#include <OpenSG/OSGDynamicVolume.h>
#include <OpenSG/OSGFieldForms.h>

namespace osg {

template <class T, UInt32 N>
struct ColorNumbers {
    static const typename T::ValueType* numbers(const T& value) { return &value[0]; }
    static typename T::ValueType* numbers(T& value) { return &value[0]; }
    static const Char8* separator() { return " "; }
};

/// One blank between the components.
template <class T, UInt32 N>
struct ColorFieldForm : public TupleFieldForm<T, typename T::ValueType, N, ColorNumbers<T, N>> {};

typedef ColorFieldForm<Color3f, 3> Color3fFieldForm;
typedef ColorFieldForm<Color4f, 4> Color4fFieldForm;
typedef ColorFieldForm<Color3ub, 3> Color3ubFieldForm;
typedef ColorFieldForm<Color4ub, 4> Color4ubFieldForm;

/// Minimum and maximum of a box, center and radius of a sphere. Four numbers are read as a sphere,
/// any other count as a box, its missing numbers 0.
struct DynamicVolumeFieldForm : public ConvertableFieldTraits {
    static bool getFromString(DynamicVolume& value, const Char8*& text);
    static void putToString(const DynamicVolume& value, std::string& text);
    static UInt32 getBinSize(const DynamicVolume& value);
    static void copyToBin(BinaryDataHandler& handler, const DynamicVolume& value);
    static void copyFromBin(BinaryDataHandler& handler, DynamicVolume& value);
};

} // namespace osg

/// Time shares its C++ type with Real64 and BitVector with UInt64, hence the second traits.
#define OSG_BASE_VALUE_TYPES(DO)                                                                   \
    DO(FieldDataTraits, std::string, StringFieldForm, "String", "string")                          \
    DO(FieldDataTraits, Color3f, Color3fFieldForm, "Color3f", "Color3f")                           \
    DO(FieldDataTraits, Color4f, Color4fFieldForm, "Color4f", "Color4f")                           \
    DO(FieldDataTraits, Color3ub, Color3ubFieldForm, "Color3ub", "Color3ub")                       \
    DO(FieldDataTraits, Color4ub, Color4ubFieldForm, "Color4ub", "Color4ub")                       \
    DO(FieldDataTraits1, Time, NumberFieldForm<Time>, "Time", "Time")                              \
    DO(FieldDataTraits1, BitVector, NumberFieldForm<BitVector>, "BitVector", "BitVector")          \
    DO(FieldDataTraits, DynamicVolume, DynamicVolumeFieldForm, "DynamicVolume", "DynamicVolume")

namespace osg {

OSG_BASE_VALUE_TYPES(OSG_DECLARE_VALUE_TYPE)

} // namespace osg
