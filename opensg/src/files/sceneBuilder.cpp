// What readers of scene files have in common: creating containers, and getting rid of all of them
// when the file turns out to be malformed.

#include "files/sceneBuilder.h"

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGGroup.h>

namespace osg::files {

namespace {

/// Empties the pointer fields that a container would release although it never counted them.
void forgetPointers(const FieldContainerPtr& container, const TypeInfo& type) {
    for (const FieldInfo& info : type.fields) {
        if (info.role == FieldRole::kPointer || info.role == FieldRole::kPointers)
            dropPointers(*container->getField(info.id), info);
    }
}

/// Takes off what a container counts by itself: attachments, core, children.
void detachParts(const FieldContainerPtr& container) {
    const AttachmentContainerPtr carrier = AttachmentContainerPtr::dcast(container);
    if (carrier == NullFC) return;
    const AttachmentMap attachments = carrier->getSFAttachments()->getValue();
    for (const auto& entry : attachments)
        carrier->subAttachment(entry.second, static_cast<UInt16>(entry.first & 0xffff));
    const NodePtr node = NodePtr::dcast(container);
    if (node == NullFC) return;
    node->setCore(NullFC);
    while (node->getNChildren() > 0)
        node->subChild(node->getNChildren() - 1);
}

} // namespace

SceneBuilder::~SceneBuilder() {
    if (!_released) takeApart();
}

/// Notes a container that was just made, for which there is a place already.
void SceneBuilder::count(const FieldContainerPtr& container) {
    _created.back().id = getContainerId(container);
    takeMemory(container->getContainerSize() + kContainerOverhead);
}

FieldContainerPtr SceneBuilder::create(const TypeInfo& type) {
    _created.push_back({0, false});
    const FieldContainerPtr container = type.type->createFieldContainer();
    count(container);
    return container;
}

NodePtr SceneBuilder::makeNode(const NodeCorePtr& core) {
    _created.push_back({0, true});
    const NodePtr node = Node::create();
    count(node);
    if (core != NullFC)
        node->setCore(core);
    else
        ensureCore(node);
    return node;
}

void SceneBuilder::ensureCore(const NodePtr& node) {
    if (node->getCore() != NullFC) return;
    _created.push_back({0, true});
    const GroupPtr group = Group::create();
    count(group);
    node->setCore(group);
}

void SceneBuilder::holdOrphan(const FieldContainerPtr& container) {
    _orphans.push_back(container);
    addRefCP(container);
}

void SceneBuilder::holdShared(const FieldContainerPtr& container) {
    _shared.push_back(container);
    addRefCP(container);
}

void SceneBuilder::holdUncounted(const FieldContainerPtr& holder, const FieldInfo& field,
                                 const FieldContainerPtr& target) {
    _uncounted.push_back({getContainerId(holder), &field, target});
    addRefCP(target);
}

bool SceneBuilder::owns(const FieldContainerPtr& container) const {
    // Numbers only grow, and nobody else makes containers while a file is read.
    return container != NullFC && !_created.empty() &&
           getContainerId(container) >= _created.front().id;
}

bool SceneBuilder::mayBeChild(const NodePtr& parent, const NodePtr& child) {
    for (NodePtr node = parent; node != NullFC; node = node->getParent()) {
        if (node == child || _stepsLeft == 0) return false;
        --_stepsLeft;
    }
    return true;
}

bool SceneBuilder::mayMove(const NodePtr& node) {
    const NodePtr parent = node->getParent();
    if (parent == NullFC) return true;
    const std::size_t cost =
        parent->getNChildren() - static_cast<std::size_t>(parent->findChild(node));
    if (cost > _stepsLeft) return false;
    _stepsLeft -= cost;
    return true;
}

bool SceneBuilder::stillPoints(const Uncounted& pointer) {
    const FieldContainerPtr holder = FieldContainerFactory::the()->getContainer(pointer.holder);
    return holder != NullFC &&
           pointerAt(*holder->getField(pointer.field->id), *pointer.field, 0) == pointer.target;
}

void SceneBuilder::release() {
    _released = true;
    for (FieldContainerPtr& orphan : _orphans)
        subRefCP(orphan);
    for (FieldContainerPtr& shared : _shared)
        subRefCP(shared);
    for (Uncounted& pointer : _uncounted) {
        if (pointer.target.getRefCount() > 1 || !stillPoints(pointer)) subRefCP(pointer.target);
    }
}

void SceneBuilder::takeApart() {
    const FieldContainerFactory& factory = *FieldContainerFactory::the();
    std::vector<FieldContainerPtr> all;
    all.reserve(_created.size());
    ContainerTypes types;
    for (const Created& created : _created) {
        const FieldContainerPtr container = factory.getContainer(created.id);
        if (container == NullFC) continue;
        addRefCP(container);
        all.push_back(container);
        if (!created.counted) forgetPointers(container, types.of(container));
    }
    // Everything is held once more, so nothing is destroyed while the parts come off, and then
    // each container goes alone. What is shared knows those that share it in the order in which
    // they came; it looks for them from the last one on.
    for (auto container = all.rbegin(); container != all.rend(); ++container)
        detachParts(*container);
    for (FieldContainerPtr& held : _orphans)
        subRefCP(held);
    for (FieldContainerPtr& held : _shared)
        subRefCP(held);
    for (Uncounted& held : _uncounted)
        subRefCP(held.target);
    for (auto container = all.rbegin(); container != all.rend(); ++container)
        subRefCP(*container);
}

} // namespace osg::files
