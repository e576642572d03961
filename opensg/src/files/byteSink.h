#pragma once

// Where the bytes of a saved scene go: a file, a stream, or a compressor in front of either.

#include "files/numberText.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace osg::files {

/// Takes bytes. After a failure it takes no more and keeps the reason.
class ByteSink {
  public:
    virtual ~ByteSink();

    /// \return false when the bytes could not be taken.
    bool write(const char* bytes, std::size_t size);

    /// Says that nothing follows. \return false when something that was taken could not be kept.
    bool finish();

    /// Why it failed; empty when it did not.
    const std::string& reason() const { return _reason; }

  protected:
    /// Remembers the reason and returns false.
    bool fail(std::string reason);

  private:
    virtual bool doWrite(const char* bytes, std::size_t size) = 0;
    virtual bool doFinish() = 0;

    std::string _reason;
};

/// A stream of the caller's.
std::unique_ptr<ByteSink> makeStreamSink(std::ostream& stream);

/// Compresses and passes on to `next`, which it finishes, too.
std::unique_ptr<ByteSink> makeGzipSink(std::unique_ptr<ByteSink> next);

/// A file that takes the place of an older one only when all of it has been written: the bytes go
/// to a temporary file beside it, which finish() renames. Whatever is not finished is removed.
/// Devices and pipes are written directly.
/// \return null when the file cannot be made; `reason` then says why.
std::unique_ptr<ByteSink> makeFileSink(const std::string& fileName, std::string& reason);

/// Collects small pieces for a sink.
class ByteOutput {
  public:
    explicit ByteOutput(ByteSink& sink);

    void put(char c) {
        if (_at == _end) flush();
        *_at++ = c;
    }
    void put(std::string_view text) {
        if (text.size() > room()) {
            putLarge(text);
            return;
        }
        text.copy(_at, text.size());
        _at += text.size();
    }
    void putBlanks(std::size_t count);

    /// Room for at least `size` characters, at most kRoom; pass the place behind them to advance.
    char* reserve(std::size_t size) {
        if (size > room()) flush();
        return _at;
    }
    void advance(char* behind) { _at = behind; }

    void put(float value) { advance(printReal(reserve(kNumberLength), value)); }
    void put(double value) { advance(printReal(reserve(kNumberLength), value)); }
    void putInteger(std::uint64_t value) { advance(printInteger(reserve(kNumberLength), value)); }
    void putInteger(std::int64_t value) { advance(printInteger(reserve(kNumberLength), value)); }

    /// How many bytes were put since the start.
    std::uint64_t count() const {
        return _flushed + static_cast<std::uint64_t>(_at - _buffer.get());
    }

    /// Passes everything on and finishes the sink. \return false when any of it failed.
    bool finish();

    static constexpr std::size_t kRoom = std::size_t(1) << 18;

  private:
    std::size_t room() const { return static_cast<std::size_t>(_end - _at); }
    void flush();
    void putLarge(std::string_view text);

    ByteSink& _sink;
    std::unique_ptr<char[]> _buffer;
    char* _at;
    char* _end;
    std::uint64_t _flushed = 0;
};

} // namespace osg::files
