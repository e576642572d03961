#pragma once

// Reading and writing whole scenes in any of the formats, from buffers and into sinks.

#include "files/byteSink.h"

#include <OpenSG/OSGNode.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace osg::files {

enum class SceneFormat { kUnknown, kAscii, kBinary };

/// What the end of a file name says.
struct SceneKind {
    SceneFormat format = SceneFormat::kUnknown;
    bool compressed = false;
};

/// `name` is a file name or only an extension; null is unknown.
SceneKind kindOf(const Char8* name);

/// The scene in a file, which may be called anything; null after a message.
NodePtr readFileAs(SceneFormat format, const Char8* fileName);

/// The scene in the rest of a stream; null after a message.
NodePtr readStreamAs(SceneFormat format, std::istream& stream);

/// Writes containers in OpenSG's ASCII format to a sink and finishes it.
/// \param name  for messages.
bool writeAscii(const std::vector<FieldContainerPtr>& containers, ByteSink& sink,
                std::size_t indentStep, const std::string& name);

/// Writes a scene to a sink and finishes it; false after a message.
bool writeScene(SceneFormat format, const NodePtr& root, ByteSink& sink, const std::string& name);

/// A file name as messages give it.
std::string quoted(const Char8* fileName);

/// One line that says that and why a file was not written. \return false.
bool failToWrite(const std::string& name, const std::string& reason);

} // namespace osg::files
