// Putting the containers of a binary file together: nothing in a file is wrong any more when this
// begins, except that the tree of nodes may not be one.

#include "files/binaryReader.h"

#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGFieldContainerFields.h>

#include <algorithm>

namespace osg::files {

namespace {

/// Keeps all containers but the root alive while they are put together, where one may take the
/// place of another. At the end those go that nothing holds.
class HoldAll {
  public:
    explicit HoldAll(std::vector<FieldContainerPtr> containers)
        : _containers(std::move(containers)) {
        for (const FieldContainerPtr& container : _containers)
            addRefCP(container);
    }
    ~HoldAll() {
        for (FieldContainerPtr& container : _containers)
            subRefCP(container);
    }

  private:
    std::vector<FieldContainerPtr> _containers;
};

} // namespace

std::size_t BinaryReader::endOfLinks(std::size_t index) const {
    return index + 1 < _records.size() ? _records[index + 1].firstLink : _links.size();
}

/// Calls `visit(index)` for the nodes among the children of a record.
template <class Visit>
void BinaryReader::forEachChild(std::size_t index, const Visit& visit) const {
    for (std::size_t i = _records[index].firstLink; i < endOfLinks(index); ++i) {
        if (_links[i].info->role != FieldRole::kChildren) continue;
        ByteCursor bytes = _links[i].bytes;
        UInt32 id = 0;
        bytes.take(id); // the count, which was checked
        while (bytes.take(id)) {
            const Record* const child = findRecord(id);
            if (child != nullptr && child->type != nullptr && child->type->isNode)
                visit(static_cast<std::size_t>(child - _records.data()));
        }
    }
}

/// Gives every node its parent: the last that has it among its children, as if they were added one
/// by one. False when nodes are above themselves.
bool BinaryReader::placeNodes() {
    _places.assign(_records.size(), {kNowhere, kNowhere, false});
    for (std::size_t i = 0; i < _records.size(); ++i)
        forEachChild(i, [this, i](std::size_t child) { _places[child].parent = i; });
    return findDepths() || fail("a node is made a child of itself or of a node below it");
}

bool BinaryReader::findDepths() {
    std::vector<std::size_t> path;
    for (std::size_t start = 0; start < _places.size(); ++start) {
        path.clear();
        std::size_t place = start;
        while (place != kNowhere && _places[place].depth == kNowhere) {
            path.push_back(place);
            // Marked as being on the way; met again it would be above itself.
            _places[place].depth = kNowhere - 1;
            place = _places[place].parent;
        }
        if (place != kNowhere && _places[place].depth == kNowhere - 1) return false;
        std::size_t depth = place == kNowhere ? 0 : _places[place].depth + 1;
        for (auto step = path.rbegin(); step != path.rend(); ++step)
            _places[*step].depth = depth++;
    }
    return true;
}

void BinaryReader::linkAll() {
    std::vector<FieldContainerPtr> others;
    others.reserve(_records.size());
    for (const Record& record : _records) {
        if (record.container == NullFC) continue;
        if (record.container != _records.front().container) others.push_back(record.container);
        _builder.markCounted(record.number);
    }
    const HoldAll hold(std::move(others));

    // The deepest nodes first: a node takes its children while it has no parent itself, so the
    // look upwards for cycles that this entails ends at once.
    std::vector<std::size_t> nodes;
    for (std::size_t i = 0; i < _records.size(); ++i) {
        if (_records[i].container == NullFC) continue;
        if (_records[i].type->isNode)
            nodes.push_back(i);
        else
            linkRecord(i);
    }
    std::stable_sort(nodes.begin(), nodes.end(), [this](std::size_t a, std::size_t b) {
        return _places[a].depth > _places[b].depth;
    });
    for (const std::size_t index : nodes)
        linkRecord(index);
    finishAll();
}

void BinaryReader::linkRecord(std::size_t index) {
    const Record& record = _records[index];
    for (std::size_t i = record.firstLink; i < endOfLinks(index); ++i) {
        const Link& link = _links[i];
        if (link.info->role == FieldRole::kAttachments)
            linkAttachments(AttachmentContainerPtr::dcast(record.container), link.bytes);
        else if (link.info->role != FieldRole::kChildren)
            linkPointers(record, link);
    }
    if (record.type->isNode) linkChildren(index);
}

void BinaryReader::linkChildren(std::size_t index) {
    const NodePtr parent = NodePtr::dcast(_records[index].container);
    forEachChild(index, [this, index, &parent](std::size_t child) {
        TreePlace& place = _places[child];
        if (place.parent != index || place.added) return;
        place.added = true;
        parent->addChild(NodePtr::dcast(_records[child].container));
    });
}

void BinaryReader::linkAttachments(const AttachmentContainerPtr& carrier, ByteCursor bytes) {
    UInt32 count = 0;
    bytes.take(count);
    ByteCursor bindings(bytes.at() + std::size_t(count) * sizeof(UInt32),
                        bytes.at() + bytes.left());
    for (UInt32 i = 0; i < count; ++i) {
        UInt32 id = 0;
        UInt16 binding = 0;
        bytes.take(id);
        bindings.take(binding);
        const Record* const record = findRecord(id);
        if (record != nullptr)
            carrier->addAttachment(AttachmentPtr::dcast(record->container), binding);
    }
}

/// Null elements are kept, those of unknown types and of types that do not fit are dropped.
void BinaryReader::linkPointers(const Record& record, const Link& link) {
    const FieldInfo& info = *link.info;
    const bool list = info.role == FieldRole::kPointers;
    Field& field = *record.container->getField(info.id);
    ByteCursor bytes = link.bytes;
    UInt32 id = 0;
    if (list) bytes.take(id); // the count, which was checked
    while (bytes.take(id)) {
        const Record* const found = id == 0 ? nullptr : findRecord(id);
        const FieldContainerPtr target = found == nullptr ? NullFC : found->container;
        if (target == NullFC) {
            if (list && id == 0) putPointer(field, info, NullFC);
        } else if (info.target == nullptr || !target->getType().isDerivedFrom(*info.target)) {
            warnOfMisfit(target, info);
        } else if (info.role == FieldRole::kCore) {
            NodePtr::dcast(record.container)->setCore(NodeCorePtr::dcast(target));
        } else {
            if (!list) release(record, info, pointerAt(field, info, 0));
            count(record, info, target);
            putPointer(field, info, target);
        }
    }
}

/// Counts what a field points at. OpenSG's reader does so, too: the container is not told to.
void BinaryReader::count(const Record& record, const FieldInfo& info,
                         const FieldContainerPtr& target) {
    if (!info.isReleased) {
        // The root has no reference while nobody took it; it stays anyway.
        if (target != _records.front().container)
            _builder.holdUncounted(record.container, info, target);
        return;
    }
    addRefCP(target);
    if (info.isParent) AttachmentPtr::dcast(target)->addParent(record.container);
}

/// The opposite, for what a field points at that stands in the file twice.
void BinaryReader::release(const Record& record, const FieldInfo& info, FieldContainerPtr target) {
    if (!info.isReleased || !_builder.owns(target)) return;
    if (info.isParent) AttachmentPtr::dcast(target)->subParent(record.container);
    subRefCP(target);
}

void BinaryReader::warnOfMisfit(const FieldContainerPtr& target, const FieldInfo& info) {
    const std::string what = std::string("a ") + target->getTypeName() +
                             " does not fit into the field \"" + std::string(info.name) + "\"";
    _log.warnOnce(what, "", what + " and is left out");
}

void BinaryReader::finishAll() {
    for (const Record& record : _records) {
        if (record.container != NullFC)
            endEditCP(record.container, FieldBits::AllFields, ChangedOrigin::External);
    }
}

} // namespace osg::files
