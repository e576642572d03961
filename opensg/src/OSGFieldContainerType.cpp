// Container types: what they inherit, and what can be created from them.
#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGLog.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>

#include <algorithm>
#include <cstring>

namespace osg {

FieldDescription::FieldDescription(const TypeBase& fieldType, const Char8* name, UInt32 fieldId,
                                   BitVector mask, bool internal, FieldAccessMethod access,
                                   const Char8* defaultValue, bool isMember)
    : _name(name), _fieldType(&fieldType), _mask(mask), _access(access), _fieldId(fieldId),
      _internal(internal), _isMember(isMember), _hasDefault(defaultValue != nullptr),
      _defaultValue(defaultValue == nullptr ? "" : defaultValue) {}

// It is the same in all containers of the type and of those derived from it: containers do not
// inherit virtually.
void FieldDescription::findPlace(FieldContainer& container) {
    if (!_isMember || _place != 0) return;
    if (const Field* const field = getField(container))
        _place = reinterpret_cast<const Char8*>(field) - reinterpret_cast<Char8*>(&container);
}

FieldContainerType::FieldContainerType(const Char8* name, const Char8* parentName,
                                       const Char8* groupName, PrototypeCreateF createPrototype,
                                       InitContainerF init, FieldDescription** descs,
                                       UInt32 descByteCount, bool)
    : DataType(name, parentName),
      _groupId(FieldContainerFactory::the()->groupIdFor(groupName == nullptr ? name : groupName)),
      _createPrototype(createPrototype) {
    if (descs != nullptr) _ownDescs.assign(descs, descs + descByteCount / sizeof(*descs));
    FieldContainerFactory::the()->addType(*this);
    if (init != nullptr) init();
}

FieldContainerType::~FieldContainerType() {
    terminate();
    FieldContainerFactory::the()->removeType(*this);
    for (FieldDescription* desc : _ownDescs)
        delete desc;
}

bool FieldContainerType::isDerivedFrom(const TypeBase& other) const {
    for (const FieldContainerType* type = this; type != nullptr; type = type->_parent)
        if (*type == other) return true;
    return false;
}

FieldDescription* FieldContainerType::findFieldDescription(const Char8* fieldName) {
    const FieldContainerType& self = *this;
    return const_cast<FieldDescription*>(self.findFieldDescription(fieldName));
}

// A type has a few dozen fields at most: comparing the names one by one beats a table.
const FieldDescription* FieldContainerType::findFieldDescription(const Char8* fieldName) const {
    if (fieldName == nullptr) return nullptr;
    for (const FieldDescription* desc : _allDescs)
        if (std::strcmp(desc->getCName(), fieldName) == 0) return desc;
    return nullptr;
}

FieldContainerPtr FieldContainerType::createFieldContainer() const {
    if (_prototype == NullFC) return NullFC;
    return _prototype->shallowCopy();
}

NodePtr FieldContainerType::createNode() const {
    return isNode() ? NodePtr::dcast(createFieldContainer()) : NodePtr();
}

NodeCorePtr FieldContainerType::createNodeCore() const {
    return isNodeCore() ? NodeCorePtr::dcast(createFieldContainer()) : NodeCorePtr();
}

AttachmentPtr FieldContainerType::createAttachment() const {
    return isAttachment() ? AttachmentPtr::dcast(createFieldContainer()) : AttachmentPtr();
}

void FieldContainerType::initialize(FieldContainerType* parent) {
    _initialized = true;
    _parent = parent;
    _kind = kindByDescent();

    _allDescs.clear();
    if (parent != nullptr) _allDescs = parent->_allDescs;
    for (FieldDescription* desc : _ownDescs)
        if (desc != nullptr) _allDescs.push_back(desc);
    std::stable_sort(_allDescs.begin(), _allDescs.end(),
                     [](const FieldDescription* a, const FieldDescription* b) {
                         return a->getFieldId() < b->getFieldId();
                     });

    if (_createPrototype == nullptr) return;
    _prototype = _createPrototype();
    addRefCP(_prototype);
    if (_prototype == NullFC) return;
    for (FieldDescription* desc : _allDescs)
        desc->findPlace(*_prototype);
}

void FieldContainerType::terminate() {
    // The variable is cleared first: nothing is created from a dying prototype.
    FieldContainerPtr prototype = _prototype;
    _prototype = NullFC;
    subRefCP(prototype);
}

FieldContainerType::Kind FieldContainerType::kindByDescent() const {
    if (isDerivedFrom(Node::getClassType())) return Kind::node;
    if (isDerivedFrom(NodeCore::getClassType())) return Kind::core;
    if (isDerivedFrom(Attachment::getClassType())) return Kind::attachment;
    return Kind::other;
}

} // namespace osg
