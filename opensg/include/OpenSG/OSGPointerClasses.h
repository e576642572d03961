#pragma once

/// @file
/// The pointer classes, without the containers that they point at. Include the container's header
/// (OSGNode.h) or OSGFieldContainerPtr.h instead of this one.

#include <OpenSG/OSGBaseTypes.h>

#include <cassert>
#include <functional>
#include <ostream>
#include <string>
#include <typeinfo>

namespace osg {

class FieldContainer;
class AttachmentContainer;
class Attachment;
class Node;
class NodeCore;

class FieldContainerPtrBase;

namespace detail {

std::ostream& printPointer(std::ostream& stream, const Char8* pointerClass,
                           const FieldContainerPtrBase& pointer);

/// The pointer as a field shows it: an address, or `(nil)`.
void pointerToText(const FieldContainerPtrBase& pointer, std::string& text);

} // namespace detail

/// One reference more; nothing for null.
inline void addRefCP(const FieldContainerPtrBase& pointer);

/// One reference less. When none is left the container is destroyed, and `pointer` is set to null
/// first; other copies dangle. Nothing for null.
inline void subRefCP(const FieldContainerPtrBase& pointer);

/// The part that all pointer classes share: one address.
///
/// Pointers are small values. They do not count references, and copying or destroying one touches
/// nothing else, so they may outlive the containers as long as nobody uses them.
class FieldContainerPtrBase {
  public:
    typedef FieldContainer ObjectType;

    FieldContainerPtrBase() = default;

    /// 0 for null.
    inline Int32 getRefCount() const;
    /// The container's number. Not allowed on null.
    inline UInt32 getFieldContainerId() const;

    explicit operator bool() const { return _object != nullptr; }
    bool operator!() const { return _object == nullptr; }

    bool operator==(const FieldContainerPtrBase& other) const { return _object == other._object; }
    bool operator!=(const FieldContainerPtrBase& other) const { return _object != other._object; }
    bool operator<(const FieldContainerPtrBase& other) const {
        return std::less<const FieldContainer*>()(_object, other._object);
    }

  protected:
    explicit FieldContainerPtrBase(FieldContainer* object) : _object(object) {}

    /// Stops a debug build where a null pointer is used.
    FieldContainer* checked() const {
        assert(_object != nullptr && "a null pointer to a field container is used");
        return _object;
    }

    static FieldContainer* objectOf(const FieldContainerPtrBase& pointer) {
        return pointer._object;
    }

  private:
    friend void subRefCP(const FieldContainerPtrBase&);
    friend void addRefCP(const FieldContainerPtrBase&);
    friend std::ostream& detail::printPointer(std::ostream&, const Char8*,
                                              const FieldContainerPtrBase&);
    friend void detail::pointerToText(const FieldContainerPtrBase&, std::string&);
    friend class FieldContainer;

    /// Mutable because subRefCP clears the variable that it is given, whatever its constness.
    mutable FieldContainer* _object = nullptr;
};

/// The type of `NullFC`.
class NullFieldContainerPtr : public FieldContainerPtrBase {
  public:
    NullFieldContainerPtr() = default;
};

/// The null pointer to containers of any type.
const NullFieldContainerPtr NullFC;

/// Points at a container of any type.
class FieldContainerPtr : public FieldContainerPtrBase {
  public:
    typedef FieldContainer ObjectType;

    FieldContainerPtr() = default;
    FieldContainerPtr(const NullFieldContainerPtr&) {}

    static FieldContainerPtr dcast(const FieldContainerPtrBase& other) {
        return FieldContainerPtr(objectOf(other));
    }

    FieldContainer* operator->() const { return checked(); }
    FieldContainer& operator*() const { return *checked(); }
    /// The object itself, a null pointer for null.
    FieldContainer* getCPtr() const { return objectOf(*this); }

  protected:
    explicit FieldContainerPtr(FieldContainer* object) : FieldContainerPtrBase(object) {}

    friend class FieldContainer;
    friend class FieldContainerFactory;
};

/// Points at a container that can carry attachments.
class AttachmentContainerPtr : public FieldContainerPtr {
  public:
    typedef AttachmentContainer ObjectType;

    AttachmentContainerPtr() = default;
    AttachmentContainerPtr(const NullFieldContainerPtr&) {}
    inline explicit AttachmentContainerPtr(const AttachmentContainer* object);
    inline explicit AttachmentContainerPtr(const AttachmentContainer& object);

    /// Null when the other one is null or points at a container of another type.
    static inline AttachmentContainerPtr dcast(const FieldContainerPtrBase& other);

    inline AttachmentContainer* operator->() const;
    inline AttachmentContainer& operator*() const;
    inline AttachmentContainer* getCPtr() const;

  protected:
    explicit AttachmentContainerPtr(FieldContainer* object) : FieldContainerPtr(object) {}
};

/// Points at an attachment.
class AttachmentPtr : public FieldContainerPtr {
  public:
    typedef Attachment ObjectType;

    AttachmentPtr() = default;
    AttachmentPtr(const NullFieldContainerPtr&) {}
    inline explicit AttachmentPtr(const Attachment* object);
    inline explicit AttachmentPtr(const Attachment& object);

    /// Null when the other one is null or points at a container of another type.
    static inline AttachmentPtr dcast(const FieldContainerPtrBase& other);

    inline Attachment* operator->() const;
    inline Attachment& operator*() const;
    inline Attachment* getCPtr() const;

  protected:
    explicit AttachmentPtr(FieldContainer* object) : FieldContainerPtr(object) {}
};

/// Points at a node.
class NodePtr : public AttachmentContainerPtr {
  public:
    typedef Node ObjectType;

    NodePtr() = default;
    NodePtr(const NullFieldContainerPtr&) {}
    inline explicit NodePtr(const Node* object);
    inline explicit NodePtr(const Node& object);

    /// Null when the other one is null or points at a container of another type.
    static inline NodePtr dcast(const FieldContainerPtrBase& other);

    inline Node* operator->() const;
    inline Node& operator*() const;
    inline Node* getCPtr() const;
    /// The core itself, a null pointer when the node has none. Not allowed on null.
    inline NodeCore* getCore() const;

  protected:
    explicit NodePtr(FieldContainer* object) : AttachmentContainerPtr(object) {}
};

namespace detail {

/// A dynamic_cast that is quick when the object is of exactly the type asked for.
template <class T, class Object>
T* castContainer(Object* object) {
    if (object == nullptr) return nullptr;
    if (typeid(*object) == typeid(T)) return static_cast<T*>(object);
    return dynamic_cast<T*>(object);
}

} // namespace detail

/// Points at a T. `BasePtrT` is the pointer class of the container class that T derives from.
template <class BasePtrT, class T>
class FCPtr : public BasePtrT {
  public:
    typedef T ObjectType;

    FCPtr() = default;
    FCPtr(const NullFieldContainerPtr&) {}
    explicit FCPtr(const T* object) : BasePtrT(asContainer(object)) {}
    explicit FCPtr(const T& object) : BasePtrT(asContainer(&object)) {}

    /// Null when the other one is null or points at a container of another type.
    static FCPtr dcast(const FieldContainerPtrBase& other) {
        return FCPtr(static_cast<FieldContainer*>(
            detail::castContainer<T>(FieldContainerPtrBase::objectOf(other))));
    }

    T* operator->() const { return static_cast<T*>(this->checked()); }
    T& operator*() const { return *static_cast<T*>(this->checked()); }
    /// The object itself, a null pointer for null.
    T* getCPtr() const { return static_cast<T*>(FieldContainerPtrBase::objectOf(*this)); }

  protected:
    explicit FCPtr(FieldContainer* object) : BasePtrT(object) {}

  private:
    /// Pointers do not carry constness: what they point at may always be changed.
    static FieldContainer* asContainer(const T* object) { return const_cast<T*>(object); }
};

typedef FCPtr<AttachmentContainerPtr, NodeCore> NodeCorePtr;

/// The object itself, a null pointer for null.
template <class P>
inline typename P::ObjectType* getCPtr(const P& pointer) {
    return pointer.getCPtr();
}

/// The container's number. Not allowed on null.
inline UInt32 getContainerId(const FieldContainerPtrBase& pointer);

/// The same as addRefCP and subRefCP.
template <class P>
inline void addRef(const P& pointer) {
    addRefCP(pointer);
}
template <class P>
inline void subRef(const P& pointer) {
    subRefCP(pointer);
}

/// subRefCP, after which the variable is null in every case.
template <class P>
inline void clearRefCP(P& pointer) {
    subRefCP(pointer);
    pointer = NullFC;
}

/// Makes a counted variable point at something else: releases what it pointed at and counts the
/// new one. The new one is counted first, so that it survives when the old one owned it.
template <class P, class Q>
inline void setRefdCP(P& pointer, const Q& replacement) {
    if (pointer == replacement) return;
    const P next = replacement;
    const P previous = pointer;
    addRefCP(next);
    pointer = next;
    subRefCP(previous);
}

/// `<pointer class> 0x<address of the variable>:<type>Ptr(0x<address of the object>)`, or `NullFC`
/// after the colon. The text of one pointer differs from variable to variable.
std::ostream& operator<<(std::ostream& stream, const NullFieldContainerPtr& pointer);
std::ostream& operator<<(std::ostream& stream, const FieldContainerPtr& pointer);
std::ostream& operator<<(std::ostream& stream, const AttachmentContainerPtr& pointer);
std::ostream& operator<<(std::ostream& stream, const AttachmentPtr& pointer);
std::ostream& operator<<(std::ostream& stream, const NodePtr& pointer);
template <class BasePtrT, class T>
inline std::ostream& operator<<(std::ostream& stream, const FCPtr<BasePtrT, T>& pointer) {
    return detail::printPointer(stream, "FCPtr", pointer);
}

} // namespace osg
