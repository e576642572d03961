// Names of containers.
#include <OpenSG/OSGSimpleAttachments.h>

namespace osg {

template <class Desc>
FieldDescription* SimpleAttachment<Desc>::_desc[] = {new FieldDescription(
    FieldTypeT::getClassType(), Desc::getFieldName(), SimpleFieldId, SimpleFieldMask, false,
    static_cast<FieldAccessMethod>(&SimpleAttachment<Desc>::fieldSimple))};

template <class Desc>
FieldContainerType SimpleAttachment<Desc>::_type(Desc::getTypeName(), Desc::getParentTypeName(),
                                                 Desc::getGroupName(),
                                                 &SimpleAttachment<Desc>::makePrototype, nullptr,
                                                 _desc, sizeof(_desc));

template class SimpleAttachment<NameAttachmentDesc>;

const Char8* getName(const AttachmentContainerPtr& container) {
    if (container == NullFC) return nullptr;
    const NamePtr name = NamePtr::dcast(container->findAttachment(Name::getClassType()));
    return name == NullFC ? nullptr : name->getFieldPtr()->getValue().c_str();
}

void setName(const AttachmentContainerPtr& container, const std::string& name) {
    if (container == NullFC) return;
    NamePtr attachment = NamePtr::dcast(container->findAttachment(Name::getClassType()));
    if (attachment == NullFC) {
        attachment = Name::create();
        if (attachment == NullFC) return;
        beginEditCP(container, AttachmentContainer::AttachmentsFieldMask);
        container->addAttachment(attachment);
        endEditCP(container, AttachmentContainer::AttachmentsFieldMask);
    }
    beginEditCP(attachment, Name::SimpleFieldMask);
    attachment->getFieldPtr()->setValue(name);
    endEditCP(attachment, Name::SimpleFieldMask);
}

void setName(const AttachmentContainerPtr& container, const Char8* name) {
    if (name != nullptr) {
        setName(container, std::string(name));
        return;
    }
    if (container == NullFC) return;
    const AttachmentPtr attachment = container->findAttachment(Name::getClassType());
    if (attachment == NullFC) return;
    beginEditCP(container, AttachmentContainer::AttachmentsFieldMask);
    container->subAttachment(attachment);
    endEditCP(container, AttachmentContainer::AttachmentsFieldMask);
}

} // namespace osg
