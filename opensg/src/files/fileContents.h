#pragma once

// Reading whole files and streams into memory, unpacked where they are compressed.

#include <cstddef>
#include <cstdlib>
#include <iosfwd>
#include <memory>
#include <string>

namespace osg::files {

/// Bytes in memory that grow without being copied where the system can help it.
class ByteBuffer {
  public:
    char* data() { return _bytes.get(); }
    const char* data() const { return _bytes.get(); }
    std::size_t size() const { return _size; }
    const char* end() const { return _bytes.get() + _size; }

    /// Makes room for `size` bytes in all.
    void reserve(std::size_t size);

    /// The room behind the last byte.
    char* free() { return _bytes.get() + _size; }
    std::size_t freeSize() const { return _capacity - _size; }

    /// Says that `count` bytes of the free room are filled.
    void grow(std::size_t count) { _size += count; }

  private:
    struct Release {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    std::unique_ptr<char, Release> _bytes;
    std::size_t _size = 0;
    std::size_t _capacity = 0;
};

/// Compressed data may unpack to this much whatever its own size ...
constexpr std::size_t kUnpackedAlways = std::size_t(256) << 20;
/// ... and beyond that to this many times its own size. Scenes are far from both; data made to
/// exhaust the memory is not.
constexpr std::size_t kUnpackedRatio = 200;

/// Reads all of a file, unpacking gzip data whatever the name says.
/// \return false when it cannot be read; `reason` then says why.
bool readFile(const std::string& fileName, ByteBuffer& contents, std::string& reason);

/// The same for the rest of a stream.
bool readStream(std::istream& stream, ByteBuffer& contents, std::string& reason);

} // namespace osg::files
