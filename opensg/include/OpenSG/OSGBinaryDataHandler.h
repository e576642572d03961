#pragma once

/// @file
/// Values to and from a stream of bytes, numbers with the highest byte first.

#include <OpenSG/OSGBaseTypes.h>

#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace osg {

/// Puts values into a stream of bytes and gets them back in the same order.
///
/// The stream itself is the derived class: it overrides `write` to take bytes and `read` to supply
/// them. Strings are a `UInt32` length that includes a final NUL, the bytes, and the NUL; a bool is
/// one byte.
class BinaryDataHandler {
  public:
    typedef UInt8* MemoryHandle;

    /// Thrown when the stream ends before a value does, or cannot be read at all.
    class ReadError : public std::exception {
      public:
        explicit ReadError(const Char8* reason) : _what(std::string("ReadError: ") + reason) {}
        const char* what() const noexcept override { return _what.c_str(); }

      private:
        std::string _what;
    };

    /// Thrown when the stream takes no more bytes.
    class WriteError : public std::exception {
      public:
        explicit WriteError(const Char8* reason) : _what(std::string("WriteError: ") + reason) {}
        const char* what() const noexcept override { return _what.c_str(); }

      private:
        std::string _what;
    };

    BinaryDataHandler() = default;
    BinaryDataHandler(const BinaryDataHandler&) = delete;
    BinaryDataHandler& operator=(const BinaryDataHandler&) = delete;
    virtual ~BinaryDataHandler();

    /// Sends all bytes straight through `read` and `write`. Here they never go another way; OpenSG
    /// gathers them in buffers that the derived class supplies, unless it is told otherwise.
    virtual void forceDirectIO() {}

    /// Bytes as they are.
    void put(const void* source, UInt32 size);
    void get(void* destination, UInt32 size);

    void putValue(const bool& value);
    void putValue(const Int8& value);
    void putValue(const UInt8& value);
    void putValue(const Int16& value);
    void putValue(const UInt16& value);
    void putValue(const Int32& value);
    void putValue(const UInt32& value);
    void putValue(const Int64& value);
    void putValue(const UInt64& value);
    void putValue(const Real32& value);
    void putValue(const Real64& value);
    void putValue(const std::string& value);

    /// The value keeps what it had when the stream ends too early and ReadError is thrown.
    void getValue(bool& value);
    void getValue(Int8& value);
    void getValue(UInt8& value);
    void getValue(Int16& value);
    void getValue(UInt16& value);
    void getValue(Int32& value);
    void getValue(UInt32& value);
    void getValue(Int64& value);
    void getValue(UInt64& value);
    void getValue(Real32& value);
    void getValue(Real64& value);
    void getValue(std::string& value);

    /// `count` values one after the other; no count is written.
    template <class T>
    void putValues(const T* values, UInt32 count) {
        for (UInt32 i = 0; i < count; ++i)
            putValue(values[i]);
    }

    template <class T>
    void getValues(T* values, UInt32 count) {
        for (UInt32 i = 0; i < count; ++i)
            getValue(values[i]);
    }

    /// How many bytes putValue writes for a number.
    template <class T>
    static UInt32 sizeOf(const T&) {
        return static_cast<UInt32>(sizeof(T));
    }
    static UInt32 sizeOf(const bool&) { return 1; }
    static UInt32 sizeOf(const std::string& value) {
        return static_cast<UInt32>(sizeof(UInt32) + value.size() + 1);
    }

  protected:
    /// Supplies the next bytes, all of them; throws ReadError otherwise. This one always throws.
    virtual void read(MemoryHandle destination, UInt32 size);

    /// Takes the next bytes. This one always throws WriteError.
    virtual void write(MemoryHandle source, UInt32 size);

  private:
    template <class T>
    void putNumber(T bits);
    template <class T>
    T getNumber();
};

/// A handler over bytes in memory: what was put can be read back from the start.
class MemoryDataHandler : public BinaryDataHandler {
  public:
    MemoryDataHandler() = default;
    explicit MemoryDataHandler(std::vector<UInt8> bytes) : _bytes(std::move(bytes)) {}

    const std::vector<UInt8>& getBytes() const { return _bytes; }

    /// Reading goes on at the first byte again.
    void rewind() { _next = 0; }

    /// How many bytes are left to read.
    std::size_t getRemaining() const { return _bytes.size() - _next; }

  protected:
    void read(MemoryHandle destination, UInt32 size) override;
    void write(MemoryHandle source, UInt32 size) override;

  private:
    std::vector<UInt8> _bytes;
    std::size_t _next = 0;
};

} // namespace osg
