#pragma once

// What readers of scene files say in the log.

#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

namespace osg::files {

/// Messages about one file.
///
/// A file that is read leaves one warning for each kind of problem; a file that is not leaves one
/// line that says why, and nothing else. So warnings wait until the outcome is known.
class ReadLog {
  public:
    /// The name as messages give it: that of the file, in quotes, or what else is read.
    explicit ReadLog(std::string fileName) : _fileName(std::move(fileName)) {}

    /// A warning, unless there was one for the same `kind`. An empty place is left out.
    void warnOnce(const std::string& kind, const std::string& place, const std::string& text);

    /// Whether a kind of problem is still to be told.
    bool isNew(const std::string& kind) const { return _told.count(kind) == 0; }

    /// Whether there are so many warnings that more of them are only counted, and the way to that.
    bool isFull() const;
    void countUntold() { ++_untold; }

    /// Writes the warnings: reading has come to a good end.
    void succeed();

    /// Writes the one line of a failure; an empty place is left out.
    void fail(const std::string& place, const std::string& reason);

  private:
    std::string _fileName;
    std::unordered_set<std::string> _told;
    std::vector<std::string> _warnings;
    std::size_t _untold = 0;
};

} // namespace osg::files
