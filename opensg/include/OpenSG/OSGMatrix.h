#pragma once

/// @file
/// Transformations of space as 4x4 matrices.

#include <OpenSG/OSGQuaternion.h>
#include <OpenSG/OSGVector.h>

#include <iomanip>

namespace osg {

namespace detail {

/// A 3x3 matrix as rotation * (stretchAxes * diagonal(scale) * transposed(stretchAxes)).
/// Matrices are row by row. A matrix that turns space inside out has three negative scales; one
/// that flattens it has zeros among them, and the rotation is still a rotation.
struct FactoredMatrix {
    Real64 rotation[9];
    Real64 scale[3];
    Real64 stretchAxes[9];
};

/// Axes that stay at right angles give the identity as stretch axes, so that rotation and scale
/// come back as a person would have set them.
FactoredMatrix factorMatrix(const Real64 (&matrix)[9]);

/// Solves for the inverse with pivoting; false when the matrix has none, `inverse` is then
/// unchanged. Both column by column (or both row by row).
bool invertMatrix(const Real64 (&matrix)[16], Real64 (&inverse)[16]);

} // namespace detail

/// A 4x4 matrix that multiplies column vectors. Stored column by column: `m[c]` is column c,
/// `m[3]` the translation. Whatever takes or prints sixteen numbers goes row by row.
template <class T>
class TransformationMatrix {
  public:
    typedef T ValueType;
    typedef Vector<T, 4> VectorType;
    typedef Vector<T, 3> VectorType3f;
    typedef Point<T, 3> PointType3f;
    typedef QuaternionBase<T> QuaternionType;

    /// The identity.
    TransformationMatrix() { setIdentity(); }

    /// Row by row.
    TransformationMatrix(T v00, T v01, T v02, T v03, T v10, T v11, T v12, T v13, T v20, T v21,
                         T v22, T v23, T v30, T v31, T v32, T v33) {
        setValue(v00, v01, v02, v03, v10, v11, v12, v13, v20, v21, v22, v23, v30, v31, v32, v33);
    }

    /// Four columns.
    TransformationMatrix(const VectorType3f& x, const VectorType3f& y, const VectorType3f& z,
                         const VectorType3f& translation) {
        setIdentity();
        const VectorType3f* columns[4] = {&x, &y, &z, &translation};
        for (UInt32 c = 0; c < 4; ++c)
            for (UInt32 r = 0; r < 3; ++r)
                _matrix[c][r] = (*columns[c])[r];
    }

    static const TransformationMatrix& identity() {
        static const TransformationMatrix unchanged;
        return unchanged;
    }

    void setIdentity() {
        for (UInt32 c = 0; c < 4; ++c)
            for (UInt32 r = 0; r < 4; ++r)
                _matrix[c][r] = c == r ? T(1) : T(0);
    }

    /// Row by row.
    void setValue(T v00, T v01, T v02, T v03, T v10, T v11, T v12, T v13, T v20, T v21, T v22,
                  T v23, T v30, T v31, T v32, T v33) {
        _matrix[0] = VectorType(v00, v10, v20, v30);
        _matrix[1] = VectorType(v01, v11, v21, v31);
        _matrix[2] = VectorType(v02, v12, v22, v32);
        _matrix[3] = VectorType(v03, v13, v23, v33);
    }
    void setValue(const TransformationMatrix& other) { *this = other; }

    /// Sixteen numbers in memory, column by column.
    void setValue(const T* columns) {
        for (UInt32 i = 0; i < 16; ++i)
            _matrix[i / 4][i % 4] = columns[i];
    }

    /// Sixteen numbers row by row; missing ones are 0.
    void setValueFromCString(const Char8* text) {
        T values[16];
        detail::parseComponents(text, values);
        for (UInt32 i = 0; i < 16; ++i)
            _matrix[i % 4][i / 4] = values[i];
    }

    /// Column `index`.
    VectorType& operator[](UInt32 index) { return _matrix[index]; }
    const VectorType& operator[](UInt32 index) const { return _matrix[index]; }

    /// Sixteen numbers, column by column.
    T* getValues() { return _matrix[0].getValues(); }
    const T* getValues() const { return _matrix[0].getValues(); }

    /// Only the translation changes.
    void setTranslate(T x, T y, T z) {
        _matrix[3][0] = x;
        _matrix[3][1] = y;
        _matrix[3][2] = z;
    }
    void setTranslate(const PointType3f& translation) {
        setTranslate(translation[0], translation[1], translation[2]);
    }

    /// Only the three numbers of the diagonal change.
    void setScale(T x, T y, T z) {
        _matrix[0][0] = x;
        _matrix[1][1] = y;
        _matrix[2][2] = z;
    }
    void setScale(T factor) { setScale(factor, factor, factor); }
    void setScale(const VectorType3f& factors) { setScale(factors[0], factors[1], factors[2]); }

    /// Only the upper left 3x3 part changes.
    void setRotate(const QuaternionType& rotation) { rotation.getValuesOnly(*this); }

    /// translate * rotate * scale.
    void setTransform(const VectorType3f& translation) {
        setIdentity();
        setTranslate(translation);
    }
    void setTransform(const QuaternionType& rotation) {
        setIdentity();
        setRotate(rotation);
    }
    void setTransform(const VectorType3f& translation, const QuaternionType& rotation) {
        setTransform(rotation);
        setTranslate(translation);
    }
    void setTransform(const VectorType3f& translation, const QuaternionType& rotation,
                      const VectorType3f& scale) {
        setTransform(translation, rotation);
        for (UInt32 c = 0; c < 3; ++c)
            for (UInt32 r = 0; r < 3; ++r)
                _matrix[c][r] *= scale[c];
    }

    /// The scale acts along axes that `scaleOrientation` turns:
    /// translate * rotate * orientation * scale * inverse orientation.
    void setTransform(const VectorType3f& translation, const QuaternionType& rotation,
                      const VectorType3f& scale, const QuaternionType& scaleOrientation) {
        TransformationMatrix unturned;
        unturned.setRotate(scaleOrientation.inverse());
        TransformationMatrix turned;
        turned.setTransform(VectorType3f(), scaleOrientation, scale);
        turned.mult(unturned);
        setTransform(translation, rotation);
        mult(turned);
    }

    /// Rotation and scale leave the point `center` where it is, but for the translation.
    void setTransform(const VectorType3f& translation, const QuaternionType& rotation,
                      const VectorType3f& scale, const QuaternionType& scaleOrientation,
                      const VectorType3f& center) {
        setTransform(translation + center, rotation, scale, scaleOrientation);
        TransformationMatrix toCenter;
        toCenter.setTranslate(-center);
        mult(toCenter);
    }

    /// The parts that `setTransform` would make this matrix of, as far as it is one of translation,
    /// rotation and scale; perspective is ignored. Where axes are at right angles the scale
    /// orientation is the identity. A mirroring matrix gives three negative scales.
    void getTransform(VectorType3f& translation, QuaternionType& rotation, VectorType3f& scale,
                      QuaternionType& scaleOrientation, const VectorType3f& center) const {
        TransformationMatrix atCenter;
        atCenter.setTranslate(-center);
        atCenter.mult(*this);
        TransformationMatrix fromCenter;
        fromCenter.setTranslate(center);
        atCenter.mult(fromCenter);
        atCenter.getTransform(translation, rotation, scale, scaleOrientation);
    }
    void getTransform(VectorType3f& translation, QuaternionType& rotation, VectorType3f& scale,
                      QuaternionType& scaleOrientation) const;

    /// This becomes `this * other`: points are transformed by `other` first.
    void mult(const TransformationMatrix& other) {
        TransformationMatrix product;
        for (UInt32 c = 0; c < 4; ++c) {
            for (UInt32 r = 0; r < 4; ++r) {
                product._matrix[c][r] =
                    _matrix[0][r] * other._matrix[c][0] + _matrix[1][r] * other._matrix[c][1] +
                    _matrix[2][r] * other._matrix[c][2] + _matrix[3][r] * other._matrix[c][3];
            }
        }
        *this = product;
    }

    /// This becomes `other * this`.
    void multLeft(const TransformationMatrix& other) {
        TransformationMatrix product(other);
        product.mult(*this);
        *this = product;
    }

    /// A point transformed, divided by its fourth component where the matrix has perspective.
    /// Source and destination may be the same.
    void mult(const PointType3f& source, PointType3f& destination) const {
        multFullMatrixPnt(source, destination);
    }
    /// A direction: the translation does not act on it.
    void mult(const VectorType3f& source, VectorType3f& destination) const {
        multMatrixVec(source, destination);
    }
    void mult(const VectorType& source, VectorType& destination) const {
        VectorType result;
        for (UInt32 r = 0; r < 4; ++r)
            for (UInt32 c = 0; c < 4; ++c)
                result[r] += _matrix[c][r] * source[c];
        destination = result;
    }

    void multMatrixPnt(const PointType3f& source, PointType3f& destination) const {
        VectorType3f result;
        multMatrixVec(VectorType3f(source), result);
        result += VectorType3f(_matrix[3]);
        destination = result;
    }
    void multMatrixPnt(PointType3f& point) const { multMatrixPnt(point, point); }
    void multFullMatrixPnt(const PointType3f& source, PointType3f& destination) const {
        const T w = _matrix[0][3] * source[0] + _matrix[1][3] * source[1] +
                    _matrix[2][3] * source[2] + _matrix[3][3];
        multMatrixPnt(source, destination);
        if (w != T(0) && w != T(1)) destination /= w;
    }
    void multFullMatrixPnt(PointType3f& point) const { multFullMatrixPnt(point, point); }
    void multMatrixVec(const VectorType3f& source, VectorType3f& destination) const {
        destination = VectorType3f(
            _matrix[0][0] * source[0] + _matrix[1][0] * source[1] + _matrix[2][0] * source[2],
            _matrix[0][1] * source[0] + _matrix[1][1] * source[1] + _matrix[2][1] * source[2],
            _matrix[0][2] * source[0] + _matrix[1][2] * source[1] + _matrix[2][2] * source[2]);
    }
    void multMatrixVec(VectorType3f& vector) const { multMatrixVec(vector, vector); }

    /// The determinant of the upper left 3x3 part.
    T det3() const {
        return VectorType3f(_matrix[0])
            .cross(VectorType3f(_matrix[1]))
            .dot(VectorType3f(_matrix[2]));
    }

    /// False, and `result` unchanged, when there is no inverse.
    bool inverse(TransformationMatrix& result) const;

    /// False, and unchanged, when there is no inverse.
    bool invert() { return inverse(*this); }
    bool invertFrom(const TransformationMatrix& other) { return other.inverse(*this); }

    void transposed(TransformationMatrix& result) const {
        const TransformationMatrix source(*this);
        for (UInt32 c = 0; c < 4; ++c)
            for (UInt32 r = 0; r < 4; ++r)
                result._matrix[c][r] = source._matrix[r][c];
    }
    void transpose() { transposed(*this); }

    bool equals(const TransformationMatrix& other, T tolerance) const {
        for (UInt32 c = 0; c < 4; ++c) {
            if (!_matrix[c].equals(other._matrix[c], tolerance)) return false;
        }
        return true;
    }
    bool operator==(const TransformationMatrix& other) const {
        return equals(other, static_cast<T>(Eps));
    }
    bool operator!=(const TransformationMatrix& other) const { return !(*this == other); }

    /// Four rows, three decimals.
    friend std::ostream& operator<<(std::ostream& stream, const TransformationMatrix& matrix) {
        const std::ios::fmtflags flags = stream.flags();
        const std::streamsize precision = stream.precision(3);
        stream.setf(std::ios::fixed, std::ios::floatfield);
        for (UInt32 r = 0; r < 4; ++r) {
            for (UInt32 c = 0; c < 4; ++c)
                stream << std::setw(8) << matrix._matrix[c][r] << (c < 3 ? " " : "\n");
        }
        stream.precision(precision);
        stream.flags(flags);
        return stream;
    }

  private:
    VectorType _matrix[4];
};

template <class T>
void TransformationMatrix<T>::getTransform(VectorType3f& translation, QuaternionType& rotation,
                                           VectorType3f& scale,
                                           QuaternionType& scaleOrientation) const {
    Real64 rows[9];
    for (UInt32 i = 0; i < 9; ++i)
        rows[i] = _matrix[i % 3][i / 3];
    const detail::FactoredMatrix parts = detail::factorMatrix(rows);

    const auto asQuaternion = [](const Real64(&turn)[9]) {
        Real64 xyzw[4];
        detail::rotationToQuaternion(turn, xyzw);
        QuaternionType result;
        result.setValueAsQuat(static_cast<T>(xyzw[0]), static_cast<T>(xyzw[1]),
                              static_cast<T>(xyzw[2]), static_cast<T>(xyzw[3]));
        return result;
    };
    rotation = asQuaternion(parts.rotation);
    scaleOrientation = asQuaternion(parts.stretchAxes);
    scale = VectorType3f(static_cast<T>(parts.scale[0]), static_cast<T>(parts.scale[1]),
                         static_cast<T>(parts.scale[2]));
    translation = VectorType3f(_matrix[3]);
}

template <class T>
bool TransformationMatrix<T>::inverse(TransformationMatrix& result) const {
    Real64 columns[16];
    for (UInt32 i = 0; i < 16; ++i)
        columns[i] = _matrix[i / 4][i % 4];
    Real64 inverted[16];
    if (!detail::invertMatrix(columns, inverted)) return false;
    for (UInt32 i = 0; i < 16; ++i)
        result._matrix[i / 4][i % 4] = static_cast<T>(inverted[i]);
    return true;
}

typedef TransformationMatrix<Real32> Matrix;

} // namespace osg
