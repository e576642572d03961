#pragma once

/// @file
/// The log: lines with a level, to standard error unless told otherwise.
///
/// Lines look like `WARNING:  text`. Levels that are not shown cost a comparison. Output of the
/// level LOG_LOG is shown at every level. The environment sets the start: `OSG_LOG_LEVEL`
/// (`log`, `fatal`, `warning`, `notice`, `info`, `debug`; `warning` by default), `OSG_LOG_TYPE`
/// (`none`, `stdout`, `stderr`), `OSG_LOG_HEADER` (`0`, `none` or `false` leaves the level's name
/// out of the lines).

#include <OpenSG/OSGBaseTypes.h>

#include <ostream>

namespace osg {

enum LogType { LOG_NONE = 0, LOG_STDOUT, LOG_STDERR, LOG_FILE };

enum LogLevel { LOG_LOG = 0, LOG_FATAL, LOG_WARNING, LOG_NOTICE, LOG_INFO, LOG_DEBUG };

/// Where log lines go and which of them. One per program; set it up before using threads.
class Log {
  public:
    LogType getLogType() const { return _type; }
    /// LOG_NONE silences everything. LOG_FILE has no effect before setLogFile.
    void setLogType(LogType type) { _type = type; }

    LogLevel getLogLevel() const { return _level; }
    /// Lines of this level and all more severe ones are shown.
    void setLogLevel(LogLevel level) { _level = level; }

    /// Sends lines to a file, which is overwritten. Null closes it and sends lines to standard
    /// error again; a file that cannot be opened changes nothing.
    void setLogFile(const Char8* fileName);

    /// Whether lines begin with their level.
    bool getHeader() const { return _header; }
    void setHeader(bool header) { _header = header; }

    bool checkLevel(LogLevel level) const { return _type != LOG_NONE && level <= _level; }

    /// Starts a line of the level and returns the stream that takes the rest of it; one that
    /// swallows everything when the level is not shown. The line is written when it ends
    /// (`std::endl`) or when the next one starts. Each thread has a stream of its own, so lines do
    /// not mix.
    std::ostream& start(LogLevel level);

    /// Goes on with the line that was started last.
    std::ostream& more(LogLevel level);

    /// printf into the line that was started last.
    void doLog(const Char8* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;

    /// Writes one whole line, used by the streams.
    void write(const Char8* text, std::size_t size);

    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

  private:
    friend Log& osgLog();
    Log();

    LogType _type = LOG_STDERR;
    LogLevel _level = LOG_WARNING;
    bool _header = true;
    void* _file = nullptr;
};

/// The log of the program.
Log& osgLog();

/// Text without a level in front; shown unless the log is silenced.
template <class T>
std::ostream& operator<<(Log& log, const T& value) {
    return log.start(LOG_LOG) << value;
}

} // namespace osg

/// `SWARNING << "text " << number << std::endl;`
#define SLOG osg::osgLog().start(osg::LOG_LOG)
#define SFATAL osg::osgLog().start(osg::LOG_FATAL)
#define SWARNING osg::osgLog().start(osg::LOG_WARNING)
#define SNOTICE osg::osgLog().start(osg::LOG_NOTICE)
#define SINFO osg::osgLog().start(osg::LOG_INFO)
#define SDEBUG osg::osgLog().start(osg::LOG_DEBUG)

/// The same in the middle of a line.
#define PLOG osg::osgLog().more(osg::LOG_LOG)
#define PFATAL osg::osgLog().more(osg::LOG_FATAL)
#define PWARNING osg::osgLog().more(osg::LOG_WARNING)
#define PNOTICE osg::osgLog().more(osg::LOG_NOTICE)
#define PINFO osg::osgLog().more(osg::LOG_INFO)
#define PDEBUG osg::osgLog().more(osg::LOG_DEBUG)

/// `FWARNING(("text %d\n", number));`, with two pairs of brackets.
#define OSG_LOG_PRINTF(LEVEL, ARGUMENTS)                                                           \
    do {                                                                                           \
        if (osg::osgLog().checkLevel(LEVEL)) {                                                     \
            osg::osgLog().start(LEVEL);                                                            \
            osg::osgLog().doLog ARGUMENTS;                                                         \
        }                                                                                          \
    } while (false)
#define FLOG(ARGUMENTS) OSG_LOG_PRINTF(osg::LOG_LOG, ARGUMENTS)
#define FFATAL(ARGUMENTS) OSG_LOG_PRINTF(osg::LOG_FATAL, ARGUMENTS)
#define FWARNING(ARGUMENTS) OSG_LOG_PRINTF(osg::LOG_WARNING, ARGUMENTS)
#define FNOTICE(ARGUMENTS) OSG_LOG_PRINTF(osg::LOG_NOTICE, ARGUMENTS)
#define FINFO(ARGUMENTS) OSG_LOG_PRINTF(osg::LOG_INFO, ARGUMENTS)
#define FDEBUG(ARGUMENTS) OSG_LOG_PRINTF(osg::LOG_DEBUG, ARGUMENTS)
