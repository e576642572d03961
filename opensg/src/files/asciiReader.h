#pragma once

// OpenSG's ASCII format, read.

#include "files/readLog.h"
#include "files/sceneBuilder.h"
#include "files/textScanner.h"
#include "files/valueReader.h"

#include <OpenSG/OSGNode.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace osg::files {

/// Reads one text. What is open at a time is kept on a stack of its own, so that scenes may be
/// nested as deep as they like.
class AsciiReader {
  public:
    /// The text must stay alive while it is read.
    AsciiReader(const char* begin, const char* end, ReadLog& log);

    /// A node with the file's top-level containers below it, null after a message when the text is
    /// malformed or holds none.
    NodePtr read();

  private:
    /// A container with a name.
    struct Definition {
        /// 0 when the container's type is unknown.
        UInt32 id = 0;
        bool open = false;
        bool held = false;
    };

    /// A container whose closing brace has not come yet. The first one is the file itself.
    struct Frame {
        /// Null for the file and when the type is unknown.
        FieldContainerPtr container;
        const TypeInfo* type = nullptr;
        /// The field that the next container goes into, null when that is left out.
        const FieldInfo* field = nullptr;
        /// Its name, if it has one and is the first of that name.
        Definition* definition = nullptr;
        std::string_view definedName;
        /// Where its type name stands.
        const char* start = nullptr;
        std::size_t number = 0;
        std::size_t likelyField = 0;
        /// Inside the brackets of a list of containers.
        bool inList = false;
        /// One of its pointers leads to a container that is still open.
        bool pointsOutward = false;
    };

    // Messages
    bool fail(const char* place, const std::string& reason);
    bool failUnexpected(const std::string& expected);
    bool failMemory();
    void warnOnce(const std::string& kind, const char* place, const std::string& text);

    // Containers
    bool readItem();
    bool readStatement();
    bool readUnnamed(std::string_view name);
    bool readDefinition();
    bool readOddDefinition(const char* from);
    bool readUse();
    Definition* findDefinition();
    bool open(std::string_view typeName, std::string_view definedName, bool defined);
    bool close();
    void finish(Frame& frame);

    // Fields
    bool readField();
    bool readValue(Field& field, const FieldInfo& info);
    bool readList(Field& field, const FieldInfo& info);
    bool readPointers(const FieldInfo& info);
    bool skipWrongKind(const FieldInfo& info, const char* place);
    bool skipValue();
    bool skipListItem();
    bool isContainerNext();
    bool skipDeclaration(std::string_view word, bool& was);
    bool skipBrackets(char opening);

    // Putting containers into their places
    bool deliver(const FieldContainerPtr& child, bool used, const char* place);
    bool deliverToFile(const FieldContainerPtr& child, bool used, const char* place);
    bool addChild(const NodePtr& parent, const FieldContainerPtr& child, const char* place);
    bool fits(const FieldContainerPtr& child, const FieldInfo& info) const;
    void warnOfStrays();

    TextScanner _scanner;
    ValueReader _values;
    ReadLog& _log;
    ContainerTypes _types;
    SceneBuilder _builder;
    std::vector<Frame> _frames;
    NodePtr _root;
    std::size_t _nodes = 0;
    std::unordered_map<std::string_view, Definition> _definitions;
    /// Some names are not of the form that names must have; only then is looked for such.
    bool _oddNames = false;
    /// Names with a line end inside.
    std::vector<std::string_view> _longNames;
    /// Containers with pointers to containers that were open: they are told of their contents at
    /// the very end, so that a failure before that finds no circle of references.
    struct Unfinished {
        FieldContainerPtr container;
        std::size_t number;
    };
    std::vector<Unfinished> _unfinished;
    /// Containers at the top of the file that are neither nodes nor cores, and their places.
    std::vector<std::pair<FieldContainerPtr, const char*>> _strays;
};

} // namespace osg::files
