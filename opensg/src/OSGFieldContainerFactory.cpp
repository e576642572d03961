// The list of container types, and of living containers by number.
#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGLog.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>

#include <cassert>
#include <cstring>
#include <limits>
#include <utility>

namespace osg {

// Never destroyed: types and containers leave it when the program or a library ends, in any order.
FieldContainerFactory* FieldContainerFactory::_the = nullptr;

FieldContainerFactory* FieldContainerFactory::make() {
    return new FieldContainerFactory;
}

FieldContainerType* FieldContainerFactory::findType(UInt32 typeId) const {
    const auto found = _typesById.find(typeId);
    return found == _typesById.end() ? nullptr : found->second;
}

FieldContainerType* FieldContainerFactory::findType(const Char8* typeName) const {
    if (typeName == nullptr) return nullptr;
    const auto found = _typesByName.find(typeName);
    return found == _typesByName.end() ? nullptr : found->second;
}

FieldContainerType* FieldContainerFactory::findPointedType(const DataType& contentType) const {
    static constexpr std::size_t suffix = 3;
    std::string name = contentType.getCName();
    if (name.size() <= suffix || name.compare(name.size() - suffix, suffix, "Ptr") != 0)
        return nullptr;
    name.resize(name.size() - suffix);
    return findType(name.c_str());
}

UInt16 FieldContainerFactory::findGroupId(const Char8* groupName) const {
    if (groupName == nullptr) return 0;
    const auto found = _groupIds.find(groupName);
    return found == _groupIds.end() ? UInt16(0) : found->second;
}

const Char8* FieldContainerFactory::findGroupName(UInt16 groupId) const {
    return groupId > 0 && groupId < _groupNames.size() ? _groupNames[groupId].c_str() : nullptr;
}

UInt16 FieldContainerFactory::groupIdFor(const Char8* groupName) {
    const std::string name = groupName == nullptr ? "" : groupName;
    const auto found = _groupIds.find(name);
    if (found != _groupIds.end()) return found->second;

    assert(_groupNames.size() <= std::numeric_limits<UInt16>::max() && "too many groups of types");
    const UInt16 id = static_cast<UInt16>(_groupNames.size());
    _groupNames.push_back(name);
    _groupIds.emplace(name, id);
    return id;
}

FieldContainerPtr FieldContainerFactory::createFieldContainer(const Char8* typeName) const {
    const FieldContainerType* type = findType(typeName);
    return type == nullptr ? FieldContainerPtr() : type->createFieldContainer();
}

NodePtr FieldContainerFactory::createNode(const Char8* typeName) const {
    const FieldContainerType* type = findType(typeName);
    return type == nullptr ? NodePtr() : type->createNode();
}

NodeCorePtr FieldContainerFactory::createNodeCore(const Char8* typeName) const {
    const FieldContainerType* type = findType(typeName);
    return type == nullptr ? NodeCorePtr() : type->createNodeCore();
}

AttachmentPtr FieldContainerFactory::createAttachment(const Char8* typeName) const {
    const FieldContainerType* type = findType(typeName);
    return type == nullptr ? AttachmentPtr() : type->createAttachment();
}

bool FieldContainerFactory::initializePendingTypes() {
    if (GlobalSystemState != Running) return false;
    initializePending();
    return true;
}

void FieldContainerFactory::addType(FieldContainerType& type) {
    _pending.emplace(type.getCName(), &type);
}

void FieldContainerFactory::removeType(FieldContainerType& type) {
    const auto pending = _pending.find(type.getCName());
    if (pending != _pending.end() && pending->second == &type) _pending.erase(pending);
    const auto named = _typesByName.find(type.getCName());
    if (named != _typesByName.end() && named->second == &type) _typesByName.erase(named);
    _typesById.erase(type.getId());
}

void FieldContainerFactory::initializePending() {
    std::map<std::string, FieldContainerType*> orphans;
    while (!_pending.empty()) {
        FieldContainerType& type = *_pending.begin()->second;
        initializeWithParents(type);
        if (type._initialized) continue;
        // The parent may come with a library that is loaded later.
        SWARNING << "type " << type.getName() << " has an unknown parent, " << type.getParentName()
                 << std::endl;
        orphans.insert(*_pending.begin());
        _pending.erase(_pending.begin());
    }
    _pending.swap(orphans);
}

void FieldContainerFactory::initializeWithParents(FieldContainerType& type) {
    FieldContainerType* parent = nullptr;
    if (type.getParentName().length() > 0) {
        const auto pending = _pending.find(type.getCParentName());
        // A type that names itself as its parent has none.
        if (pending != _pending.end() && pending->second != &type)
            initializeWithParents(*pending->second);
        parent = findType(type.getCParentName());
        if (parent == nullptr) return;
    }
    _pending.erase(type.getCName());
    if (!_typesByName.emplace(type.getCName(), &type).second) {
        // The other type of this name was there first and keeps it.
        type._initialized = true;
        return;
    }
    _typesById.emplace(type.getId(), &type);
    type.initialize(parent);
}

void FieldContainerFactory::terminate() {
    for (const auto& entry : _typesById)
        entry.second->terminate();
    _accepting = false;
    std::vector<FieldContainer*>().swap(_containers);
}

UInt32 FieldContainerFactory::addContainer(FieldContainer& container) {
    if (!_accepting) return 0;
    const UInt32 id = static_cast<UInt32>(_containers.size());
    _containers.push_back(&container);
    return id;
}

void FieldContainerFactory::removeContainer(UInt32 id) {
    if (id < _containers.size()) _containers[id] = nullptr;
}

} // namespace osg
