#pragma once

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGField.h>

#include <cstddef>
#include <vector>

/// @file
/// The numbers of a field: every value as the flat list of floats that its text would show, but
/// without the text wherever the type of the field is known. The text of OpenSG has seven digits: a
/// number written through it loses the rest, and so does every other component beside it.

namespace kv::detail {

/// How to get at the numbers of one type of field. Positions count through all elements of a field
/// of many values; a matrix counts row by row, a quaternion is an axis and an angle in radians.
struct NumberAccess {
    std::size_t (*count)(const osg::Field& field);
    /// Position must be below count.
    float (*read)(const osg::Field& field, std::size_t position);
    /// The same. Integers are rounded half away from zero and clamped to their type, booleans are
    /// true from 0.5 upward.
    void (*write)(osg::Field& field, std::size_t position, float value);
    /// Integers cannot take a NaN: write must not be called with one.
    bool takesNaN;
};

/// The access to fields of this type, null when the type has none and only text can tell.
const NumberAccess* numberAccessOf(const osg::FieldType& type);

/// The numbers of any field, by its access or else by its text. What has no numbers (pointers, most
/// strings) gives none. Replaces what was in \p numbers.
void readNumbers(const osg::Field& field, std::vector<float>& numbers);

/// The numbers of a field without access, by its text. Replaces what was in \p numbers.
void readNumbersFromText(const osg::Field& field, std::vector<float>& numbers);

} // namespace kv::detail
