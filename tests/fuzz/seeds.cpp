// Writes what the fuzzers start from: for each format a folder of small scenes in which every type
// of container stands once, plain and packed, and a list of the words that mean something in files.
//
// usage: kv_fuzz_seeds FOLDER

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSceneFileHandler.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

using namespace osg;
namespace fs = std::filesystem;

namespace {

/// Writes a scene, given as text, in every form; the text may have more in it than a writer writes.
bool writeSeed(const fs::path& folder, const std::string& name, const std::string& text) {
    std::ofstream(folder / "osg" / name, std::ios::binary) << text;
    std::istringstream stream(text);
    NodePtr scene = SceneFileHandler::the().read(stream, "osg", nullptr);
    if (scene == NullFC) return false;
    addRefCP(scene);
    bool written = true;
    for (const std::string format : {"osg", "osb"}) {
        for (const bool packed : {false, true}) {
            std::ofstream out(folder / format / (name + (packed ? ".gz" : ".written")),
                              std::ios::binary);
            written = SceneFileHandler::the().write(scene, out, format.c_str(), packed) && written;
        }
    }
    subRefCP(scene);
    return written;
}

/// The type where it belongs in a scene.
std::string sceneWith(const FieldContainerType& type) {
    const std::string container = std::string(type.getCName()) + " { }";
    if (type.isNode()) return container;
    if (type.isNodeCore()) return "Node { core " + container + " children [ Node { } ] }";
    if (type.isAttachment()) return "Node { attachments [ " + container + " ] }";
    return "Node { core MaterialGroup { material " + container + " } }";
}

bool writeTypes(const fs::path& folder) {
    const FieldContainerFactory& factory = *FieldContainerFactory::the();
    for (auto type = factory.beginTypes(); type != factory.endTypes(); ++type) {
        if (type->second->isAbstract()) continue;
        if (!writeSeed(folder, type->second->getCName(), sceneWith(*type->second))) return false;
    }
    return true;
}

bool writeScenes(const fs::path& folder) {
    return writeSeed(folder, "shared",
                     "#OSG V1.0 \nDEF a Node { core DEF g Group { } children [ DEF b Node { core "
                     "USE g } Node { children USE b } ] }\n") &&
           writeSeed(folder, "material",
                     "Node { core Geometry { types GeoPTypesUI8 { } positions DEF p GeoPositions3f "
                     "{ } material ChunkMaterial { chunks [ DEF c MaterialChunk { } USE c ] slots "
                     "[ -1 -1 ] } } }") &&
           writeSeed(folder, "camera",
                     "Node { core PointLight { beacon DEF n Node { } } attachments [ CameraSetting "
                     "{ } Name { name \"a \\\"b\\\" \\\\\" } ] children USE n }") &&
           writeSeed(
               folder, "animation",
               "Node { children [ DEF n Node { } Node { attachments [ AnimationAttachment { curves "
               "[ AnimationCurve { AppropriateNode USE n controlPoints [ AnimationControlPoint { "
               "ControlPoint 1 2 } ] } ] blocks [ AnimationBlock { } ] clips [ AnimationClip { "
               "tracks [ AnimationTrack { } ] } ] } ] } ] }") &&
           writeSeed(folder, "unknown",
                     "#OSG V1.0 \n# a comment\nStrange { x [ Node { } ] z 1 2 3 } Node { odd "
                     "TRUE children [ NULL DEF it's odd Node {\n} ] }");
}

void writeWords(const fs::path& folder) {
    std::set<std::string> words = {"DEF", "USE",  "NULL", "PROTO", "EXTERNPROTO", "ROUTE", "TO",
                                   "AS",  "TRUE", "nan",  "inf",   "0x7fffffff",  "1e38"};
    std::set<std::string> names = {"OpenSG binary V1.0"};
    const FieldContainerFactory& factory = *FieldContainerFactory::the();
    for (auto type = factory.beginTypes(); type != factory.endTypes(); ++type) {
        names.insert(type->second->getCName());
        const FieldContainerPtr sample = type->second->getPrototype();
        for (UInt32 i = 1; sample != NullFC && i <= type->second->getNumFieldDescs(); ++i) {
            const FieldDescription& field = *type->second->getFieldDescription(i);
            names.insert(field.getCName());
            names.insert(sample->getField(field.getFieldId())->getType().getCName());
        }
    }
    words.insert(names.begin(), names.end());
    std::ofstream text(folder / "osg.words");
    for (const std::string& word : words)
        text << '"' << word << " \"\n";
    // A text of the binary format has its length in front and a NUL behind.
    std::ofstream binary(folder / "osb.words");
    for (const std::string& name : names) {
        char length[24];
        std::snprintf(length, sizeof length, "\\x00\\x00\\x00\\x%02x",
                      static_cast<unsigned>(name.size() + 1));
        binary << '"' << length << name << "\\x00\"\n";
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 || !osgInit(0, nullptr)) {
        std::fprintf(stderr, "usage: kv_fuzz_seeds FOLDER\n");
        return 2;
    }
    const fs::path folder = argv[1];
    for (const char* format : {"osg", "osb"})
        fs::create_directories(folder / format);
    writeWords(folder);
    if (writeTypes(folder) && writeScenes(folder)) return 0;
    std::fprintf(stderr, "a scene to start from cannot be read or written\n");
    return 1;
}
