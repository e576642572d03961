// The log. Lines are collected per thread and written as a whole, so that neither locks nor mixed
// lines are needed.
#include <OpenSG/OSGLog.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <streambuf>
#include <string>

namespace osg {

namespace {

const Char8* const kLevelNames[] = {"LOG", "FATAL", "WARNING", "NOTICE", "INFO", "DEBUG"};
const Char8* const kLevelWords[] = {"log", "fatal", "warning", "notice", "info", "debug"};

/// Collects a line and hands it to the log at its end.
class LineBuffer : public std::streambuf {
  public:
    ~LineBuffer() override { flush(); }

    void begin(const Char8* header) {
        flush();
        _line = header;
    }

  protected:
    int_type overflow(int_type character) override {
        if (!traits_type::eq_int_type(character, traits_type::eof())) {
            _line.push_back(traits_type::to_char_type(character));
            if (_line.back() == '\n') flush();
        }
        return traits_type::not_eof(character);
    }

    int sync() override {
        flush();
        return 0;
    }

  private:
    void flush() {
        if (!_line.empty()) osgLog().write(_line.data(), _line.size());
        _line.clear();
    }

    std::string _line;
};

/// What a thread writes to: one stream that shows, one that swallows.
struct ThreadStreams {
    LineBuffer buffer;
    std::ostream shown{&buffer};
    std::ostream hidden{nullptr};
    bool showing = true;
};

/// Whether the thread's streams are gone, as they are when static objects are destroyed.
thread_local bool streamsEnded = false;

struct EndingStreams : public ThreadStreams {
    ~EndingStreams() { streamsEnded = true; }
};

ThreadStreams& threadStreams() {
    if (streamsEnded) {
        static ThreadStreams* const last = new ThreadStreams;
        return *last;
    }
    thread_local EndingStreams streams;
    return streams;
}

} // namespace

Log::Log() {
    if (const Char8* const word = std::getenv("OSG_LOG_LEVEL")) {
        const std::string wanted(word);
        for (int level = LOG_LOG; level <= LOG_DEBUG; ++level)
            if (wanted == kLevelWords[level]) _level = static_cast<LogLevel>(level);
    }
    if (const Char8* const word = std::getenv("OSG_LOG_TYPE")) {
        const std::string wanted(word);
        if (wanted == "none") _type = LOG_NONE;
        if (wanted == "stdout") _type = LOG_STDOUT;
        if (wanted == "stderr") _type = LOG_STDERR;
    }
    if (const Char8* const word = std::getenv("OSG_LOG_HEADER")) {
        const std::string wanted(word);
        _header = wanted != "0" && wanted != "none" && wanted != "false";
    }
}

// Never destroyed: static objects may write to it while the program ends.
Log& osgLog() {
    static Log* const log = new Log;
    return *log;
}

void Log::setLogFile(const Char8* fileName) {
    std::FILE* const file = fileName == nullptr ? nullptr : std::fopen(fileName, "w");
    if (fileName != nullptr && file == nullptr) return;
    if (_file != nullptr) std::fclose(static_cast<std::FILE*>(_file));
    _file = file;
    _type = file != nullptr ? LOG_FILE : LOG_STDERR;
}

std::ostream& Log::start(LogLevel level) {
    ThreadStreams& streams = threadStreams();
    streams.showing = checkLevel(level);
    if (!streams.showing) return streams.hidden;
    streams.buffer.begin(_header ? (std::string(kLevelNames[level]) + ":  ").c_str() : "");
    return streams.shown;
}

std::ostream& Log::more(LogLevel level) {
    ThreadStreams& streams = threadStreams();
    return streams.showing && checkLevel(level) ? streams.shown : streams.hidden;
}

void Log::doLog(const Char8* format, ...) {
    ThreadStreams& streams = threadStreams();
    if (format == nullptr || !streams.showing || _type == LOG_NONE) return;

    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    if (length > 0) {
        std::string text(static_cast<std::size_t>(length) + 1, '\0');
        std::vsnprintf(&text[0], text.size(), format, again);
        text.pop_back();
        streams.shown << text;
        if (text.back() == '\n') streams.shown.flush();
    }
    va_end(again);
}

void Log::write(const Char8* text, std::size_t size) {
    std::FILE* target = nullptr;
    switch (_type) {
    case LOG_STDOUT:
        target = stdout;
        break;
    case LOG_STDERR:
        target = stderr;
        break;
    case LOG_FILE:
        target = static_cast<std::FILE*>(_file);
        break;
    case LOG_NONE:
        break;
    }
    if (target == nullptr) return;
    std::fwrite(text, 1, size, target);
    std::fflush(target);
}

} // namespace osg
