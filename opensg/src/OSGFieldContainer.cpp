// Containers: numbers, reference counts at their end, fields by number and name.
#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGFieldContainerFactory.h>

#include <cstdio>
#include <vector>

namespace osg {

FieldContainerType FieldContainer::_type("FieldContainer", nullptr, nullptr, nullptr, nullptr,
                                         nullptr, 0);

FieldContainer::FieldContainer() : _id(FieldContainerFactory::the()->addContainer(*this)) {}

FieldContainer::FieldContainer(const FieldContainer&) : FieldContainer() {}

FieldContainer::~FieldContainer() {
    FieldContainerFactory::the()->removeContainer(_id);
#if !defined(NDEBUG)
    // For isKnown, which looks at what is left; volatile, or the compiler leaves the write out.
    static_cast<volatile bool&>(_dying) = false;
#endif
}

void FieldContainer::onCreate(const FieldContainer*) {}

void FieldContainer::onDestroy() {}

UInt32 FieldContainer::getBinSize(const BitVector&) {
    return 0;
}

void FieldContainer::copyToBin(BinaryDataHandler&, const BitVector&) {}

void FieldContainer::copyFromBin(BinaryDataHandler&, const BitVector&) {}

void FieldContainer::executeSyncImpl(FieldContainer*, const BitVector&) {}

Field* FieldContainer::searchField(UInt32 fieldId) {
    FieldContainerType& type = getType();
    for (UInt32 i = 1; i <= type.getNumFieldDescs(); ++i) {
        const FieldDescription* const desc = type.getFieldDescription(i);
        if (desc->getFieldId() == fieldId) return desc->getField(*this);
    }
    return nullptr;
}

Field* FieldContainer::getField(const Char8* fieldName) {
    const FieldDescription* desc = getType().findFieldDescription(fieldName);
    return desc == nullptr ? nullptr : desc->getField(*this);
}

// The memory of a destroyed container is read here, as its user is about to do anyway. It holds the
// number of a container that is gone, or something that is no number of this one.
bool FieldContainer::isKnown(const FieldContainer* container) {
    const FieldContainerFactory& factory = *FieldContainerFactory::the();
    if (!factory._accepting || container->_dying) return true;
    return container->_id < factory._containers.size() &&
           factory._containers[container->_id] == container;
}

// A dying container releases others, which die, and so on: a chain of a million nested groups must
// not become a million nested calls. So what is released on the way waits until the outermost call
// comes to it. The list lives in that call's frame, because static objects may release containers
// after a thread's own objects are gone.
void FieldContainer::destroy(FieldContainer* container) {
    static thread_local std::vector<FieldContainer*>* waiting = nullptr;

    container->_dying = true;
    FieldContainerFactory::the()->removeContainer(container->_id);
    if (waiting != nullptr) {
        waiting->push_back(container);
        return;
    }

    std::vector<FieldContainer*> list(1, container);
    waiting = &list;
    while (!list.empty()) {
        FieldContainer* const next = list.back();
        list.pop_back();
        next->onDestroy();
        delete next;
    }
    waiting = nullptr;
}

std::ostream& detail::printPointer(std::ostream& stream, const Char8* pointerClass,
                                   const FieldContainerPtrBase& pointer) {
    const void* const variable = &pointer;
    stream << std::dec << pointerClass << " 0x" << variable << ":";
    if (pointer == NullFC) return stream << "NullFC";
    const void* const object = pointer._object;
    return stream << pointer._object->getType().getCName() << "Ptr(0x" << object << ")";
}

void detail::pointerToText(const FieldContainerPtrBase& pointer, std::string& text) {
    if (pointer == NullFC) {
        text = "(nil)";
        return;
    }
    Char8 address[32];
    std::snprintf(address, sizeof(address), "%p", static_cast<void*>(pointer._object));
    text = address;
}

std::ostream& operator<<(std::ostream& stream, const NullFieldContainerPtr& pointer) {
    return detail::printPointer(stream, "NullFieldContainerPtr", pointer);
}

std::ostream& operator<<(std::ostream& stream, const FieldContainerPtr& pointer) {
    return detail::printPointer(stream, "FieldContainerPtr", pointer);
}

// These two print the word of nodes, as OpenSG does.
std::ostream& operator<<(std::ostream& stream, const AttachmentContainerPtr& pointer) {
    return detail::printPointer(stream, "NodePtr", pointer);
}

std::ostream& operator<<(std::ostream& stream, const AttachmentPtr& pointer) {
    return detail::printPointer(stream, "NodePtr", pointer);
}

std::ostream& operator<<(std::ostream& stream, const NodePtr& pointer) {
    return detail::printPointer(stream, "NodePtr", pointer);
}

} // namespace osg
