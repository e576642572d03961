#pragma once

/// @file
/// The base of everything that lives in a scene, and the macros that its classes are made with.

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGBaseTypeTraits.h>
#include <OpenSG/OSGBinaryDataHandler.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGFieldDescription.h>
#include <OpenSG/OSGPointerClasses.h>

namespace osg {

/// Masks that are no single field's.
struct FieldBits {
    static constexpr BitVector NoField = 0;
    static constexpr BitVector AllFields = ~BitVector(0);
};

/// Who changed a container, as its `changed` is told.
struct ChangedOrigin {
    enum Values : UInt32 {
        External = 0x0001, ///< the program
        Sync = 0x0002,     ///< another thread's copy
        Child = 0x0004,    ///< something below
        Abstract = 0x0008, ///< a file reader that filled fields without counting references
        AbstrIgnoreCore = 0x0100,
        AbstrIgnoreChild = 0x0200,
        AbstrCheckValid = 0x0400,
        AbstrIncRefCount = 0x0800 ///< with Abstract: back pointers were filled too, only count
    };
};

/// A container of fields with a type, a number and a reference count.
///
/// Containers are created by the static `create()` of their class, start with count 0, and are
/// destroyed by the subRefCP that takes the count to 0 or below. They are never on the stack.
///
/// Destruction does not recurse: what a dying container releases is destroyed after it, still
/// before the outermost subRefCP returns. From the moment the count reaches 0 the factory does not
/// find the container any more.
class FieldContainer {
  public:
    typedef FieldContainerPtr Ptr;
    enum { NextFieldId = 1 };

    static FieldContainerType& getClassType() { return _type; }
    static UInt32 getClassTypeId() { return _type.getId(); }
    static UInt16 getClassGroupId() { return _type.getGroupId(); }

    virtual FieldContainerType& getType() = 0;
    virtual const FieldContainerType& getType() const = 0;
    UInt32 getTypeId() const { return getType().getId(); }
    UInt16 getGroupId() const { return getType().getGroupId(); }
    const Char8* getTypeName() const { return getType().getCName(); }

    /// Null when there is no such field. Numbers are field ids.
    Field* getField(UInt32 fieldId);
    Field* getField(const Char8* fieldName);

    /// The size of the object in bytes.
    virtual UInt32 getContainerSize() const = 0;

    /// A new container with the same field values, reference count 0. Pointers in fields are copied
    /// as they are.
    virtual FieldContainerPtr shallowCopy() const = 0;

    /// Called at the end of every edit. Here containers react to what was written to their fields.
    virtual void changed([[maybe_unused]] BitVector whichField, [[maybe_unused]] UInt32 origin) {}

    /// The binary form of the fields of a mask: how long it is, writing it, reading it.
    virtual UInt32 getBinSize(const BitVector& whichField);
    virtual void copyToBin(BinaryDataHandler& memory, const BitVector& whichField);
    virtual void copyFromBin(BinaryDataHandler& memory, const BitVector& whichField);

    /// Writes the contents to the log, for debugging.
    virtual void dump(UInt32 indent = 0, const BitVector flags = 0) const = 0;

    FieldContainer& operator=(const FieldContainer&) = delete;

  protected:
    FieldContainer();
    /// A copy is a container of its own: new number, count 0.
    FieldContainer(const FieldContainer& source);
    virtual ~FieldContainer();

    /// Called once after construction, with the object that was copied or null. Not virtual: the
    /// class that is created is asked.
    void onCreate(const FieldContainer* source = nullptr);
    /// Called once before destruction. Overriders end with the inherited one.
    virtual void onDestroy();

    /// Copies the fields of the mask from another copy of the container.
    virtual void executeSync(FieldContainer& other, const BitVector& whichField) = 0;
    void executeSyncImpl(FieldContainer* other, const BitVector& whichField);

    /// Makes a default-built object, or a copy.
    template <class P>
    static void newPtr(P& result) {
        typedef typename P::ObjectType Object;
        Object* object = new Object;
        object->onCreate();
        result = P(object);
    }
    template <class P>
    static void newPtr(P& result, const typename P::ObjectType* source) {
        typedef typename P::ObjectType Object;
        Object* object = new Object(*source);
        object->onCreate(source);
        result = P(object);
    }

  private:
    friend class FieldContainerPtrBase;
    friend class FieldContainerFactory;
    friend class FieldContainerType;
    friend void addRefCP(const FieldContainerPtrBase&);
    friend void subRefCP(const FieldContainerPtrBase&);
    friend UInt32 getContainerId(const FieldContainerPtrBase&);

    /// Whether the address is that of a container that was not destroyed; for assertions.
    static bool isKnown(const FieldContainer* container);

    /// getField where the index of a field is not its id.
    Field* searchField(UInt32 fieldId);

    /// Destroys the container and everything that loses its last reference by that.
    static void destroy(FieldContainer* container);

    static FieldContainerType _type;

    UInt32 _id;
    Int32 _refCount = 0;
    bool _dying = false;
};

inline Field* FieldDescription::getField(FieldContainer& container) const {
    if (_place != 0) return reinterpret_cast<Field*>(reinterpret_cast<Char8*>(&container) + _place);
    return _access == nullptr ? nullptr : (container.*_access)();
}

inline Field* FieldContainer::getField(UInt32 fieldId) {
    // Ids are numbered without gaps as a rule, so that the index is the id.
    const FieldDescription* const desc = getType().getFieldDescription(fieldId);
    if (desc != nullptr && desc->getFieldId() == fieldId) return desc->getField(*this);
    return searchField(fieldId);
}

inline Int32 FieldContainerPtrBase::getRefCount() const {
    return _object == nullptr ? 0 : _object->_refCount;
}

inline UInt32 FieldContainerPtrBase::getFieldContainerId() const {
    return checked()->_id;
}

inline UInt32 getContainerId(const FieldContainerPtrBase& pointer) {
    return pointer.getFieldContainerId();
}

inline void addRefCP(const FieldContainerPtrBase& pointer) {
    if (pointer._object == nullptr) return;
    assert(FieldContainer::isKnown(pointer._object) && "a destroyed container is counted");
    ++pointer._object->_refCount;
}

inline void subRefCP(const FieldContainerPtrBase& pointer) {
    FieldContainer* const object = pointer._object;
    if (object == nullptr) return;
    assert(FieldContainer::isKnown(object) && "a destroyed container is released");
    if (--object->_refCount > 0 || object->_dying) return;
    // The variable may be part of what is destroyed, so it is cleared first.
    pointer._object = nullptr;
    FieldContainer::destroy(object);
}

/// Opens an edit. Nothing has to be done here; call it for the sake of other builds.
inline void beginEditCP(const FieldContainerPtr&, BitVector = FieldBits::AllFields,
                        UInt32 = ChangedOrigin::External) {}

/// Tells a container that the fields of the mask were changed. Nothing for null.
inline void changedCP(const FieldContainerPtr& pointer, BitVector mask = FieldBits::AllFields,
                      UInt32 origin = ChangedOrigin::External) {
    if (pointer != NullFC) pointer->changed(mask, origin);
}

/// Ends an edit: the container is told. Mask and origin are those of beginEditCP.
inline void endEditCP(const FieldContainerPtr& pointer, BitVector mask = FieldBits::AllFields,
                      UInt32 origin = ChangedOrigin::External) {
    changedCP(pointer, mask, origin);
}

/// Ends an edit that changed nothing: the container is not told.
inline void endEditNotChangedCP(const FieldContainerPtr&, BitVector = FieldBits::AllFields,
                                UInt32 = ChangedOrigin::External) {}

/// An edit for as long as the object lives.
class CPEditor {
  public:
    explicit CPEditor(const FieldContainerPtr& pointer, BitVector mask = FieldBits::AllFields,
                      UInt32 origin = ChangedOrigin::External)
        : _pointer(pointer), _mask(mask), _origin(origin) {
        beginEditCP(_pointer, _mask, _origin);
    }
    ~CPEditor() { endEditCP(_pointer, _mask, _origin); }

    CPEditor(const CPEditor&) = delete;
    CPEditor& operator=(const CPEditor&) = delete;

  private:
    FieldContainerPtr _pointer;
    BitVector _mask;
    UInt32 _origin;
};

} // namespace osg

#define OSG_CONCAT_EXPANDED(A, B) A##B
#define OSG_CONCAT(A, B) OSG_CONCAT_EXPANDED(A, B)
/// An edit of the container until the end of the block.
#define CPEdit(POINTER, MASK) osg::CPEditor OSG_CONCAT(osgEditOfLine, __LINE__)(POINTER, MASK)
#define CPEditAll(POINTER) CPEdit(POINTER, osg::FieldBits::AllFields)

// Classes may write `override` at their other functions or not; the macros cannot follow both.
#if defined(__clang__)
#define OSG_ANY_OVERRIDE_BEGIN                                                                     \
    _Pragma("clang diagnostic push")                                                               \
        _Pragma("clang diagnostic ignored \"-Winconsistent-missing-override\"")
#define OSG_ANY_OVERRIDE_END _Pragma("clang diagnostic pop")
#else
#define OSG_ANY_OVERRIDE_BEGIN
#define OSG_ANY_OVERRIDE_END
#endif

/// In the class of a container: its type and its creation. `_type` is a static member of the class.
#define OSG_FIELD_CONTAINER_DECL(PTR)                                                              \
    OSG_ABSTR_FIELD_CONTAINER_DECL(PTR)                                                            \
    static PTR create(void);                                                                       \
    static PTR createEmpty(void);                                                                  \
    OSG_ANY_OVERRIDE_BEGIN                                                                         \
    virtual osg::FieldContainerPtr shallowCopy(void) const;                                        \
    OSG_ANY_OVERRIDE_END

/// The same for a class of which no objects are made.
#define OSG_ABSTR_FIELD_CONTAINER_DECL(PTR)                                                        \
    static osg::FieldContainerType& getClassType(void);                                            \
    static osg::UInt32 getClassTypeId(void);                                                       \
    static osg::UInt16 getClassGroupId(void);                                                      \
    OSG_ANY_OVERRIDE_BEGIN                                                                         \
    virtual osg::FieldContainerType& getType(void);                                                \
    virtual const osg::FieldContainerType& getType(void) const;                                    \
    virtual osg::UInt32 getContainerSize(void) const;                                              \
    OSG_ANY_OVERRIDE_END

/// After the class, in its header: the inline part.
#define OSG_FIELD_CONTAINER_INL_DEF(CLASS, PTR)                                                    \
    OSG_ABSTR_FIELD_CONTAINER_INL_DEF(CLASS, PTR)                                                  \
    inline PTR CLASS::create(void) {                                                               \
        /* Before osgInit the type may not even be constructed. */                                 \
        if (osg::GlobalSystemState != osg::Running) return osg::NullFC;                            \
        return PTR::dcast(getClassType().createFieldContainer());                                  \
    }                                                                                              \
    inline PTR CLASS::createEmpty(void) {                                                          \
        PTR result;                                                                                \
        newPtr(result);                                                                            \
        return result;                                                                             \
    }

#define OSG_ABSTR_FIELD_CONTAINER_INL_DEF(CLASS, PTR)                                              \
    inline osg::FieldContainerType& CLASS::getClassType(void) {                                    \
        return _type;                                                                              \
    }                                                                                              \
    inline osg::UInt32 CLASS::getClassTypeId(void) {                                               \
        return _type.getId();                                                                      \
    }                                                                                              \
    inline osg::UInt16 CLASS::getClassGroupId(void) {                                              \
        return _type.getGroupId();                                                                 \
    }

/// In one source file: the rest.
#define OSG_FIELD_CONTAINER_DEF(CLASS, PTR)                                                        \
    OSG_ABSTR_FIELD_CONTAINER_DEF(CLASS, PTR)                                                      \
    osg::FieldContainerPtr CLASS::shallowCopy(void) const {                                        \
        PTR result;                                                                                \
        newPtr(result, static_cast<const PTR::ObjectType*>(this));                                 \
        return result;                                                                             \
    }

#define OSG_ABSTR_FIELD_CONTAINER_DEF(CLASS, PTR)                                                  \
    osg::FieldContainerType& CLASS::getType(void) {                                                \
        return _type;                                                                              \
    }                                                                                              \
    const osg::FieldContainerType& CLASS::getType(void) const {                                    \
        return _type;                                                                              \
    }                                                                                              \
    osg::UInt32 CLASS::getContainerSize(void) const {                                              \
        return static_cast<osg::UInt32>(sizeof(CLASS));                                            \
    }
