// Loading: bytes of files and streams, with gzip unpacked on the way.

#include "files/fileContents.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <istream>
#include <new>
#include <system_error>
#include <zlib.h>

namespace osg::files {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kFirstRoom = 65536;

/// Fills the buffer from `source(place, room)`, which returns how many bytes it gave, 0 at the end.
template <class Source>
void readAll(ByteBuffer& contents, Source source) {
    for (;;) {
        if (contents.freeSize() == 0) contents.reserve((std::max)(kFirstRoom, contents.size() * 2));
        const std::size_t count = source(contents.free(), contents.freeSize());
        if (count == 0) return;
        contents.grow(count);
    }
}

bool isGzip(const char* bytes, std::size_t size) {
    return size >= 2 && bytes[0] == '\x1f' && bytes[1] == '\x8b';
}

/// Ends an inflate state when it goes out of scope.
struct InflateState {
    z_stream state = {};
    bool usable = inflateInit2(&state, 15 + 16) == Z_OK;

    ~InflateState() {
        if (usable) inflateEnd(&state);
    }
};

/// Unpacks one piece of the input into the free room. \return zlib's answer.
int inflateSome(z_stream& state, const char* end, ByteBuffer& unpacked) {
    const std::size_t most = std::size_t(1) << 30;
    const char* next = reinterpret_cast<const char*>(state.next_in);
    const std::size_t room = (std::min)(unpacked.freeSize(), most);
    state.avail_in = static_cast<uInt>((std::min)(static_cast<std::size_t>(end - next), most));
    state.next_out = reinterpret_cast<Bytef*>(unpacked.free());
    state.avail_out = static_cast<uInt>(room);
    const int result = inflate(&state, Z_NO_FLUSH);
    unpacked.grow(room - state.avail_out);
    return result;
}

/// Replaces gzip data by what was packed; other data stays as it is.
bool unpack(ByteBuffer& contents, std::string& reason) {
    if (!isGzip(contents.data(), contents.size())) return true;
    const std::size_t limit = (std::max)(kUnpackedAlways, kUnpackedRatio * contents.size());
    InflateState inflater;
    z_stream& state = inflater.state;
    if (!inflater.usable) {
        reason = "the decompressor could not be started";
        return false;
    }
    ByteBuffer unpacked;
    state.next_in = reinterpret_cast<Bytef*>(contents.data());
    for (;;) {
        if (unpacked.freeSize() == 0) {
            if (unpacked.size() >= limit) {
                reason = "the compressed data unpacks to more than " + std::to_string(limit >> 20) +
                         " MiB, which no scene of its size does";
                return false;
            }
            const std::size_t wanted = (std::max)(4 * contents.size(), unpacked.size() * 2);
            unpacked.reserve((std::min)((std::max)(kFirstRoom, wanted), limit));
        }
        const int result = inflateSome(state, contents.end(), unpacked);
        const char* next = reinterpret_cast<const char*>(state.next_in);
        const std::size_t left = static_cast<std::size_t>(contents.end() - next);
        if (result == Z_STREAM_END) {
            // Several packed files in a row are one. What else may follow is padding.
            if (!isGzip(next, left)) break;
            inflateReset(&state);
        } else if (result != Z_OK && result != Z_BUF_ERROR) {
            reason = "the compressed data is damaged";
            return false;
        } else if (left == 0 && state.avail_out != 0) {
            reason = "the compressed data ends too early";
            return false;
        }
    }
    contents = std::move(unpacked);
    return true;
}

} // namespace

void ByteBuffer::reserve(std::size_t size) {
    if (size <= _capacity) return;
    void* bytes = std::realloc(_bytes.get(), size);
    if (bytes == nullptr) throw std::bad_alloc();
    (void)_bytes.release();
    _bytes.reset(static_cast<char*>(bytes));
    _capacity = size;
}

bool readFile(const std::string& fileName, ByteBuffer& contents, std::string& reason) {
    std::error_code error;
    if (fs::is_directory(fileName, error)) {
        reason = "it is a directory";
        return false;
    }
    errno = 0;
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    const std::unique_ptr<std::FILE, Close> file(std::fopen(fileName.c_str(), "rb"));
    if (file == nullptr) {
        reason = std::strerror(errno);
        return false;
    }
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    // One byte more than the file is said to have, so that its end is seen without growing.
    const std::uintmax_t size = fs::file_size(fileName, error);
    if (!error) contents.reserve(static_cast<std::size_t>(size) + 1);
    readAll(contents, [&file](char* place, std::size_t room) {
        return std::fread(place, 1, room, file.get());
    });
    if (std::ferror(file.get()) != 0) {
        reason = std::strerror(errno);
        return false;
    }
    return unpack(contents, reason);
}

bool readStream(std::istream& stream, ByteBuffer& contents, std::string& reason) {
    readAll(contents, [&stream](char* place, std::size_t room) {
        stream.read(place, static_cast<std::streamsize>(room));
        return static_cast<std::size_t>(stream.gcount());
    });
    if (stream.bad()) {
        reason = "the stream could not be read";
        return false;
    }
    return unpack(contents, reason);
}

} // namespace osg::files
