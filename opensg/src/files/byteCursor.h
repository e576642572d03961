#pragma once

// Walks over the bytes of a binary file and never beyond them.

#include <OpenSG/OSGBinaryDataHandler.h>

#include <cstring>
#include <string_view>

namespace osg::files {

/// A position in bytes. Everything that is taken is either there, or the result is false and the
/// position as it was.
class ByteCursor {
  public:
    ByteCursor(const char* begin, const char* end) : _at(begin), _end(end) {}

    const char* at() const { return _at; }
    std::size_t left() const { return static_cast<std::size_t>(_end - _at); }

    /// A number, its highest byte first.
    template <class Number>
    bool take(Number& value) {
        if (left() < sizeof(Number)) return false;
        UInt64 bits = 0;
        for (std::size_t i = 0; i < sizeof(Number); ++i)
            bits = bits << 8 | static_cast<unsigned char>(_at[i]);
        value = static_cast<Number>(bits);
        _at += sizeof(Number);
        return true;
    }

    /// A text with its length in front and a NUL behind.
    bool take(std::string_view& text) {
        const char* const start = _at;
        UInt32 length = 0;
        if (take(length) && length > 0 && length <= left() && _at[length - 1] == '\0') {
            text = std::string_view(_at, length - 1);
            _at += length;
            return true;
        }
        _at = start;
        return false;
    }

    /// The next `size` bytes as a cursor of their own.
    bool take(std::size_t size, ByteCursor& part) {
        if (left() < size) return false;
        part = ByteCursor(_at, _at + size);
        _at += size;
        return true;
    }

  private:
    friend class CursorHandler;

    const char* _at;
    const char* _end;
};

/// Lets fields read their binary form from a cursor; throws ReadError where that ends too early.
class CursorHandler : public BinaryDataHandler {
  public:
    explicit CursorHandler(ByteCursor& cursor) : _cursor(cursor) {}

  protected:
    void read(MemoryHandle destination, UInt32 size) override {
        if (_cursor.left() < size) throw ReadError("the value is cut off");
        std::memcpy(destination, _cursor._at, size);
        _cursor._at += size;
    }

  private:
    ByteCursor& _cursor;
};

} // namespace osg::files
