// The containers of OpenSG's ASCII format: statements, names and their use, and the places that
// containers go into. Fields and their values are in asciiFields.cpp.
//
// Everything that OpenSG writes is accepted, also what its own reader stumbles over: names with
// blanks and other characters that names cannot have, unknown types and fields, quotes inside
// texts.

#include "files/asciiReader.h"

#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <algorithm>
#include <cstring>

namespace osg::files {

namespace {

/// What a container that is open costs, and one that has a name: an attachment for it, and an entry
/// for the USEs that may follow.
constexpr std::size_t kOpenOverhead = 160;
constexpr std::size_t kNameOverhead = 320;
/// What a node takes with a core and all that belongs to reading it. A million nodes are a valid
/// scene also in words so short that they would count as too much for the size of the text: each of
/// the first million brings its memory along.
constexpr std::size_t kMemoryOfNode = 768;
constexpr std::size_t kMostFreeNodes = std::size_t(1) << 20;

/// How far behind a name that breaks the rules its brace is looked for.
constexpr std::ptrdiff_t kLongestName = 4096;

const char* skipBom(const char* begin, const char* end) {
    return end - begin >= 3 && std::memcmp(begin, "\xEF\xBB\xBF", 3) == 0 ? begin + 3 : begin;
}

bool isLineEnd(const char* place, const char* end) {
    while (place != end && (*place == ' ' || *place == '\t' || *place == '\r'))
        ++place;
    return place == end || *place == '\n';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isOf(text.front(), kBlank))
        text.remove_prefix(1);
    while (!text.empty() && isOf(text.back(), kBlank))
        text.remove_suffix(1);
    return text;
}

} // namespace

AsciiReader::AsciiReader(const char* begin, const char* end, ReadLog& log)
    : _scanner(skipBom(begin, end), end), _values(_scanner), _log(log),
      _builder(static_cast<std::size_t>(end - begin)) {}

bool AsciiReader::fail(const char* place, const std::string& reason) {
    _log.fail("line " + std::to_string(_scanner.lineOf(place)), reason);
    return false;
}

bool AsciiReader::failUnexpected(const std::string& expected) {
    if (!_scanner.skipBlanks()) {
        const Frame& frame = _frames.back();
        if (frame.start == nullptr)
            return fail(_scanner.at(), "the file ends where " + expected + " was expected");
        return fail(_scanner.at(), "the file ends inside the container that begins in line " +
                                       std::to_string(_scanner.lineOf(frame.start)));
    }
    const unsigned char c = static_cast<unsigned char>(*_scanner.at());
    std::string found = std::string("'") + *_scanner.at() + "'";
    if (c < 32 || c == 127) found = "the character with the code " + std::to_string(c);
    return fail(_scanner.at(), found + " stands where " + expected + " was expected");
}

bool AsciiReader::failMemory() {
    return fail(_scanner.at(), SceneBuilder::kTooLarge);
}

void AsciiReader::warnOnce(const std::string& kind, const char* place, const std::string& text) {
    if (!_log.isNew(kind)) return;
    // Counting the lines up to here takes too long to be done for warnings that nobody gets to see.
    if (_log.isFull()) return _log.countUntold();
    _log.warnOnce(kind, "line " + std::to_string(_scanner.lineOf(place)), text);
}

NodePtr AsciiReader::read() {
    const std::string_view header = trimmed(_scanner.restOfLine());
    if (!header.empty() && header.front() == '#' && header != "#OSG V1.0")
        warnOnce("header", _scanner.at(), "the first line should be \"#OSG V1.0 \"");
    Frame file;
    file.inList = true;
    _frames.push_back(file);
    while (_frames.size() > 1 || _scanner.skipBlanks()) {
        if (_frames.back().inList ? !readItem() : !readField()) return NullFC;
        if (_builder.isTooLarge()) {
            failMemory();
            return NullFC;
        }
    }
    if (_root == NullFC) {
        fail(_scanner.at(), "there is no node in it");
        return NullFC;
    }
    for (const Unfinished& rest : _unfinished) {
        _builder.markCounted(rest.number);
        endEditCP(rest.container, FieldBits::AllFields,
                  ChangedOrigin::Abstract | ChangedOrigin::AbstrIgnoreCore |
                      ChangedOrigin::AbstrIgnoreChild);
    }
    warnOfStrays();
    _builder.release();
    _log.succeed();
    return _root;
}

void AsciiReader::warnOfStrays() {
    for (const auto& stray : _strays) {
        if (stray.first.getRefCount() > 1) continue;
        const std::string type = stray.first->getTypeName();
        warnOnce("stray " + type, stray.second,
                 "a " + type + " belongs to nothing in the file and is left out");
    }
}

/// One element of a list of containers, or its end.
bool AsciiReader::readItem() {
    Frame& frame = _frames.back();
    if (frame.start != nullptr) {
        if (_scanner.take(']')) {
            frame.inList = false;
            frame.field = nullptr;
            return true;
        }
        if (frame.field == nullptr) return skipListItem();
    }
    return readStatement();
}

bool AsciiReader::readStatement() {
    const std::string_view word = _scanner.takeName();
    if (word.empty()) return failUnexpected("a container");
    if (word == "DEF") return readDefinition();
    if (word == "USE") return readUse();
    // A null among others is dropped, as OpenSG does; a pointer of its own stays null.
    if (word == "NULL") return true;
    bool wasDeclaration = false;
    if (!skipDeclaration(word, wasDeclaration)) return false;
    return wasDeclaration || readUnnamed(word);
}

bool AsciiReader::readUnnamed(std::string_view name) {
    if (_scanner.take('{')) return open(name, {}, false);
    return failUnexpected("the '{' behind \"" + std::string(name.substr(0, 40)) + "\"");
}

bool AsciiReader::readDefinition() {
    const char* const from = _scanner.at();
    const std::string_view name = _scanner.takeName();
    const std::string_view type = _scanner.takeName();
    if (!name.empty() && !type.empty() && _scanner.take('{')) return open(type, name, true);
    return readOddDefinition(from);
}

/// OpenSG writes the names of nodes as they are, also those with blanks or other characters that
/// would have to be quoted. The brace at the end of the line and the type in front of it are sure;
/// everything before is the name, which may be empty.
bool AsciiReader::readOddDefinition(const char* from) {
    const char* const limit = from + (std::min)(_scanner.end() - from, kLongestName);
    const char* brace = std::find(from, limit, '{');
    while (brace != limit && !isLineEnd(brace + 1, _scanner.end()))
        brace = std::find(brace + 1, limit, '{');
    const std::string_view text(from, static_cast<std::size_t>(brace - from));
    const std::string_view words = trimmed(text);
    std::size_t typeStart = words.size();
    while (typeStart > 0 && isOf(words[typeStart - 1], kNameRest))
        --typeStart;
    const std::string_view type = words.substr(typeStart);
    const bool apart = !type.empty() && type.data() != from && isOf(type.data()[-1], kBlank);
    if (brace == limit || !apart || !isOf(type.front(), kNameFirst)) {
        _scanner.moveTo(from);
        return fail(from, "DEF without a name and the type of a container");
    }
    // One blank in front of the name and one behind it separate it from its neighbours.
    const char* first = from + 1;
    const char* last = type.data() - 1;
    const std::string_view name =
        first < last ? std::string_view(first, static_cast<std::size_t>(last - first))
                     : std::string_view();
    _oddNames = true;
    if (name.find('\n') != std::string_view::npos) _longNames.push_back(name);
    _scanner.moveTo(brace + 1);
    return open(type, name, true);
}

/// The container that a USE asks for; takes the name. Null for unknown names.
AsciiReader::Definition* AsciiReader::findDefinition() {
    if (_oddNames) {
        const char* start = _scanner.at();
        if (start != _scanner.end() && *start == ' ') ++start;
        _scanner.moveTo(start);
        for (const std::string_view name : _longNames) {
            if (static_cast<std::size_t>(_scanner.end() - start) < name.size() ||
                std::string_view(start, name.size()) != name ||
                !isLineEnd(start + name.size(), _scanner.end()))
                continue;
            _scanner.moveTo(start + name.size());
            return &_definitions.find(name)->second;
        }
        const std::string_view line = _scanner.restOfLine();
        auto found = _definitions.find(line);
        if (found == _definitions.end()) found = _definitions.find(trimmed(line));
        if (found != _definitions.end()) {
            _scanner.moveTo(line.data() + line.size());
            return &found->second;
        }
    }
    const auto found = _definitions.find(_scanner.takeName());
    return found == _definitions.end() ? nullptr : &found->second;
}

bool AsciiReader::readUse() {
    const char* const place = _scanner.at();
    Definition* const definition = findDefinition();
    if (_scanner.at() == place) return failUnexpected("a name behind USE");
    if (definition == nullptr) {
        const std::string_view rest(place, static_cast<std::size_t>(_scanner.at() - place));
        const std::string name(trimmed(rest));
        if (name.empty()) return fail(place, "USE without a name");
        warnOnce("use " + name, place, "nothing was defined as \"" + name + "\" before its USE");
        return true;
    }
    const FieldContainerPtr container = FieldContainerFactory::the()->getContainer(definition->id);
    if (container == NullFC) return true;
    Frame& frame = _frames.back();
    if (frame.field == nullptr && frame.start != nullptr) return true;
    if (!definition->held) {
        definition->held = true;
        _builder.holdShared(container);
    }
    const bool inField = frame.field != nullptr && (frame.field->role == FieldRole::kPointer ||
                                                    frame.field->role == FieldRole::kPointers);
    frame.pointsOutward = frame.pointsOutward || (inField && definition->open);
    return deliver(container, true, place);
}

bool AsciiReader::open(std::string_view typeName, std::string_view definedName, bool defined) {
    if (!_builder.takeMemory(kOpenOverhead + (defined ? kNameOverhead : 0))) return failMemory();
    Frame frame;
    frame.start = typeName.data();
    frame.type = _types.find(typeName);
    if (frame.type == nullptr) {
        const std::string name(typeName);
        warnOnce("type " + name, frame.start,
                 "containers of the unknown type \"" + name + "\" are left out");
    } else {
        if (frame.type->isNode && ++_nodes <= kMostFreeNodes) _builder.giveMemory(kMemoryOfNode);
        frame.container = _builder.create(*frame.type);
        frame.number = _builder.numCreated() - 1;
        beginEditCP(frame.container, FieldBits::AllFields,
                    ChangedOrigin::Abstract | ChangedOrigin::AbstrIgnoreCore |
                        ChangedOrigin::AbstrIgnoreChild);
    }
    if (defined) {
        // Of several containers with one name the first is meant by every USE.
        const auto result = _definitions.try_emplace(definedName);
        frame.definedName = definedName;
        if (result.second) {
            frame.definition = &result.first->second;
            if (frame.type != nullptr) frame.definition->id = getContainerId(frame.container);
            frame.definition->open = frame.type != nullptr;
        }
    }
    _frames.push_back(frame);
    return true;
}

/// The closing brace: the container is complete and goes where its opening stood.
bool AsciiReader::close() {
    Frame frame = _frames.back();
    _frames.pop_back();
    _builder.giveMemory(kOpenOverhead);
    if (frame.definition != nullptr) frame.definition->open = false;
    if (frame.container == NullFC) {
        Frame& parent = _frames.back();
        if (!parent.inList) parent.field = nullptr;
        return true;
    }
    finish(frame);
    return deliver(frame.container, false, frame.start);
}

void AsciiReader::finish(Frame& frame) {
    if (frame.type->isNode) _builder.ensureCore(NodePtr::dcast(frame.container));
    if (frame.type->isAttachmentContainer && !frame.definedName.empty()) {
        // A name attachment that stood in the file goes before the name in DEF.
        const AttachmentContainerPtr carrier = AttachmentContainerPtr::dcast(frame.container);
        if (getName(carrier) == nullptr) setName(carrier, std::string(frame.definedName));
    }
    if (frame.pointsOutward) {
        _builder.holdShared(frame.container);
        _unfinished.push_back({frame.container, frame.number});
        return;
    }
    _builder.markCounted(frame.number);
    endEditCP(frame.container, FieldBits::AllFields,
              ChangedOrigin::Abstract | ChangedOrigin::AbstrIgnoreCore |
                  ChangedOrigin::AbstrIgnoreChild);
}

bool AsciiReader::fits(const FieldContainerPtr& child, const FieldInfo& info) const {
    return info.target != nullptr && child->getType().isDerivedFrom(*info.target);
}

/// Puts a container into the field that is being read. `used`: by its name, not where it stands.
bool AsciiReader::deliver(const FieldContainerPtr& child, bool used, const char* place) {
    Frame& parent = _frames.back();
    if (parent.start == nullptr) return deliverToFile(child, used, place);
    const FieldInfo* const info = parent.field;
    if (!parent.inList) parent.field = nullptr;
    if (info == nullptr) {
        if (!used) _builder.holdOrphan(child);
        return true;
    }
    switch (info->role) {
    case FieldRole::kAttachments: {
        const AttachmentPtr attachment = AttachmentPtr::dcast(child);
        if (attachment == NullFC) break;
        AttachmentContainerPtr::dcast(parent.container)->addAttachment(attachment);
        return true;
    }
    case FieldRole::kChildren:
        if (!child->getType().isNode() && !child->getType().isNodeCore()) break;
        return addChild(NodePtr::dcast(parent.container), child, place);
    case FieldRole::kCore: {
        const NodeCorePtr core = NodeCorePtr::dcast(child);
        if (core == NullFC) break;
        NodePtr::dcast(parent.container)->setCore(core);
        return true;
    }
    default: {
        if (!fits(child, *info)) break;
        Field& field = *parent.container->getField(info->id);
        if (info->role == FieldRole::kPointer) {
            const FieldContainerPtr before = pointerAt(field, *info, 0);
            if (_builder.owns(before)) _builder.holdOrphan(before);
        }
        putPointer(field, *info, child);
        if (!info->isReleased) _builder.holdUncounted(parent.container, *info, child);
        return true;
    }
    }
    warnOnce("fit " + std::string(info->name) + " " + child->getTypeName(), place,
             std::string("a ") + child->getTypeName() + " does not fit into the field \"" +
                 std::string(info->name) + "\" and is left out");
    if (!used) _builder.holdOrphan(child);
    return true;
}

bool AsciiReader::deliverToFile(const FieldContainerPtr& child, bool used, const char* place) {
    if (child->getType().isNode() || child->getType().isNodeCore()) {
        if (_root == NullFC) _root = _builder.makeNode(NullFC);
        return addChild(_root, child, place);
    }
    if (used) return true;
    // It may still be used by something that follows.
    _builder.holdOrphan(child);
    _strays.emplace_back(child, place);
    return true;
}

bool AsciiReader::addChild(const NodePtr& parent, const FieldContainerPtr& child,
                           const char* place) {
    NodePtr node = NodePtr::dcast(child);
    if (node == NullFC) node = _builder.makeNode(NodeCorePtr::dcast(child));
    if (!_builder.mayBeChild(parent, node))
        return fail(place, "a node is made a child of itself or of a node below it");
    if (!_builder.mayMove(node))
        return fail(place, "too many nodes are moved from one place to another");
    parent->addChild(node);
    return true;
}

} // namespace osg::files
