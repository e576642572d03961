// The byte order of binary scene data: every number goes out with its highest byte first, whatever
// the machine does.

#include <OpenSG/OSGBinaryDataHandler.h>

#include <algorithm>
#include <cstring>

namespace osg {

namespace {

/// The unsigned integer that carries the bits of a floating-point number, and back.
template <class To, class From>
To bitsOf(const From& value) {
    static_assert(sizeof(To) == sizeof(From), "the bits must fit exactly");
    To bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

} // namespace

BinaryDataHandler::~BinaryDataHandler() = default;

void BinaryDataHandler::put(const void* source, UInt32 size) {
    // The interface that derived classes override takes writable memory, though it only reads it.
    write(const_cast<MemoryHandle>(static_cast<const UInt8*>(source)), size);
}

void BinaryDataHandler::get(void* destination, UInt32 size) {
    read(static_cast<MemoryHandle>(destination), size);
}

void BinaryDataHandler::read(MemoryHandle, UInt32) {
    throw ReadError("this handler has nothing to read from");
}

void BinaryDataHandler::write(MemoryHandle, UInt32) {
    throw WriteError("this handler has nothing to write to");
}

template <class T>
void BinaryDataHandler::putNumber(T bits) {
    UInt8 bytes[sizeof(T)];
    for (std::size_t i = 0; i < sizeof(T); ++i)
        bytes[i] = static_cast<UInt8>(bits >> (8 * (sizeof(T) - 1 - i)));
    write(bytes, sizeof bytes);
}

template <class T>
T BinaryDataHandler::getNumber() {
    UInt8 bytes[sizeof(T)];
    read(bytes, sizeof bytes);
    UInt64 bits = 0;
    for (UInt8 byte : bytes)
        bits = (bits << 8) | byte;
    return static_cast<T>(bits);
}

void BinaryDataHandler::putValue(const bool& value) {
    putNumber<UInt8>(value ? 1 : 0);
}
void BinaryDataHandler::putValue(const Int8& value) {
    putNumber(static_cast<UInt8>(value));
}
void BinaryDataHandler::putValue(const UInt8& value) {
    putNumber(value);
}
void BinaryDataHandler::putValue(const Int16& value) {
    putNumber(static_cast<UInt16>(value));
}
void BinaryDataHandler::putValue(const UInt16& value) {
    putNumber(value);
}
void BinaryDataHandler::putValue(const Int32& value) {
    putNumber(static_cast<UInt32>(value));
}
void BinaryDataHandler::putValue(const UInt32& value) {
    putNumber(value);
}
void BinaryDataHandler::putValue(const Int64& value) {
    putNumber(static_cast<UInt64>(value));
}
void BinaryDataHandler::putValue(const UInt64& value) {
    putNumber(value);
}
void BinaryDataHandler::putValue(const Real32& value) {
    putNumber(bitsOf<UInt32>(value));
}
void BinaryDataHandler::putValue(const Real64& value) {
    putNumber(bitsOf<UInt64>(value));
}

void BinaryDataHandler::putValue(const std::string& value) {
    const UInt32 size = static_cast<UInt32>(value.size() + 1);
    putValue(size);
    put(value.c_str(), size);
}

void BinaryDataHandler::getValue(bool& value) {
    value = getNumber<UInt8>() != 0;
}
void BinaryDataHandler::getValue(Int8& value) {
    value = static_cast<Int8>(getNumber<UInt8>());
}
void BinaryDataHandler::getValue(UInt8& value) {
    value = getNumber<UInt8>();
}
void BinaryDataHandler::getValue(Int16& value) {
    value = static_cast<Int16>(getNumber<UInt16>());
}
void BinaryDataHandler::getValue(UInt16& value) {
    value = getNumber<UInt16>();
}
void BinaryDataHandler::getValue(Int32& value) {
    value = static_cast<Int32>(getNumber<UInt32>());
}
void BinaryDataHandler::getValue(UInt32& value) {
    value = getNumber<UInt32>();
}
void BinaryDataHandler::getValue(Int64& value) {
    value = static_cast<Int64>(getNumber<UInt64>());
}
void BinaryDataHandler::getValue(UInt64& value) {
    value = getNumber<UInt64>();
}
void BinaryDataHandler::getValue(Real32& value) {
    value = bitsOf<Real32>(getNumber<UInt32>());
}
void BinaryDataHandler::getValue(Real64& value) {
    value = bitsOf<Real64>(getNumber<UInt64>());
}

void BinaryDataHandler::getValue(std::string& value) {
    UInt32 size = 0;
    getValue(size);
    // The length may be garbage: memory grows with what has really been read.
    const UInt32 blockSize = 65536;
    std::string text;
    while (size > 0) {
        const UInt32 count = (std::min)(size, blockSize);
        const std::size_t start = text.size();
        text.resize(start + count);
        get(&text[start], count);
        size -= count;
    }
    if (!text.empty() && text.back() == '\0') text.pop_back();
    value.swap(text);
}

void MemoryDataHandler::read(MemoryHandle destination, UInt32 size) {
    if (size > getRemaining()) throw ReadError("the data ends before the value does");
    std::copy_n(_bytes.begin() + static_cast<std::ptrdiff_t>(_next), size, destination);
    _next += size;
}

void MemoryDataHandler::write(MemoryHandle source, UInt32 size) {
    _bytes.insert(_bytes.end(), source, source + size);
}

} // namespace osg
