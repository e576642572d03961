#pragma once

#include <stdexcept>
#include <string>

namespace kvanim {

/// Bad input: a file that cannot be read, a name that the scene does not hold. Ends the program
/// with one line on standard error and exit code 1.
class InputError : public std::runtime_error {
  public:
    /// `place` is the file (and line, node or block) that the reason is about.
    InputError(const std::string& place, const std::string& reason)
        : std::runtime_error(place + ": " + reason) {}
};

} // namespace kvanim
