// Saving: buffered output, plain or compressed, into streams or into files that appear only when
// they are complete.

#include "files/byteSink.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <ostream>
#include <system_error>
#include <vector>
#include <zlib.h>

namespace osg::files {

namespace {

namespace fs = std::filesystem;

class StreamSink : public ByteSink {
  public:
    explicit StreamSink(std::ostream& stream) : _stream(stream) {}

  private:
    bool doWrite(const char* bytes, std::size_t size) override {
        _stream.write(bytes, static_cast<std::streamsize>(size));
        return _stream.good() || fail("the stream takes no more");
    }
    bool doFinish() override {
        _stream.flush();
        return _stream.good() || fail("the stream takes no more");
    }

    std::ostream& _stream;
};

class GzipSink : public ByteSink {
  public:
    explicit GzipSink(std::unique_ptr<ByteSink> next) : _next(std::move(next)), _out(kRoom) {
        // 16 asks for a gzip header; level 1 is several times faster than the default and not
        // much larger on numbers.
        _usable = deflateInit2(&_state, 1, Z_DEFLATED, 15 + 16, 9, Z_DEFAULT_STRATEGY) == Z_OK;
    }
    ~GzipSink() override {
        if (_usable) deflateEnd(&_state);
    }

  private:
    static constexpr std::size_t kRoom = 65536;

    bool doWrite(const char* bytes, std::size_t size) override {
        const std::size_t most = std::size_t(1) << 30;
        while (size > 0) {
            const std::size_t count = size < most ? size : most;
            _state.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes));
            _state.avail_in = static_cast<uInt>(count);
            if (!pump(Z_NO_FLUSH)) return false;
            bytes += count;
            size -= count;
        }
        return true;
    }
    bool doFinish() override {
        if (!pump(Z_FINISH)) return false;
        return _next->finish() || fail(_next->reason());
    }

    bool pump(int mode) {
        if (!_usable) return fail("the compressor could not be started");
        do {
            _state.next_out = _out.data();
            _state.avail_out = static_cast<uInt>(_out.size());
            if (deflate(&_state, mode) == Z_STREAM_ERROR) return fail("the compressor failed");
            const std::size_t count = _out.size() - _state.avail_out;
            if (!_next->write(reinterpret_cast<const char*>(_out.data()), count))
                return fail(_next->reason());
        } while (_state.avail_out == 0);
        return true;
    }

    std::unique_ptr<ByteSink> _next;
    std::vector<Bytef> _out;
    z_stream _state = {};
    bool _usable = false;
};

class FileSink : public ByteSink {
  public:
    /// An empty `target` means that the file is written in place.
    FileSink(std::FILE* file, fs::path written, fs::path target)
        : _file(file), _written(std::move(written)), _target(std::move(target)) {
        std::setvbuf(_file, nullptr, _IONBF, 0);
    }
    ~FileSink() override {
        if (_file != nullptr) std::fclose(_file);
        std::error_code ignored;
        if (!_target.empty()) fs::remove(_written, ignored);
    }

  private:
    bool doWrite(const char* bytes, std::size_t size) override {
        errno = 0;
        return std::fwrite(bytes, 1, size, _file) == size || fail(std::strerror(errno));
    }
    bool doFinish() override {
        errno = 0;
        const bool closed = std::fclose(_file) == 0;
        _file = nullptr;
        if (!closed) return fail(std::strerror(errno));
        if (_target.empty()) return true;
        std::error_code error;
        const fs::file_status old = fs::status(_target, error);
        if (fs::exists(old)) fs::permissions(_written, old.permissions(), error);
        fs::rename(_written, _target, error);
        if (error) return fail(error.message());
        _target.clear();
        return true;
    }

    std::FILE* _file;
    fs::path _written;
    fs::path _target;
};

/// The file that a name leads to: what a symbolic link points at is replaced, not the link.
fs::path followLinks(const fs::path& path) {
    std::error_code error;
    const fs::path real = fs::weakly_canonical(path, error);
    return error || real.empty() ? path : real;
}

} // namespace

ByteSink::~ByteSink() = default;

bool ByteSink::write(const char* bytes, std::size_t size) {
    return _reason.empty() && (size == 0 || doWrite(bytes, size));
}

bool ByteSink::finish() {
    return _reason.empty() && doFinish();
}

bool ByteSink::fail(std::string reason) {
    _reason = reason.empty() ? "it could not be written" : std::move(reason);
    return false;
}

std::unique_ptr<ByteSink> makeStreamSink(std::ostream& stream) {
    return std::make_unique<StreamSink>(stream);
}

std::unique_ptr<ByteSink> makeGzipSink(std::unique_ptr<ByteSink> next) {
    return std::make_unique<GzipSink>(std::move(next));
}

std::unique_ptr<ByteSink> makeFileSink(const std::string& fileName, std::string& reason) {
    const fs::path target = followLinks(fileName);
    std::error_code error;
    const fs::file_status old = fs::status(target, error);
    if (fs::is_directory(old)) {
        reason = "it is a directory";
        return nullptr;
    }
    if (fs::exists(old) && !fs::is_regular_file(old)) {
        if (std::FILE* device = std::fopen(target.string().c_str(), "wb"))
            return std::make_unique<FileSink>(device, target, fs::path());
        reason = std::strerror(errno);
        return nullptr;
    }
    if (fs::exists(old)) {
        // Renaming asks for no permission to write to the file that is replaced; saving does.
        std::FILE* writable = std::fopen(target.string().c_str(), "r+b");
        if (writable == nullptr) {
            reason = std::strerror(errno);
            return nullptr;
        }
        std::fclose(writable);
    }
    for (unsigned attempt = 0; attempt < 1000; ++attempt) {
        fs::path beside = target;
        beside += ".part" + std::to_string(attempt);
        // x: only a file that is not there yet, so that nobody's file is lost.
        std::FILE* file = std::fopen(beside.string().c_str(), "wbx");
        if (file != nullptr) return std::make_unique<FileSink>(file, beside, target);
        if (errno != EEXIST) {
            reason = std::strerror(errno);
            return nullptr;
        }
    }
    reason = "there are too many unfinished files beside it";
    return nullptr;
}

ByteOutput::ByteOutput(ByteSink& sink)
    : _sink(sink), _buffer(new char[kRoom]), _at(_buffer.get()), _end(_buffer.get() + kRoom) {}

void ByteOutput::putBlanks(std::size_t count) {
    while (count > 0) {
        char* place = reserve(1);
        const std::size_t some = count < room() ? count : room();
        std::memset(place, ' ', some);
        advance(place + some);
        count -= some;
    }
}

void ByteOutput::flush() {
    const std::size_t size = static_cast<std::size_t>(_at - _buffer.get());
    _sink.write(_buffer.get(), size);
    _flushed += size;
    _at = _buffer.get();
}

void ByteOutput::putLarge(std::string_view text) {
    flush();
    if (text.size() > kRoom) {
        _sink.write(text.data(), text.size());
        _flushed += text.size();
    } else {
        text.copy(_at, text.size());
        _at += text.size();
    }
}

bool ByteOutput::finish() {
    flush();
    return _sink.finish();
}

} // namespace osg::files
