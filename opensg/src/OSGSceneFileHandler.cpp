// Scenes by file name or extension.

#include "files/byteSink.h"
#include "files/sceneFiles.h"

#include <OpenSG/OSGSceneFileHandler.h>

namespace osg {

namespace {

bool writeTo(files::SceneKind kind, const NodePtr& node, std::unique_ptr<files::ByteSink> sink,
             const std::string& name) {
    if (kind.compressed) sink = files::makeGzipSink(std::move(sink));
    return files::writeScene(kind.format, node, *sink, name);
}

/// Whether there is something to write and a format to write it in; says so if not.
bool isWritable(files::SceneKind kind, const NodePtr& node, const std::string& name) {
    if (node == NullFC) return files::failToWrite(name, "there is no node to write");
    return kind.format != files::SceneFormat::kUnknown ||
           files::failToWrite(name, "its extension is that of no format that is known here");
}

} // namespace

SceneFileHandler& SceneFileHandler::the() {
    static SceneFileHandler handler;
    return handler;
}

NodePtr SceneFileHandler::read(const Char8* fileName, GraphOpSeq*) {
    return files::readFileAs(files::kindOf(fileName).format, fileName);
}

NodePtr SceneFileHandler::read(std::istream& stream, const Char8* extension, GraphOpSeq*) {
    return files::readStreamAs(files::kindOf(extension).format, stream);
}

bool SceneFileHandler::write(const NodePtr& node, const Char8* fileName, bool compress) {
    const std::string name = files::quoted(fileName);
    files::SceneKind kind = files::kindOf(fileName);
    kind.compressed = kind.compressed || compress;
    if (!isWritable(kind, node, name)) return false;
    std::string reason;
    std::unique_ptr<files::ByteSink> sink = files::makeFileSink(fileName, reason);
    if (sink == nullptr) return files::failToWrite(name, reason);
    return writeTo(kind, node, std::move(sink), name);
}

bool SceneFileHandler::write(const NodePtr& node, std::ostream& stream, const Char8* extension,
                             bool compress) {
    const std::string name = "to the stream";
    files::SceneKind kind = files::kindOf(extension);
    kind.compressed = kind.compressed || compress;
    if (!isWritable(kind, node, name)) return false;
    return writeTo(kind, node, files::makeStreamSink(stream), name);
}

} // namespace osg
