#pragma once

/// @file
/// Points and vectors of two, three and four components.

#include <OpenSG/OSGBaseTypes.h>
#include <OpenSG/OSGBaseTypeTraits.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <type_traits>

namespace osg {

namespace detail {

/// Whether two numbers are at most `tolerance` apart; works for unsigned ones, false for NaN.
template <class T>
bool isClose(T a, T b, T tolerance) {
    return a == b || (a < b ? static_cast<T>(b - a) <= tolerance
                            : b < a && static_cast<T>(a - b) <= tolerance);
}

/// The text of `N` components from a list separated by blanks, tabs, newlines or commas. Missing
/// components become 0, further ones are ignored, what is not a number becomes 0.
template <class T, UInt32 N>
void parseComponents(const Char8* text, T (&values)[N]) {
    for (UInt32 i = 0; i < N; ++i) {
        const Char8* token = nextToken(text);
        values[i] = token == nullptr ? T(0) : TypeTraits<T>::getFromString(token);
    }
}

template <class T, UInt32 N>
std::ostream& printComponents(std::ostream& stream, const T (&values)[N]) {
    for (UInt32 i = 0; i < N; ++i) {
        if (i > 0) stream << ", ";
        // + makes numbers of the one-byte types, which would print as characters.
        stream << +values[i];
    }
    return stream;
}

} // namespace detail

template <class T, UInt32 N>
class Vector;

/// A place in space. A Vector converts into it and back without a word.
///
/// Comparisons are within Eps per component. Assigning operators return nothing, so expressions
/// cannot be chained on them.
template <class T, UInt32 N>
class Point {
    static_assert(N >= 2 && N <= 4, "points have two to four components");

  public:
    typedef T ValueType;
    enum { _iSize = N };

    /// All components 0.
    Point() : _values{} {}

    /// The first component; the others are 0. Not the same value everywhere!
    Point(T x) : _values{x} {}
    Point(T x, T y) : _values{x, y} {}

    template <UInt32 M = N, std::enable_if_t<(M >= 3), int> = 0>
    Point(T x, T y, T z) : _values{x, y, z} {}

    template <UInt32 M = N, std::enable_if_t<(M >= 4), int> = 0>
    Point(T x, T y, T z, T w) : _values{x, y, z, w} {}

    /// From `N` numbers in memory. A template so that a literal 0 is a number, never a pointer.
    template <class P, std::enable_if_t<
                           std::is_same<P, const T*>::value || std::is_same<P, T*>::value, int> = 0>
    Point(P values) {
        for (UInt32 i = 0; i < N; ++i)
            _values[i] = values[i];
    }

    /// From another size or component type: missing components are 0, further ones are dropped.
    template <class U, UInt32 M, std::enable_if_t<!std::is_same<U, T>::value || M != N, int> = 0>
    Point(const Point<U, M>& other) : _values{} {
        constexpr UInt32 shared = (std::min)(N, M);
        for (UInt32 i = 0; i < shared; ++i)
            _values[i] = static_cast<T>(other[i]);
    }

    T& operator[](UInt32 index) { return _values[index]; }
    const T& operator[](UInt32 index) const { return _values[index]; }

    T x() const { return _values[0]; }
    T y() const { return _values[1]; }
    T z() const {
        static_assert(N >= 3, "there is no z");
        return _values[2];
    }
    T w() const {
        static_assert(N >= 4, "there is no w");
        return _values[3];
    }

    T* getValues() { return _values; }
    const T* getValues() const { return _values; }

    void setValues(T x, T y) {
        static_assert(N == 2, "the number of values differs");
        *this = Point(x, y);
    }
    void setValues(T x, T y, T z) {
        static_assert(N == 3, "the number of values differs");
        *this = Point(x, y, z);
    }
    void setValues(T x, T y, T z, T w) {
        static_assert(N == 4, "the number of values differs");
        *this = Point(x, y, z, w);
    }
    void setValue(const Point& other) { *this = other; }
    void setNull() { *this = Point(); }

    /// Numbers separated by blanks, tabs, newlines or commas; missing ones are 0, further ones are
    /// ignored.
    void setValueFromCString(const Char8* text) { detail::parseComponents(text, _values); }

    bool isZero() const { return equals(Point(), static_cast<T>(Eps)); }

    /// Every component at most `tolerance` apart.
    bool equals(const Point& other, T tolerance) const {
        for (UInt32 i = 0; i < N; ++i) {
            if (!detail::isClose(_values[i], other._values[i], tolerance)) return false;
        }
        return true;
    }

    T dist2(const Point& other) const {
        T sum = 0;
        for (UInt32 i = 0; i < N; ++i) {
            const T difference = static_cast<T>(_values[i] - other._values[i]);
            sum = static_cast<T>(sum + difference * difference);
        }
        return sum;
    }
    T dist(const Point& other) const { return static_cast<T>(std::sqrt(dist2(other))); }

    Vector<T, N> operator-(const Point& other) const {
        Vector<T, N> result;
        for (UInt32 i = 0; i < N; ++i)
            result[i] = static_cast<T>(_values[i] - other._values[i]);
        return result;
    }
    Point operator-() const {
        Point result;
        for (UInt32 i = 0; i < N; ++i)
            result._values[i] = static_cast<T>(-_values[i]);
        return result;
    }
    Point operator+(const Vector<T, N>& other) const {
        Point result(*this);
        result += other;
        return result;
    }
    Point operator-(const Vector<T, N>& other) const {
        Point result(*this);
        result -= other;
        return result;
    }
    Point operator*(T factor) const {
        Point result(*this);
        result *= factor;
        return result;
    }

    void operator+=(const Vector<T, N>& other) {
        for (UInt32 i = 0; i < N; ++i)
            _values[i] = static_cast<T>(_values[i] + other[i]);
    }
    void operator-=(const Vector<T, N>& other) {
        for (UInt32 i = 0; i < N; ++i)
            _values[i] = static_cast<T>(_values[i] - other[i]);
    }
    void operator*=(T factor) {
        for (UInt32 i = 0; i < N; ++i)
            _values[i] = static_cast<T>(_values[i] * factor);
    }
    void operator/=(T divisor) {
        for (UInt32 i = 0; i < N; ++i)
            _values[i] = static_cast<T>(_values[i] / divisor);
    }

    bool operator==(const Point& other) const { return equals(other, static_cast<T>(Eps)); }
    bool operator!=(const Point& other) const { return !(*this == other); }

    /// Lexicographic.
    bool operator<(const Point& other) const {
        for (UInt32 i = 0; i < N; ++i) {
            if (_values[i] < other._values[i]) return true;
            if (other._values[i] < _values[i]) return false;
        }
        return false;
    }

    friend std::ostream& operator<<(std::ostream& stream, const Point& point) {
        return detail::printComponents(stream, point._values);
    }

  protected:
    T _values[N];
};

/// A direction or a difference of places.
template <class T, UInt32 N>
class Vector : public Point<T, N> {
    typedef Point<T, N> Inherited;

  public:
    typedef T ValueType;

    using Inherited::Inherited;
    Vector() = default;
    Vector(const Inherited& point) : Inherited(point) {}

    T squareLength() const { return dot(*this); }
    T length() const { return static_cast<T>(std::sqrt(squareLength())); }

    /// Scales to length 1; a vector shorter than Eps stays as it is.
    void normalize() {
        const T size = length();
        if (size < static_cast<T>(Eps)) return;
        *this *= static_cast<T>(T(1) / size);
    }

    void negate() { *this = -*this; }

    T dot(const Inherited& other) const {
        T sum = 0;
        for (UInt32 i = 0; i < N; ++i)
            sum = static_cast<T>(sum + this->_values[i] * other[i]);
        return sum;
    }

    Vector cross(const Vector& other) const {
        static_assert(N == 3, "the cross product needs three components");
        const T* a = this->_values;
        const T* b = other._values;
        return Vector(static_cast<T>(a[1] * b[2] - a[2] * b[1]),
                      static_cast<T>(a[2] * b[0] - a[0] * b[2]),
                      static_cast<T>(a[0] * b[1] - a[1] * b[0]));
    }
    void crossThis(const Vector& other) { *this = cross(other); }

    /// Radians, 0 to Pi; 0 when one of the two is shorter than Eps.
    T enclosedAngle(const Vector& other) const {
        const T size = static_cast<T>(length() * other.length());
        if (size < static_cast<T>(Eps)) return 0;
        const T cosine = static_cast<T>(dot(other) / size);
        return static_cast<T>(std::acos(cosine < T(-1) ? T(-1) : cosine > T(1) ? T(1) : cosine));
    }

    Vector operator+(const Vector& other) const {
        Vector result(*this);
        result += other;
        return result;
    }
    Vector operator-(const Vector& other) const {
        Vector result(*this);
        result -= other;
        return result;
    }
    Vector operator-() const {
        Vector result;
        for (UInt32 i = 0; i < N; ++i)
            result._values[i] = static_cast<T>(-this->_values[i]);
        return result;
    }
    Vector operator*(T factor) const {
        Vector result(*this);
        result *= factor;
        return result;
    }

    /// The dot product.
    T operator*(const Vector& other) const { return dot(other); }

    friend Vector operator*(T factor, const Vector& vector) { return vector * factor; }
};

typedef Vector<Real32, 2> Vec2f;
typedef Vector<Real32, 3> Vec3f;
typedef Vector<Real32, 4> Vec4f;
typedef Vector<Real64, 2> Vec2d;
typedef Vector<Real64, 3> Vec3d;
typedef Vector<Real64, 4> Vec4d;
typedef Vector<Int8, 2> Vec2b;
typedef Vector<Int8, 3> Vec3b;
typedef Vector<Int8, 4> Vec4b;
typedef Vector<UInt8, 2> Vec2ub;
typedef Vector<UInt8, 3> Vec3ub;
typedef Vector<UInt8, 4> Vec4ub;
typedef Vector<Int16, 2> Vec2s;
typedef Vector<Int16, 3> Vec3s;
typedef Vector<Int16, 4> Vec4s;
typedef Vector<UInt16, 2> Vec2us;
typedef Vector<UInt16, 3> Vec3us;
typedef Vector<UInt16, 4> Vec4us;

typedef Point<Real32, 2> Pnt2f;
typedef Point<Real32, 3> Pnt3f;
typedef Point<Real32, 4> Pnt4f;
typedef Point<Real64, 2> Pnt2d;
typedef Point<Real64, 3> Pnt3d;
typedef Point<Real64, 4> Pnt4d;
typedef Point<Int16, 2> Pnt2s;
typedef Point<Int16, 3> Pnt3s;
typedef Point<Int16, 4> Pnt4s;

} // namespace osg
