// The fields of containers in OpenSG's ASCII format: finding them, reading their values, and
// passing over what this program does not know, whatever that is.

#include "files/asciiReader.h"

#include <OpenSG/OSGNode.h>

namespace osg::files {

namespace {

/// Lists with at least this many elements give back the room that they were not filled up to.
constexpr UInt32 kLongList = 64;

} // namespace

/// One field of the open container, or its closing brace.
bool AsciiReader::readField() {
    Frame& frame = _frames.back();
    if (_scanner.take('}')) return close();
    const std::string_view name = _scanner.takeName();
    if (name.empty()) return failUnexpected("the name of a field");
    const FieldInfo* info = nullptr;
    if (frame.type != nullptr) {
        info = frame.type->find(name, frame.likelyField);
        if (info != nullptr && info->role != FieldRole::kInternal) {
            frame.likelyField = static_cast<std::size_t>(info - frame.type->fields.data()) + 1;
            Field& field = *frame.container->getField(info->id);
            return readValue(field, *info);
        }
    }
    bool wasDeclaration = false;
    if (!skipDeclaration(name, wasDeclaration)) return false;
    if (wasDeclaration) return true;
    if (frame.type != nullptr) {
        const std::string what = "\"" + std::string(name) + "\" of containers of the type \"" +
                                 std::string(frame.type->name) + "\"";
        warnOnce("field " + what, name.data(),
                 (info == nullptr ? "the unknown field " : "the internal field ") + what +
                     " is left out");
    }
    return skipValue();
}

bool AsciiReader::readValue(Field& field, const FieldInfo& info) {
    if (info.text == nullptr) return readPointers(info);
    if (info.role == FieldRole::kValues) return readList(field, info);
    _scanner.skipBlanks();
    const char* const place = _scanner.at();
    switch (info.text->read(field, _values)) {
    case ValueResult::kRead:
        return true;
    case ValueResult::kMalformed:
        return fail(_values.errorPlace(), _values.error());
    default:
        return _scanner.skipBlanks() ? skipWrongKind(info, place) : failUnexpected("a value");
    }
}

/// A list in brackets, or one value without.
bool AsciiReader::readList(Field& field, const FieldInfo& info) {
    _scanner.skipBlanks();
    const char* const place = _scanner.at();
    const bool brackets = _scanner.take('[');
    if (info.text->clear != nullptr) info.text->clear(field);
    // A list that grows is for a moment in memory twice, and has room for twice its elements.
    const std::size_t growing = 3 * std::size_t(info.text->size);
    std::size_t count = 0;
    do {
        if (brackets && _scanner.take(']')) break;
        ++count;
        if (!_builder.takeMemory(growing)) return failMemory();
        const ValueResult result = info.text->read(field, _values);
        if (result == ValueResult::kMalformed) return fail(_values.errorPlace(), _values.error());
        if (result == ValueResult::kWrongKind) {
            if (!_scanner.skipBlanks()) return failUnexpected("a value");
            if (info.text->clear != nullptr) info.text->clear(field);
            _scanner.moveTo(place);
            return skipWrongKind(info, place);
        }
    } while (brackets);
    if (info.text->trim != nullptr && field.getSize() >= kLongList) {
        info.text->trim(field);
        _builder.giveMemory(count * (growing - info.text->size));
    }
    return true;
}

bool AsciiReader::readPointers(const FieldInfo& info) {
    const std::size_t depth = _frames.size();
    Frame& frame = _frames.back();
    const char next = _scanner.peek();
    const char* const place = _scanner.at();
    const bool single = info.role == FieldRole::kPointer || info.role == FieldRole::kCore;
    if (next == '[' && !single) {
        _scanner.take('[');
        frame.field = &info;
        frame.inList = true;
        return true;
    }
    if (!isOf(next, kNameFirst)) return skipWrongKind(info, place);
    frame.field = &info;
    if (!readStatement()) return false;
    if (_frames.size() == depth) _frames.back().field = nullptr;
    return true;
}

bool AsciiReader::skipWrongKind(const FieldInfo& info, const char* place) {
    const std::string what =
        "\"" + std::string(info.name) + "\" of a " + std::string(_frames.back().type->name);
    warnOnce("kind " + what, place,
             "what stands in the field " + what + " is no value for it and is left out");
    return skipValue();
}

bool AsciiReader::isContainerNext() {
    const char* const place = _scanner.at();
    const std::string_view word = _scanner.takeName();
    const bool container = word == "DEF" || word == "USE" || word == "NULL" ||
                           (!word.empty() && _scanner.peek() == '{');
    _scanner.moveTo(place);
    return container;
}

/// Passes over the value of a field that is unknown or of another kind. Containers in it are read
/// like others, since what follows may use them.
bool AsciiReader::skipValue() {
    Frame& frame = _frames.back();
    const char* const place = _scanner.at();
    frame.field = nullptr;
    if (_scanner.peek() == '[') {
        _scanner.take('[');
        frame.inList = true;
        return true;
    }
    if (isContainerNext()) return readStatement();
    _scanner.moveTo(place);
    std::string ignored;
    // A field without any value is passed over as well: some types have no text.
    if (_values.plainValue(StringPlace::kSingle, ignored) != ValueResult::kMalformed) return true;
    return fail(_values.errorPlace(), _values.error());
}

bool AsciiReader::skipListItem() {
    if (isContainerNext()) return readStatement();
    if (!_scanner.takeName().empty()) return true;
    std::string ignored;
    switch (_values.plainValue(StringPlace::kInList, ignored)) {
    case ValueResult::kRead:
        return true;
    case ValueResult::kMalformed:
        return fail(_values.errorPlace(), _values.error());
    default:
        return failUnexpected("an element of the list or ']'");
    }
}

/// Passes over the statements that the language has beside containers. They mean nothing in scenes.
bool AsciiReader::skipDeclaration(std::string_view word, bool& was) {
    was = word == "PROTO" || word == "EXTERNPROTO" || word == "ROUTE" || word == "IMPORT" ||
          word == "EXPORT";
    if (!was) return true;
    if (_scanner.takeName().empty()) return failUnexpected("a name");
    if (word == "PROTO") return skipBrackets('[') && skipBrackets('{');
    if (word == "EXTERNPROTO") {
        if (!skipBrackets('[')) return false;
        if (_scanner.peek() == '[') return skipBrackets('[');
        std::string address;
        if (_values.text(StringPlace::kSingle, address) == ValueResult::kRead) return true;
        return failUnexpected("an address");
    }
    const bool dotted = word != "EXPORT";
    if (dotted && (!_scanner.take('.') || _scanner.takeName().empty()))
        return failUnexpected("'.' and a name");
    if (!_scanner.takeWord(word == "ROUTE" ? "TO" : "AS"))
        return word != "ROUTE" || failUnexpected("TO");
    if (_scanner.takeName().empty()) return failUnexpected("a name");
    if (word != "ROUTE") return true;
    return (_scanner.take('.') && !_scanner.takeName().empty()) || failUnexpected("'.' and a name");
}

/// Passes over brackets with all that is inside.
bool AsciiReader::skipBrackets(char opening) {
    if (!_scanner.take(opening)) return failUnexpected(std::string("'") + opening + "'");
    std::string open(1, opening);
    std::string ignored;
    while (!open.empty()) {
        const char c = _scanner.peek();
        if (_scanner.at() == _scanner.end()) return failUnexpected("a closing bracket");
        if (c == '"') {
            if (_values.text(StringPlace::kInList, ignored) != ValueResult::kRead)
                return fail(_values.errorPlace(), _values.error());
            continue;
        }
        if (c == '[' || c == '{') open += c;
        if (c == ']' || c == '}') {
            if (open.back() != (c == ']' ? '[' : '{')) return failUnexpected("another bracket");
            open.pop_back();
        }
        _scanner.moveTo(_scanner.at() + 1);
    }
    return true;
}

} // namespace osg::files
