#pragma once

#include <functional>
#include <string>

namespace kvanim {

/// Has `write` fill a temporary file beside `path` and renames it into place, so that a failure at
/// any point leaves what stood at `path` as it was. `write` gets the temporary's name (same
/// extension) and answers whether it succeeded; throws InputError when it did not or the rename
/// fails.
void replaceFile(const std::string& path, const std::function<bool(const std::string&)>& write);

/// The same for text that is at hand. An empty path or "-" means standard output.
void writeText(const std::string& path, const std::string& text);

/// Throws InputError when nothing can be written at `path`: a directory, or a folder that is
/// missing or closed. Called before long work, so that it is not done in vain.
void requireWritable(const std::string& path);

} // namespace kvanim
