#pragma once

/// @file
/// Rotations.

#include <OpenSG/OSGVector.h>

namespace osg {

template <class T>
class TransformationMatrix;

namespace detail {

/// x, y, z, w of a rotation matrix given row by row; w is not negative, so angles are at most Pi.
void rotationToQuaternion(const Real64 (&rotation)[9], Real64 (&quaternion)[4]);

} // namespace detail

/// A rotation as a unit quaternion x, y, z, w with w the real part.
///
/// All angles are radians unless a name says degrees. The text form is not x, y, z, w but axis and
/// angle: "0 1 0 1.57" turns by a quarter about y.
template <class T>
class QuaternionBase {
  public:
    typedef T ValueType;
    typedef Vector<T, 3> VectorType;
    typedef TransformationMatrix<T> MatrixType;

    /// No rotation.
    QuaternionBase() : _quat{0, 0, 0, 1} {}
    QuaternionBase(const VectorType& axis, T angle) { setValueAsAxisRad(axis, angle); }

    /// The shortest rotation that takes one direction into the other.
    QuaternionBase(const VectorType& from, const VectorType& to) { setValue(from, to); }

    /// The rotation of a matrix whose upper left 3x3 part is one.
    explicit QuaternionBase(const MatrixType& matrix) { setValue(matrix); }

    static const QuaternionBase& identity() {
        static const QuaternionBase none;
        return none;
    }

    void setIdentity() { *this = QuaternionBase(); }

    /// The axis need not have length 1; one shorter than Eps gives the identity.
    void setValueAsAxisRad(T x, T y, T z, T angle) {
        const T size = static_cast<T>(std::sqrt(x * x + y * y + z * z));
        if (size <= static_cast<T>(Eps)) {
            setIdentity();
            return;
        }
        const T factor = static_cast<T>(std::sin(angle / 2) / size);
        setValueAsQuat(x * factor, y * factor, z * factor, static_cast<T>(std::cos(angle / 2)));
    }
    void setValueAsAxisRad(const VectorType& axis, T angle) {
        setValueAsAxisRad(axis.x(), axis.y(), axis.z(), angle);
    }
    void setValueAsAxisDeg(T x, T y, T z, T degrees) {
        setValueAsAxisRad(x, y, z, degrees * radiansPerDegree());
    }
    void setValueAsAxisDeg(const VectorType& axis, T degrees) {
        setValueAsAxisDeg(axis.x(), axis.y(), axis.z(), degrees);
    }

    /// Stored as given, not normalised.
    void setValueAsQuat(T x, T y, T z, T w) {
        _quat[0] = x;
        _quat[1] = y;
        _quat[2] = z;
        _quat[3] = w;
    }
    void setValueAsQuat(const T* quat) { setValueAsQuat(quat[0], quat[1], quat[2], quat[3]); }

    void setValue(const MatrixType& matrix);
    void setValue(const VectorType& from, const VectorType& to);

    /// Axis x, y, z and angle in radians.
    void setValueFromCString(const Char8* text) {
        T values[4];
        detail::parseComponents(text, values);
        setValueAsAxisRad(values[0], values[1], values[2], values[3]);
    }

    /// An axis of length 1; the identity has axis 0 0 1 and angle 0.
    void getValueAsAxisRad(T& x, T& y, T& z, T& angle) const {
        const T size = static_cast<T>(
            std::sqrt(_quat[0] * _quat[0] + _quat[1] * _quat[1] + _quat[2] * _quat[2]));
        if (size <= static_cast<T>(Eps)) {
            x = y = angle = 0;
            z = 1;
            return;
        }
        x = _quat[0] / size;
        y = _quat[1] / size;
        z = _quat[2] / size;
        // A real part that rounding pushed beyond 1 must not become NaN.
        const T cosine = _quat[3] > 1 ? T(1) : _quat[3] < -1 ? T(-1) : _quat[3];
        angle = static_cast<T>(2 * std::acos(cosine));
    }
    void getValueAsAxisRad(VectorType& axis, T& angle) const {
        getValueAsAxisRad(axis[0], axis[1], axis[2], angle);
    }
    void getValueAsAxisDeg(T& x, T& y, T& z, T& degrees) const {
        getValueAsAxisRad(x, y, z, degrees);
        degrees /= radiansPerDegree();
    }
    void getValueAsAxisDeg(VectorType& axis, T& degrees) const {
        getValueAsAxisDeg(axis[0], axis[1], axis[2], degrees);
    }
    void getValueAsQuat(T& x, T& y, T& z, T& w) const {
        x = _quat[0];
        y = _quat[1];
        z = _quat[2];
        w = _quat[3];
    }

    /// The whole matrix becomes this rotation.
    void getValue(MatrixType& matrix) const;

    /// Only the upper left 3x3 part of the matrix is written.
    void getValuesOnly(MatrixType& matrix) const;

    /// x, y, z, w.
    T& operator[](UInt32 index) { return _quat[index]; }
    const T& operator[](UInt32 index) const { return _quat[index]; }
    T* getValues() { return _quat; }
    const T* getValues() const { return _quat; }
    T x() const { return _quat[0]; }
    T y() const { return _quat[1]; }
    T z() const { return _quat[2]; }
    T w() const { return _quat[3]; }

    T length() const {
        T sum = 0;
        for (T component : _quat)
            sum += component * component;
        return static_cast<T>(std::sqrt(sum));
    }

    /// To length 1; one shorter than Eps stays as it is.
    void normalize() {
        const T size = length();
        if (size <= static_cast<T>(Eps)) return;
        for (T& component : _quat)
            component /= size;
    }

    /// The opposite rotation; for lengths other than 1 the reciprocal quaternion.
    QuaternionBase inverse() const {
        T square = 0;
        for (T component : _quat)
            square += component * component;
        if (square <= static_cast<T>(Eps)) square = 1;
        QuaternionBase result;
        result.setValueAsQuat(-_quat[0] / square, -_quat[1] / square, -_quat[2] / square,
                              _quat[3] / square);
        return result;
    }
    void invert() { *this = inverse(); }
    const QuaternionBase conj() const {
        QuaternionBase result;
        result.setValueAsQuat(-_quat[0], -_quat[1], -_quat[2], _quat[3]);
        return result;
    }

    /// This becomes `this * other`: a vector is turned by `other` first.
    void mult(const QuaternionBase& other) { *this = *this * other; }

    /// This becomes `other * this`: a vector is turned by `other` last.
    void multLeft(const QuaternionBase& other) { *this = other * *this; }
    void operator*=(const QuaternionBase& other) { mult(other); }

    friend QuaternionBase operator*(const QuaternionBase& a, const QuaternionBase& b) {
        const T* p = a._quat;
        const T* q = b._quat;
        QuaternionBase result;
        result.setValueAsQuat(p[3] * q[0] + p[0] * q[3] + p[1] * q[2] - p[2] * q[1],
                              p[3] * q[1] + p[1] * q[3] + p[2] * q[0] - p[0] * q[2],
                              p[3] * q[2] + p[2] * q[3] + p[0] * q[1] - p[1] * q[0],
                              p[3] * q[3] - p[0] * q[0] - p[1] * q[1] - p[2] * q[2]);
        return result;
    }

    /// The vector turned; source and destination may be the same.
    void multVec(const VectorType& source, VectorType& destination) const {
        // v + 2w (q x v) + 2 q x (q x v), with q the imaginary part
        const VectorType imaginary(_quat[0], _quat[1], _quat[2]);
        VectorType twice = imaginary.cross(source);
        twice *= 2;
        destination = source + twice * _quat[3] + imaginary.cross(twice);
    }

    /// The same axis, the angle times `factor`.
    void scaleAngle(T factor) {
        VectorType axis;
        T angle = 0;
        getValueAsAxisRad(axis, angle);
        setValueAsAxisRad(axis, angle * factor);
    }

    /// Between two rotations along the shorter arc; `t` 0 gives `from`, 1 gives `to`.
    static QuaternionBase slerp(const QuaternionBase& from, const QuaternionBase& to, T t);

    bool equals(const QuaternionBase& other, T tolerance) const {
        for (UInt32 i = 0; i < 4; ++i) {
            if (!detail::isClose(_quat[i], other._quat[i], tolerance)) return false;
        }
        return true;
    }

    /// Within Eps per component: q and -q are the same rotation, but not equal.
    bool operator==(const QuaternionBase& other) const {
        return equals(other, static_cast<T>(Eps));
    }
    bool operator!=(const QuaternionBase& other) const { return !(*this == other); }

    friend std::ostream& operator<<(std::ostream& stream, const QuaternionBase& quaternion) {
        return detail::printComponents(stream, quaternion._quat);
    }

  private:
    static constexpr T radiansPerDegree() { return static_cast<T>(3.14159265358979323846 / 180); }

    T _quat[4];
};

template <class T>
void QuaternionBase<T>::setValue(const MatrixType& matrix) {
    Real64 rows[9];
    for (UInt32 i = 0; i < 9; ++i)
        rows[i] = matrix[i % 3][i / 3];
    Real64 xyzw[4];
    detail::rotationToQuaternion(rows, xyzw);
    for (UInt32 i = 0; i < 4; ++i)
        _quat[i] = static_cast<T>(xyzw[i]);
}

template <class T>
void QuaternionBase<T>::setValue(const VectorType& from, const VectorType& to) {
    VectorType a(from);
    VectorType b(to);
    a.normalize();
    b.normalize();
    const T cosine = a.dot(b);
    if (cosine < static_cast<T>(-1) + static_cast<T>(Eps)) {
        // Opposite directions: half a turn about any axis at right angles.
        VectorType axis = VectorType(1, 0, 0).cross(a);
        if (axis.length() < static_cast<T>(0.1)) axis = VectorType(0, 1, 0).cross(a);
        axis.normalize();
        setValueAsQuat(axis[0], axis[1], axis[2], 0);
        return;
    }
    const VectorType axis = a.cross(b);
    setValueAsQuat(axis[0], axis[1], axis[2], 1 + cosine);
    normalize();
}

template <class T>
void QuaternionBase<T>::getValuesOnly(MatrixType& matrix) const {
    const T x = _quat[0];
    const T y = _quat[1];
    const T z = _quat[2];
    const T w = _quat[3];
    matrix[0][0] = 1 - 2 * (y * y + z * z);
    matrix[0][1] = 2 * (x * y + z * w);
    matrix[0][2] = 2 * (z * x - y * w);
    matrix[1][0] = 2 * (x * y - z * w);
    matrix[1][1] = 1 - 2 * (z * z + x * x);
    matrix[1][2] = 2 * (y * z + x * w);
    matrix[2][0] = 2 * (z * x + y * w);
    matrix[2][1] = 2 * (y * z - x * w);
    matrix[2][2] = 1 - 2 * (y * y + x * x);
}

template <class T>
void QuaternionBase<T>::getValue(MatrixType& matrix) const {
    matrix.setIdentity();
    getValuesOnly(matrix);
}

template <class T>
QuaternionBase<T> QuaternionBase<T>::slerp(const QuaternionBase& from, const QuaternionBase& to,
                                           T t) {
    T cosine = 0;
    for (UInt32 i = 0; i < 4; ++i)
        cosine += from._quat[i] * to._quat[i];
    const T sign = cosine < 0 ? T(-1) : T(1);
    cosine *= sign;
    T fromWeight = 1 - t;
    T toWeight = t;
    // Nearly the same: the straight line is as good, and the sine would vanish below.
    if (1 - cosine > static_cast<T>(0.00001)) {
        const T angle = static_cast<T>(std::acos(cosine));
        const T sine = static_cast<T>(std::sin(angle));
        fromWeight = static_cast<T>(std::sin((1 - t) * angle) / sine);
        toWeight = static_cast<T>(std::sin(t * angle) / sine);
    }
    toWeight *= sign;
    QuaternionBase result;
    for (UInt32 i = 0; i < 4; ++i)
        result._quat[i] = fromWeight * from._quat[i] + toWeight * to._quat[i];
    return result;
}

typedef QuaternionBase<Real32> Quaternion;

} // namespace osg
