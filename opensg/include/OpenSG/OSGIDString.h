#pragma once

/// @file
/// The name of a type or of a field.

#include <OpenSG/OSGBaseTypes.h>

#include <ostream>
#include <string>

namespace osg {

/// A name that is compared as a whole and read as a C string.
class IDString {
  public:
    IDString() = default;

    /// Copies the text; null counts as no text.
    explicit IDString(const Char8* text) : _text(text == nullptr ? "" : text) {}

    /// The text, never null. Valid as long as this object.
    const Char8* str() const { return _text.c_str(); }
    UInt32 length() const { return static_cast<UInt32>(_text.size()); }

    bool operator==(const IDString& other) const { return _text == other._text; }
    bool operator!=(const IDString& other) const { return _text != other._text; }
    bool operator<(const IDString& other) const { return _text < other._text; }
    bool operator==(const Char8* other) const { return other != nullptr && _text == other; }
    bool operator!=(const Char8* other) const { return !(*this == other); }

  private:
    std::string _text;
};

inline std::ostream& operator<<(std::ostream& stream, const IDString& name) {
    return stream << name.str();
}

} // namespace osg
