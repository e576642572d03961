// The records of OpenSG's binary format: everything about them that can be wrong is found here.
// How the containers are then put together is in binaryLinks.cpp.

#include "files/binaryReader.h"

#include "files/binaryFormat.h"

#include <OpenSG/OSGFieldContainerFactory.h>

#include <algorithm>

namespace osg::files {

namespace {

/// What a record and a pointer field of one cost while the file is read: entries in lists that may
/// be in memory twice while they grow.
constexpr std::size_t kRecordOverhead = 160;
constexpr std::size_t kLinkOverhead = 48;

/// Field type names are SF or MF and the name of the values.
bool isMulti(std::string_view typeName) {
    return typeName.substr(0, 2) == "MF";
}

bool isPointerType(std::string_view typeName) {
    return typeName.find("Ptr") != std::string_view::npos;
}

} // namespace

BinaryReader::BinaryReader(const char* begin, const char* end, ReadLog& log)
    : _bytes(begin, end), _begin(begin), _log(log),
      _builder(static_cast<std::size_t>(end - begin)) {}

bool BinaryReader::fail(const std::string& reason) {
    _log.fail("byte " + std::to_string(_bytes.at() - _begin), reason);
    return false;
}

NodePtr BinaryReader::read() {
    if (!readHeader() || !readRecords() || !indexRecords()) return NullFC;
    const NodePtr root = _records.empty() ? NodePtr() : NodePtr::dcast(_records.front().container);
    if (root == NullFC) {
        fail("the first container in it is no node of a known type");
        return NullFC;
    }
    if (!placeNodes()) return NullFC;
    linkAll();
    _builder.release();
    _log.succeed();
    return root;
}

bool BinaryReader::readHeader() {
    std::string_view header;
    std::string_view ignored;
    UInt64 size = 0;
    if (!_bytes.take(header) || header != kBinaryHeader)
        return fail("it does not begin like a file of OpenSG's binary format");
    return (_bytes.take(ignored) && _bytes.take(ignored) && _bytes.take(size)) ||
           fail("the file ends in its header");
}

bool BinaryReader::readRecords() {
    for (;;) {
        std::string_view typeName;
        if (!_bytes.take(typeName)) return fail("the name of a container type was expected");
        if (typeName.empty()) return true;
        if (!readRecord(typeName)) return false;
    }
}

bool BinaryReader::readRecord(std::string_view typeName) {
    Record record = {0, _links.size(), _types.find(typeName), FieldContainerPtr(), 0};
    if (!_bytes.take(record.id) || record.id == 0)
        return fail("the number of a container is missing");
    if (!takeMemory(kRecordOverhead)) return false;
    if (record.type == nullptr) {
        const std::string name(typeName);
        _log.warnOnce("type " + name, "byte " + std::to_string(_bytes.at() - _begin),
                      "containers of the unknown type \"" + name + "\" are left out");
    } else {
        record.container = _builder.create(*record.type);
        record.number = _builder.numCreated() - 1;
        beginEditCP(record.container, FieldBits::AllFields, ChangedOrigin::External);
        if (_builder.isTooLarge()) return fail(SceneBuilder::kTooLarge);
    }
    if (!readBody(record)) return false;
    _records.push_back(record);
    return true;
}

bool BinaryReader::readBody(Record& record) {
    // The version is small, so the first byte of a body without a kind is 0.
    const bool hasKind = _bytes.left() > 0 && *_bytes.at() != 0;
    UInt8 kind = kNoKind;
    UInt16 version = 0;
    if (hasKind) _bytes.take(kind);
    if (!_bytes.take(version) || kind > kChunkBody) return fail("a container's body is damaged");
    std::size_t likely = 0;
    for (;;) {
        std::string_view name;
        if (!_bytes.take(name)) return fail("the name of a field was expected");
        if (name.empty()) return true;
        if (!readField(record, name, likely)) return false;
    }
}

bool BinaryReader::readField(Record& record, std::string_view name, std::size_t& likely) {
    std::string_view typeName;
    UInt32 size = 0;
    ByteCursor bytes = _bytes;
    if (!_bytes.take(typeName) || !_bytes.take(size) || !_bytes.take(size, bytes))
        return fail("the field \"" + std::string(name) + "\" is cut off");
    if (record.type == nullptr) return true;
    const FieldInfo* info = record.type->find(name, likely);
    if (info == nullptr) {
        const std::string what = "\"" + std::string(name) + "\" of containers of the type \"" +
                                 std::string(record.type->name) + "\"";
        _log.warnOnce("field " + what, "byte " + std::to_string(_bytes.at() - _begin),
                      "the unknown field " + what + " is left out");
        return true;
    }
    likely = static_cast<std::size_t>(info - record.type->fields.data()) + 1;
    if (info->role == FieldRole::kInternal) return true;
    if (info->role != FieldRole::kAttachments && !info->isPointer())
        return readValue(record, *info, typeName, bytes);
    if (!checkLink(*info, typeName, bytes))
        return fail("the pointers of the field \"" + std::string(name) + "\" are damaged");
    _links.push_back({info, bytes});
    return takeMemory(kLinkOverhead);
}

/// Whether a value that was written as one of `typeName` can be read into a field of another type:
/// when the values are as long.
bool BinaryReader::isReadableAs(const Field& field, std::string_view typeName,
                                std::size_t size) const {
    const bool multi = field.getCardinality() == FieldType::MULTI_FIELD;
    if (isMulti(typeName) != multi || isPointerType(typeName)) return false;
    const UInt32 width = binaryWidthOf(field.getContentType().getCName());
    if (!multi) return width != 0 ? width == size : field.getBinSize() == size;
    const std::string content(typeName.substr(2));
    return width != 0 && width == binaryWidthOf(content.c_str());
}

bool BinaryReader::readValue(Record& record, const FieldInfo& info, std::string_view typeName,
                             ByteCursor& bytes) {
    Field& field = *record.container->getField(info.id);
    if (typeName != field.getType().getCName()) {
        const bool readable = isReadableAs(field, typeName, bytes.left());
        const std::string what = nameOf(record, info);
        _log.warnOnce("kind " + what, "byte " + std::to_string(_bytes.at() - _begin),
                      "the field " + what + " was written as " + std::string(typeName) +
                          (readable ? "" : " and is left out"));
        if (!readable) return true;
    }
    // Elements take more room in memory than in the file, texts most of all.
    if (info.role == FieldRole::kValues && !takeMemory(7 * bytes.left())) return false;
    try {
        CursorHandler handler(bytes);
        field.copyFromBin(handler);
    } catch (const BinaryDataHandler::ReadError&) {
        return fail("the field " + nameOf(record, info) + " is damaged");
    }
    return bytes.left() == 0 ||
           fail("the field " + nameOf(record, info) + " is longer than its value");
}

std::string BinaryReader::nameOf(const Record& record, const FieldInfo& info) {
    return "\"" + std::string(info.name) + "\" of a " + std::string(record.type->name);
}

/// Whether the bytes of a pointer field have the form that they must have.
bool BinaryReader::checkLink(const FieldInfo& info, std::string_view, ByteCursor bytes) {
    if (info.role == FieldRole::kCore || info.role == FieldRole::kPointer)
        return bytes.left() == sizeof(UInt32);
    UInt32 count = 0;
    if (!bytes.take(count)) return false;
    const std::size_t size = std::size_t(count) * sizeof(UInt32);
    if (bytes.left() == size) return true;
    return info.role == FieldRole::kAttachments &&
           bytes.left() == size + std::size_t(count) * sizeof(UInt16);
}

bool BinaryReader::takeMemory(std::size_t bytes) {
    return _builder.takeMemory(bytes) || fail(SceneBuilder::kTooLarge);
}

/// Makes containers found by number; no number may be given twice.
bool BinaryReader::indexRecords() {
    UInt32 last = 0;
    _firstId = _records.empty() ? 0 : _records.front().id;
    for (const Record& record : _records) {
        _firstId = (std::min)(_firstId, record.id);
        last = (std::max)(last, record.id);
    }
    // Numbers come from a counter, so mostly a table by number is small.
    _dense = !_records.empty() && (last - _firstId) / 4 <= _records.size();
    _byId.assign(_dense ? std::size_t(last - _firstId) + 1 : _records.size(), 0);
    if (!_dense) return sortRecords();
    for (std::size_t i = 0; i < _records.size(); ++i) {
        UInt32& place = _byId[_records[i].id - _firstId];
        if (place != 0) return failTwice(_records[i].id);
        place = static_cast<UInt32>(i + 1);
    }
    return true;
}

bool BinaryReader::sortRecords() {
    for (std::size_t i = 0; i < _byId.size(); ++i)
        _byId[i] = static_cast<UInt32>(i);
    const auto idOf = [this](UInt32 index) { return _records[index].id; };
    std::sort(_byId.begin(), _byId.end(),
              [&idOf](UInt32 a, UInt32 b) { return idOf(a) < idOf(b); });
    const auto twice = std::adjacent_find(
        _byId.begin(), _byId.end(), [&idOf](UInt32 a, UInt32 b) { return idOf(a) == idOf(b); });
    return twice == _byId.end() || failTwice(idOf(*twice));
}

bool BinaryReader::failTwice(UInt32 id) {
    return fail("the number " + std::to_string(id) + " is given to two containers");
}

const BinaryReader::Record* BinaryReader::findRecord(UInt32 id) const {
    if (_dense) {
        const std::size_t place = id < _firstId ? _byId.size() : std::size_t(id - _firstId);
        return place < _byId.size() && _byId[place] != 0 ? &_records[_byId[place] - 1] : nullptr;
    }
    const auto found =
        std::lower_bound(_byId.begin(), _byId.end(), id, [this](UInt32 index, UInt32 wanted) {
            return _records[index].id < wanted;
        });
    if (found == _byId.end() || _records[*found].id != id) return nullptr;
    return &_records[*found];
}

} // namespace osg::files
