#pragma once

#include <string>

namespace kvanim {

/// Writes the content of the file `plain`, compressed as gzip does it, into the file `packed`.
/// False when either cannot be read or written to its end; `errno` then tells why, if it is known.
bool packFile(const std::string& plain, const std::string& packed);

} // namespace kvanim
