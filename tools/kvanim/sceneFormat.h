#pragma once

#include <cstddef>
#include <ostream>
#include <string>

namespace kvanim {

/// What the end of a file name says about the scene in the file: `.osg` is text, `.osb` binary, and
/// `.gz` behind either means packed. Letter case does not matter.
struct SceneFormat {
    bool text = false;
    bool binary = false;
    bool packed = false;
};
SceneFormat formatOf(const std::string& file);

/// Throws InputError unless a scene can be written under that name: a name of another format, and
/// whatever requireWritable refuses.
void requireSceneOutput(const std::string& file);

/// What the option that takes such a name says.
constexpr char kSceneOutputHelp[] = "Scene file to write: .osg (text) or .osb (binary, recommended "
                                    "above 100,000 keys), either with .gz";

/// A scene with more keys than this is better off in the binary format.
constexpr std::size_t kManyKeys = 100000;

/// Prints one line that recommends `.osb`, when the file is text and holds more than kManyKeys.
void recommendBinary(std::ostream& out, const std::string& file, std::size_t keys);

} // namespace kvanim
