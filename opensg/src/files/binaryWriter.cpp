// The binary format as OpenSG writes it: empty lists of pointers and attachments, volumes and
// internal fields are left out.

#include "files/binaryWriter.h"

#include "files/pointerTargets.h"

#include <OpenSG/OSGFieldContainerFactory.h>

#include <string_view>

namespace osg::files {

namespace {

bool isA(const FieldContainerType& type, const Char8* name) {
    const FieldContainerType* other = FieldContainerFactory::the()->findType(name);
    return other != nullptr && type.isDerivedFrom(*other);
}

BodyKind kindOf(const TypeInfo& type) {
    if (type.name == "Geometry" || type.name == "Image") return kNoKind;
    if (type.isNode) return kNodeBody;
    if (type.isCore) return kCoreBody;
    if (isA(*type.type, "StateChunk")) return kChunkBody;
    if (type.isAttachment) return kAttachmentBody;
    return isA(*type.type, "Material") ? kMaterialBody : kOtherBody;
}

} // namespace

void BinaryWriter::write(MemoryHandle source, UInt32 size) {
    _out.put(std::string_view(reinterpret_cast<const char*>(source), size));
}

void BinaryWriter::writeText(std::string_view text) {
    putValue(static_cast<UInt32>(text.size() + 1));
    _out.put(text);
    _out.put('\0');
}

void BinaryWriter::writeScene(const NodePtr& root) {
    writeText(kBinaryHeader);
    writeText("");
    writeText("");
    putValue(UInt64(0));
    _met.meet(getContainerId(root));
    _waiting.push_back(root);
    while (!_waiting.empty()) {
        const FieldContainerPtr container = _waiting.front();
        _waiting.pop_front();
        writeRecord(container);
    }
    writeText("");
    putValue(UInt32(0));
}

void BinaryWriter::writeRecord(const FieldContainerPtr& container) {
    const TypeInfo& type = _types.of(container);
    writeText(type.name);
    putValue(getContainerId(container));
    const BodyKind kind = kindOf(type);
    if (kind != kNoKind) putValue(UInt8(kind));
    putValue(UInt16(kBinaryVersion));
    for (const FieldInfo& info : type.fields)
        writeField(container, type, info);
    writeText("");
    if (!type.hasPointers) return;
    forEachTarget(container, type, [this](const FieldContainerPtr& target) {
        if (_met.meet(getContainerId(target))) _waiting.push_back(target);
    });
}

void BinaryWriter::writeField(const FieldContainerPtr& container, const TypeInfo& type,
                              const FieldInfo& info) {
    const bool isVolume = type.isNode && info.id == Node::VolumeFieldId;
    if (info.role == FieldRole::kInternal || isVolume) return;
    const Field& field = *container->getField(info.id);
    if (info.role == FieldRole::kAttachments) {
        writeAttachments(container, field, info);
    } else if (info.role == FieldRole::kCore || info.role == FieldRole::kPointer) {
        writeFieldHeader(field, info, sizeof(UInt32));
        writePointer(pointerAt(field, info, 0));
    } else if (info.isPointer()) {
        const UInt32 count = field.getSize();
        if (count == 0) return;
        writeFieldHeader(field, info, static_cast<UInt32>(sizeof(UInt32) * (1 + count)));
        putValue(count);
        for (UInt32 i = 0; i < count; ++i)
            writePointer(pointerAt(field, info, i));
    } else {
        writeFieldHeader(field, info, field.getBinSize());
        field.copyToBin(*this);
    }
}

/// Bindings are only written when one of them is not 0.
void BinaryWriter::writeAttachments(const FieldContainerPtr& container, const Field& field,
                                    const FieldInfo& info) {
    const AttachmentMap& map = AttachmentContainerPtr::dcast(container)->getAttachments();
    UInt32 count = 0;
    UInt32 bindings = 0;
    for (const auto& entry : map) {
        if (isLeftOut(entry.second)) continue;
        ++count;
        bindings |= entry.first & 0xffffu;
    }
    if (count == 0) return;
    const std::size_t perEntry = sizeof(UInt32) + (bindings != 0 ? sizeof(UInt16) : 0);
    writeFieldHeader(field, info, static_cast<UInt32>(sizeof(UInt32) + count * perEntry));
    putValue(count);
    for (const auto& entry : map)
        if (!isLeftOut(entry.second)) writePointer(entry.second);
    if (bindings == 0) return;
    for (const auto& entry : map)
        if (!isLeftOut(entry.second)) putValue(static_cast<UInt16>(entry.first & 0xffffu));
}

void BinaryWriter::writeFieldHeader(const Field& field, const FieldInfo& info, UInt32 size) {
    writeText(info.name);
    writeText(field.getType().getCName());
    putValue(size);
}

void BinaryWriter::writePointer(const FieldContainerPtr& target) {
    putValue(target == NullFC ? UInt32(0) : getContainerId(target));
}

} // namespace osg::files
