// Text as OpenSG writes it, except where that would lose something: numbers have all their digits,
// quotes and backslashes in texts are escaped, and the names of shared containers are names that
// every reader accepts, each given once.

#include "files/asciiWriter.h"

#include "files/pointerTargets.h"

#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGSimpleAttachments.h>

namespace osg::files {

namespace {

/// Lines of containers that are nested deeper than this start at the margin: indentation is for
/// people, and in a chain of a million nodes it would take terabytes.
constexpr std::size_t kDeepestIndent = 64;

/// The name that files keep of a container, null when there is none.
const std::string* savedNameOf(const FieldContainerPtr& container) {
    const AttachmentContainerPtr carrier = AttachmentContainerPtr::dcast(container);
    if (carrier == NullFC) return nullptr;
    const NamePtr name = NamePtr::dcast(carrier->findAttachment(Name::getClassType()));
    if (name == NullFC || name->getInternal()) return nullptr;
    return &name->getFieldPtr()->getValue();
}

} // namespace

void AsciiWriter::write(const std::vector<FieldContainerPtr>& containers) {
    countReferences(containers);
    _out.put("#OSG V1.0 \n");
    for (const FieldContainerPtr& container : containers) {
        if (container != NullFC && writeReference(container, 0)) writeWhole(container);
    }
}

void AsciiWriter::countReferences(const std::vector<FieldContainerPtr>& containers) {
    std::vector<FieldContainerPtr> open;
    const auto meet = [this, &open](const FieldContainerPtr& container) {
        if (_met.meet(getContainerId(container)) && _types.of(container).hasPointers)
            open.push_back(container);
    };
    for (const FieldContainerPtr& container : containers)
        if (container != NullFC) meet(container);
    while (!open.empty()) {
        const FieldContainerPtr container = open.back();
        open.pop_back();
        forEachTarget(container, _types.of(container), meet);
    }
}

/// Writes a container to its end.
void AsciiWriter::writeWhole(const FieldContainerPtr& container) {
    open(container, 0);
    while (!_frames.empty())
        writeNext();
}

/// A container's first line. Its fields follow by and by.
void AsciiWriter::open(const FieldContainerPtr& container, std::size_t level) {
    indent(level);
    if (_met.isShared(getContainerId(container))) {
        _out.put("DEF ");
        _out.put(nameOf(container));
        _out.put(' ');
    }
    Frame frame;
    frame.container = container;
    frame.type = &_types.of(container);
    frame.level = level;
    _out.put(frame.type->name);
    _out.put(" {\n");
    _frames.push_back(frame);
}

/// Goes on with the container that was opened last until it ends or another one is opened in it.
void AsciiWriter::writeNext() {
    const std::size_t depth = _frames.size();
    // Frames move when one is added, so this one is not touched once the depth has changed.
    Frame& frame = _frames.back();
    while (frame.field < frame.type->fields.size()) {
        const bool complete = writeField(frame, frame.type->fields[frame.field]);
        if (_frames.size() != depth) return;
        if (complete) {
            ++frame.field;
            frame.inField = false;
            frame.element = 0;
        }
    }
    indent(frame.level);
    _out.put("}\n");
    _frames.pop_back();
}

/// A field, or the next part of one that holds containers. \return whether it is complete.
bool AsciiWriter::writeField(Frame& frame, const FieldInfo& info) {
    switch (info.role) {
    case FieldRole::kInternal:
        return true;
    case FieldRole::kAttachments:
        return writeAttachments(frame);
    case FieldRole::kCore:
    case FieldRole::kPointer:
        return writeSinglePointer(frame, info);
    case FieldRole::kChildren:
    case FieldRole::kPointers:
        return writePointerList(frame, info);
    default:
        writeValues(frame, info);
        return true;
    }
}

bool AsciiWriter::writeAttachments(Frame& frame) {
    const AttachmentMap& map = AttachmentContainerPtr::dcast(frame.container)->getAttachments();
    const std::size_t level = frame.level;
    auto next = frame.attachment == 0 ? map.begin()
                                      : map.upper_bound(static_cast<UInt32>(frame.attachment - 1));
    while (next != map.end() && isLeftOut(next->second))
        ++next;
    if (!frame.inField) {
        frame.inField = true;
        indent(level + 1);
        _out.put(next == map.end() ? "attachments [ " : "attachments [ \n");
    }
    if (next == map.end()) {
        if (frame.attachment != 0) indent(level + 1);
        frame.attachment = 0;
        _out.put(" ] \n");
        return true;
    }
    frame.attachment = std::uint64_t(next->first) + 1;
    const FieldContainerPtr attachment = next->second;
    if (writeReference(attachment, level + 2)) open(attachment, level + 2);
    return false;
}

bool AsciiWriter::writeSinglePointer(Frame& frame, const FieldInfo& info) {
    if (frame.inField) return true;
    const FieldContainerPtr target = pointerAt(*frame.container->getField(info.id), info, 0);
    const std::size_t level = frame.level + 2;
    frame.inField = true;
    indent(frame.level + 1);
    _out.put(info.name);
    _out.put(target == NullFC ? " NULL\n" : "\n");
    if (target == NullFC || !writeReference(target, level)) return true;
    open(target, level);
    return false;
}

bool AsciiWriter::writePointerList(Frame& frame, const FieldInfo& info) {
    const Field& field = *frame.container->getField(info.id);
    const std::size_t level = frame.level + 2;
    if (!frame.inField) {
        frame.inField = true;
        indent(frame.level + 1);
        _out.put(info.name);
        _out.put(" [\n");
    }
    const UInt32 size = field.getSize();
    while (frame.element < size) {
        const FieldContainerPtr target = pointerAt(field, info, frame.element++);
        if (target == NullFC) {
            indent(level);
            _out.put("NULL\n");
        } else if (writeReference(target, level)) {
            open(target, level);
            return false;
        }
    }
    indent(frame.level + 1);
    _out.put("]\n");
    return true;
}

void AsciiWriter::writeValues(const Frame& frame, const FieldInfo& info) {
    const Field& field = *frame.container->getField(info.id);
    indent(frame.level + 1);
    _out.put(info.name);
    if (info.role == FieldRole::kValue) {
        _out.put(' ');
        info.text->print(field, _printer);
        _out.put('\n');
        return;
    }
    _out.put(" [\n");
    _printer.indent = frame.level + 2 > kDeepestIndent ? 0 : (frame.level + 2) * _indentStep;
    info.text->print(field, _printer);
    indent(frame.level + 1);
    _out.put("]\n");
}

/// Writes USE when the container has been written, or is being written. \return false then.
bool AsciiWriter::writeReference(const FieldContainerPtr& target, std::size_t level) {
    const UInt32 id = getContainerId(target);
    if (!_met.isShared(id)) return true;
    const auto written = _written.find(id);
    if (written == _written.end()) return true;
    indent(level);
    _out.put("USE ");
    _out.put(written->second);
    _out.put('\n');
    return false;
}

/// The name of a shared container that is now written: its own if it can be had.
std::string_view AsciiWriter::nameOf(const FieldContainerPtr& container) {
    const UInt32 id = getContainerId(container);
    const std::string* own = savedNameOf(container);
    std::string name =
        own != nullptr && _names.take(*own) ? *own : _names.make(container->getTypeName(), id);
    return _written.emplace(id, std::move(name)).first->second;
}

void AsciiWriter::indent(std::size_t level) {
    if (level <= kDeepestIndent) _out.putBlanks(level * _indentStep);
}

} // namespace osg::files
