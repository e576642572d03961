#pragma once

#include <string>

namespace kvanim {

/// While it lives, a crash in the scene graph's reader ends the program as bad input does: with one
/// line on standard error that names the file, and exit code 1.
///
/// For installed scene graphs, whose readers cannot be relied on with damaged files. One at a time.
class ReaderGuard {
  public:
    /// `leftover` is a file to remove when the reader crashes; may be empty.
    ReaderGuard(const std::string& file, const std::string& leftover);
    ~ReaderGuard();
    ReaderGuard(const ReaderGuard&) = delete;
    ReaderGuard& operator=(const ReaderGuard&) = delete;
};

} // namespace kvanim
