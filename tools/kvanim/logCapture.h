#pragma once

#include <string>

namespace kvanim {

/// Takes what the scene graph logs while it lives, so that a command can say in one line of its own
/// what is wrong with a file.
class LogCapture {
  public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Ends the capture and returns what was logged, without the level at the start of each line.
    std::string end();

    /// Where the log goes meanwhile; empty when it cannot be taken.
    const std::string& file() const { return _file; }

  private:
    std::string _file;
    bool _open = false;
};

} // namespace kvanim
