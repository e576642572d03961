// The formats by name, and what reading and writing them have in common.

#include "files/sceneFiles.h"

#include "files/asciiReader.h"
#include "files/asciiWriter.h"
#include "files/binaryReader.h"
#include "files/binaryWriter.h"
#include "files/fileContents.h"
#include "files/readLog.h"

#include <OpenSG/OSGLog.h>

#include <algorithm>
#include <string_view>

namespace osg::files {

namespace {

const char* const kUnknownFormat = "its extension is that of no format that is known here";

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

/// The part behind the last dot, everything when there is none; cut off from `name`.
std::string takeExtension(std::string& name) {
    const std::size_t dot = name.rfind('.');
    std::string extension = dot == std::string::npos ? name : name.substr(dot + 1);
    name.resize(dot == std::string::npos ? 0 : dot);
    return extension;
}

NodePtr readScene(SceneFormat format, const ByteBuffer& contents, ReadLog& log) {
    if (format == SceneFormat::kUnknown) {
        log.fail("", kUnknownFormat);
    } else if (contents.size() == 0) {
        log.fail("", "it is empty");
    } else if (format == SceneFormat::kAscii) {
        return AsciiReader(contents.data(), contents.end(), log).read();
    } else {
        return BinaryReader(contents.data(), contents.end(), log).read();
    }
    return NullFC;
}

} // namespace

SceneKind kindOf(const Char8* name) {
    SceneKind kind;
    if (name == nullptr) return kind;
    std::string rest = lowerCase(name);
    std::string extension = takeExtension(rest);
    if (extension == "gz") {
        kind.compressed = true;
        extension = takeExtension(rest);
    }
    if (extension == "osg") kind.format = SceneFormat::kAscii;
    if (extension == "osb") kind.format = SceneFormat::kBinary;
    return kind;
}

std::string quoted(const Char8* fileName) {
    return std::string("\"") + (fileName == nullptr ? "" : fileName) + "\"";
}

NodePtr readFileAs(SceneFormat format, const Char8* fileName) {
    ReadLog log(quoted(fileName));
    ByteBuffer contents;
    std::string reason = "there is no file name";
    if (fileName != nullptr && readFile(fileName, contents, reason))
        return readScene(format, contents, log);
    log.fail("", reason);
    return NullFC;
}

NodePtr readStreamAs(SceneFormat format, std::istream& stream) {
    ReadLog log("the stream");
    ByteBuffer contents;
    std::string reason;
    if (readStream(stream, contents, reason)) return readScene(format, contents, log);
    log.fail("", reason);
    return NullFC;
}

bool failToWrite(const std::string& name, const std::string& reason) {
    SWARNING << "Could not write " << name << ": " << reason << std::endl;
    return false;
}

bool writeAscii(const std::vector<FieldContainerPtr>& containers, ByteSink& sink,
                std::size_t indentStep, const std::string& name) {
    ByteOutput output(sink);
    AsciiWriter writer(output, indentStep);
    writer.write(containers);
    if (!output.finish()) return failToWrite(name, sink.reason());
    if (writer.sawNonFinite())
        SWARNING << name
                 << " holds numbers that are not finite: this program reads them, OpenSG's "
                    "own ASCII reader refuses the file"
                 << std::endl;
    return true;
}

bool writeScene(SceneFormat format, const NodePtr& root, ByteSink& sink, const std::string& name) {
    if (format == SceneFormat::kAscii) return writeAscii({root}, sink, 4, name);
    if (format == SceneFormat::kUnknown) return failToWrite(name, kUnknownFormat);
    ByteOutput output(sink);
    BinaryWriter(output).writeScene(root);
    return output.finish() || failToWrite(name, sink.reason());
}

} // namespace osg::files
