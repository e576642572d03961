#pragma once

/// @file
/// Colours of three and four components.

#include <OpenSG/OSGVector.h>

namespace osg {

namespace detail {

/// Arithmetic and comparison of a colour class, which it inherits: component by component, nothing
/// is clamped. Assigning operators return nothing.
template <class Self, class T, UInt32 N>
class ColorArithmetic {
  public:
    typedef T ValueType;

    T& operator[](UInt32 index) { return _values[index]; }
    const T& operator[](UInt32 index) const { return _values[index]; }

    T red() const { return _values[0]; }
    T green() const { return _values[1]; }
    T blue() const { return _values[2]; }

    void clear() { *this = ColorArithmetic(); }

    /// Numbers separated by blanks, tabs, newlines or commas; missing ones are 0.
    void setValueFromCString(const Char8* text) { parseComponents(text, _values); }

    bool equals(const Self& other, T tolerance) const {
        for (UInt32 i = 0; i < N; ++i) {
            if (!isClose(_values[i], other._values[i], tolerance)) return false;
        }
        return true;
    }
    bool operator==(const Self& other) const { return equals(other, static_cast<T>(Eps)); }
    bool operator!=(const Self& other) const { return !(*this == other); }

    void operator+=(const Self& other) {
        combine(other, [](T a, T b) { return static_cast<T>(a + b); });
    }
    void operator-=(const Self& other) {
        combine(other, [](T a, T b) { return static_cast<T>(a - b); });
    }
    void operator*=(const Self& other) {
        combine(other, [](T a, T b) { return static_cast<T>(a * b); });
    }
    void operator/=(const Self& other) {
        combine(other, [](T a, T b) { return static_cast<T>(a / b); });
    }
    void operator+=(T value) { *this += filledWith(value); }
    void operator-=(T value) { *this -= filledWith(value); }
    void operator*=(T value) { *this *= filledWith(value); }
    void operator/=(T value) { *this /= filledWith(value); }

    friend Self operator+(Self a, const Self& b) {
        a += b;
        return a;
    }
    friend Self operator-(Self a, const Self& b) {
        a -= b;
        return a;
    }
    friend Self operator*(Self a, const Self& b) {
        a *= b;
        return a;
    }
    friend Self operator/(Self a, const Self& b) {
        a /= b;
        return a;
    }
    friend Self operator+(Self a, T b) {
        a += b;
        return a;
    }
    friend Self operator-(Self a, T b) {
        a -= b;
        return a;
    }
    friend Self operator*(Self a, T b) {
        a *= b;
        return a;
    }
    friend Self operator*(T a, Self b) {
        b *= a;
        return b;
    }
    friend Self operator/(Self a, T b) {
        a /= b;
        return a;
    }

    friend std::ostream& operator<<(std::ostream& stream, const Self& color) {
        return printComponents(stream, color._values);
    }

  protected:
    ColorArithmetic() : _values{} {}

    T _values[N];

  private:
    static Self filledWith(T value) {
        Self color;
        for (UInt32 i = 0; i < N; ++i)
            color._values[i] = value;
        return color;
    }

    template <class Operation>
    void combine(const Self& other, Operation operation) {
        for (UInt32 i = 0; i < N; ++i)
            _values[i] = operation(_values[i], other._values[i]);
    }
};

} // namespace detail

/// Red, green, blue; 0 to 1 for floating-point components, but no range is enforced.
template <class T>
class Color3 : public detail::ColorArithmetic<Color3<T>, T, 3> {
  public:
    /// Black.
    Color3() = default;
    Color3(T red, T green, T blue) { setValuesRGB(red, green, blue); }
    explicit Color3(const T* rgb) { setValuesRGB(rgb[0], rgb[1], rgb[2]); }

    void setValuesRGB(T red, T green, T blue) {
        this->_values[0] = red;
        this->_values[1] = green;
        this->_values[2] = blue;
    }

    T* getValuesRGB() { return this->_values; }
    const T* getValuesRGB() const { return this->_values; }
};

/// Red, green, blue and alpha (1 is opaque).
template <class T>
class Color4 : public detail::ColorArithmetic<Color4<T>, T, 4> {
  public:
    /// All four components 0: black and fully transparent.
    Color4() = default;
    Color4(T red, T green, T blue, T alpha) { setValuesRGBA(red, green, blue, alpha); }
    explicit Color4(const T* rgba) { setValuesRGBA(rgba[0], rgba[1], rgba[2], rgba[3]); }

    T alpha() const { return this->_values[3]; }

    void setValuesRGBA(T red, T green, T blue, T alpha) {
        this->_values[0] = red;
        this->_values[1] = green;
        this->_values[2] = blue;
        this->_values[3] = alpha;
    }

    T* getValuesRGBA() { return this->_values; }
    const T* getValuesRGBA() const { return this->_values; }
};

typedef Color3<Real32> Color3f;
typedef Color4<Real32> Color4f;
typedef Color3<UInt8> Color3ub;
typedef Color4<UInt8> Color4ub;

} // namespace osg
