// The formats of scene files by name, and which of them to take.
#include "sceneFormat.h"

#include "errors.h"
#include "outputFile.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace kvanim {
namespace {

/// The last extension in lower case, which is cut off from `path`.
std::string takeExtension(fs::path& path) {
    std::string extension = path.extension().string();
    for (char& c : extension)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    path.replace_extension();
    return extension;
}

} // namespace

SceneFormat formatOf(const std::string& file) {
    SceneFormat format;
    fs::path rest = file;
    std::string extension = takeExtension(rest);
    format.packed = extension == ".gz";
    if (format.packed) extension = takeExtension(rest);
    format.text = extension == ".osg";
    format.binary = extension == ".osb";
    return format;
}

void requireSceneOutput(const std::string& file) {
    requireWritable(file);
    const SceneFormat format = formatOf(file);
    if (!format.text && !format.binary)
        throw InputError(file, "scene files end in .osg or .osb, or in either with .gz");
}

void recommendBinary(std::ostream& out, const std::string& file, std::size_t keys) {
    if (keys <= kManyKeys || !formatOf(file).text) return;
    out << "recommended: .osb for a scene of " << keys
        << " keys, smaller and faster to read than the text of " << file << '\n';
}

} // namespace kvanim
