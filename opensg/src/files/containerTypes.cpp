// Looking at container types: which fields there are and how each of them is treated.

#include "files/containerTypes.h"

#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGNode.h>

#include <string>

namespace osg::files {

namespace {

bool isPointers(const Field& field) {
    return dynamic_cast<const SFFieldContainerPtr*>(&field) != nullptr ||
           dynamic_cast<const MFFieldContainerPtr*>(&field) != nullptr;
}

bool isA(const FieldContainerType& type, const Char8* name) {
    const FieldContainerType* other = FieldContainerFactory::the()->findType(name);
    return other != nullptr && type.isDerivedFrom(*other);
}

FieldRole roleOf(const Field& field, const FieldDescription& description, const TypeInfo& type) {
    if (description.isInternal()) return FieldRole::kInternal;
    const UInt32 id = description.getFieldId();
    if (type.isAttachmentContainer && id == AttachmentContainer::AttachmentsFieldId)
        return FieldRole::kAttachments;
    if (type.isNode && id == Node::ChildrenFieldId) return FieldRole::kChildren;
    if (type.isNode && id == Node::CoreFieldId) return FieldRole::kCore;
    const bool multi = field.getCardinality() == FieldType::MULTI_FIELD;
    if (isPointers(field)) return multi ? FieldRole::kPointers : FieldRole::kPointer;
    return multi ? FieldRole::kValues : FieldRole::kValue;
}

} // namespace

const FieldInfo* TypeInfo::find(std::string_view fieldName, std::size_t likely) const {
    if (likely < fields.size() && fields[likely].name == fieldName) return &fields[likely];
    for (const FieldInfo& field : fields)
        if (field.name == fieldName) return &field;
    return nullptr;
}

const TypeInfo& ContainerTypes::add(FieldContainerType& type) {
    TypeInfo& info = _infos.emplace_back();
    info.type = &type;
    info.name = type.getCName();
    info.isNode = type.isNode();
    info.isCore = type.isNodeCore();
    info.isAttachment = type.isAttachment();
    info.isAttachmentContainer = type.isDerivedFrom(AttachmentContainer::getClassType());
    const bool camera = isA(type, "Camera");
    const bool parent = isA(type, "Geometry") || isA(type, "ChunkMaterial");
    const FieldContainerPtr sample = type.getPrototype();
    for (UInt32 i = 1; i <= type.getNumFieldDescs(); ++i) {
        const FieldDescription& description = *type.getFieldDescription(i);
        const Field* field = sample->getField(description.getFieldId());
        if (field == nullptr) continue;
        FieldInfo& entry = info.fields.emplace_back();
        entry.name = description.getCName();
        entry.id = description.getFieldId();
        entry.isReleased = !(camera && entry.name == "beacon");
        entry.role = roleOf(*field, description, info);
        if (entry.role == FieldRole::kAttachments || entry.isPointer()) info.hasPointers = true;
        if (entry.role == FieldRole::kValue || entry.role == FieldRole::kValues)
            entry.text = &fieldTextOf(*field);
        else
            entry.target = FieldContainerFactory::the()->findPointedType(field->getContentType());
        entry.isParent = parent && entry.isPointer() && entry.target != nullptr &&
                         entry.target->isDerivedFrom(Attachment::getClassType());
    }
    _byType.emplace(&type, &info);
    _byName.emplace(info.name, &info);
    return info;
}

const TypeInfo& ContainerTypes::of(const FieldContainerPtr& container) {
    FieldContainerType& type = container->getType();
    if (_last != nullptr && _last->type == &type) return *_last;
    const auto found = _byType.find(&type);
    _last = found != _byType.end() ? found->second : &add(type);
    return *_last;
}

const TypeInfo* ContainerTypes::find(std::string_view name) {
    if (_last != nullptr && _last->name == name) return _last;
    const auto found = _byName.find(name);
    if (found != _byName.end()) return _last = found->second;
    FieldContainerType* type = FieldContainerFactory::the()->findType(std::string(name).c_str());
    if (type == nullptr || type->isAbstract()) return nullptr;
    return _last = &add(*type);
}

FieldContainerPtr pointerAt(const Field& field, const FieldInfo& info, UInt32 index) {
    if (info.role == FieldRole::kPointer || info.role == FieldRole::kCore)
        return static_cast<const SFFieldContainerPtr&>(field).getValue();
    const auto& list = static_cast<const MFFieldContainerPtr&>(field);
    return index < list.size() ? list[index] : FieldContainerPtr();
}

void putPointer(Field& field, const FieldInfo& info, const FieldContainerPtr& target) {
    if (info.role == FieldRole::kPointer)
        static_cast<SFFieldContainerPtr&>(field).setValue(target);
    else
        static_cast<MFFieldContainerPtr&>(field).push_back(target);
}

void dropPointers(Field& field, const FieldInfo& info) {
    if (info.role == FieldRole::kPointer)
        static_cast<SFFieldContainerPtr&>(field).setValue(NullFC);
    else
        static_cast<MFFieldContainerPtr&>(field).clear();
}

} // namespace osg::files
