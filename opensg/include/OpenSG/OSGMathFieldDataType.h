#pragma once

/// @file
/// Matrices and rotations as field values.

#include <OpenSG/OSGFieldForms.h>
#include <OpenSG/OSGMatrix.h>

namespace osg {

/// Sixteen numbers in memory, column by column; that is also the binary form.
struct MatrixNumbers {
    static const Real32* numbers(const Matrix& value) { return value.getValues(); }
    static Real32* numbers(Matrix& value) { return value.getValues(); }
    static const Char8* separator() { return " "; }
};

/// The text is row by row with one blank between the numbers.
struct MatrixFieldForm : public TupleFieldForm<Matrix, Real32, 16, MatrixNumbers> {
    static void putToString(const Matrix& value, std::string& text);
};

/// In binary x, y, z, w.
struct QuaternionNumbers {
    static const Real32* numbers(const Quaternion& value) { return value.getValues(); }
    static Real32* numbers(Quaternion& value) { return value.getValues(); }
    static const Char8* separator() { return " "; }
};

/// The text is the axis and the angle in radians with one blank between the numbers. Axis and angle
/// are rounded separately, so the rotation that comes back is a slightly different one.
struct QuaternionFieldForm : public TupleFieldForm<Quaternion, Real32, 4, QuaternionNumbers> {
    static void putToString(const Quaternion& value, std::string& text);
};

} // namespace osg

#define OSG_MATH_VALUE_TYPES(DO)                                                                   \
    DO(FieldDataTraits, Matrix, MatrixFieldForm, "Matrix", "Matrix")                               \
    DO(FieldDataTraits, Quaternion, QuaternionFieldForm, "Quaternion", "Quaternion")

namespace osg {

OSG_MATH_VALUE_TYPES(OSG_DECLARE_VALUE_TYPE)

} // namespace osg
