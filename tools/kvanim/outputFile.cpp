// Output that is either whole or not there.
#include "outputFile.h"

#include "errors.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>

namespace fs = std::filesystem;

namespace kvanim {
namespace {

/// Beside the target (a rename must not cross file systems), with the target's extension (writers
/// choose their format by it).
fs::path temporaryBeside(const fs::path& target) {
    std::random_device random;
    const std::string mark = std::to_string(random());
    fs::path name = target.filename();
    std::string extension = name.extension().string();
    if (extension == ".gz" || extension == ".GZ") {
        name.replace_extension();
        extension = name.extension().string() + extension;
    }
    return target.parent_path() / ("." + target.filename().string() + "." + mark + extension);
}

} // namespace

void requireWritable(const std::string& path) {
    std::error_code error;
    if (fs::is_directory(path, error)) throw InputError(path, "is a directory");
    const fs::path folder = fs::path(path).parent_path();
    if (!folder.empty() && !fs::is_directory(folder, error))
        throw InputError(path, "the folder " + folder.string() + " does not exist");
}

void replaceFile(const std::string& path, const std::function<bool(const std::string&)>& write) {
    requireWritable(path);
    const fs::path temporary = temporaryBeside(path);
    errno = 0;
    const bool written = write(temporary.string());
    const int reason = errno;
    std::error_code error;
    if (written) {
        fs::rename(temporary, path, error);
        if (!error) return;
    }
    std::error_code ignored;
    fs::remove(temporary, ignored);
    if (written) throw InputError(path, "cannot be replaced: " + error.message());
    throw InputError(path, reason != 0 ? std::string("cannot be written: ") + std::strerror(reason)
                                       : std::string("cannot be written"));
}

void writeText(const std::string& path, const std::string& text) {
    if (path.empty() || path == "-") {
        std::cout << text << std::flush;
        if (!std::cout) throw InputError("standard output", "cannot be written");
        return;
    }
    replaceFile(path, [&](const std::string& temporary) {
        std::ofstream file(temporary, std::ios::binary);
        file << text;
        file.close();
        return static_cast<bool>(file);
    });
}

} // namespace kvanim
