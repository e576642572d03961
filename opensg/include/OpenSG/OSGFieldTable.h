#pragma once

/// @file
/// The repetitive half of a container class, made from one table of its fields.
///
/// A class comes as a pair. `XBase` has all that follows from the fields: ids, masks, accessors,
/// descriptions, the type, copying, the binary form, the counting of references. `X` derives from
/// it and adds what the class does:
///
///     #define OSG_SWITCH_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)
///         VALUE(SFInt32, Choice, "choice", -1)
///
///     OSG_TABLE_BASE(Switch, Group, OSG_SWITCH_FIELDS)
///
///     class Switch : public SwitchBase {
///         OSG_TABLE_MEMBERS(Switch)
///       public:
///         enum { ALL = -2, NONE = -1 };
///     };
///
///     OSG_TABLE_INLINE(Switch)
///
/// and `OSG_TABLE_DEF(Switch, Group, OSG_SWITCH_FIELDS)` in one source file. The order of the rows
/// is the order of the field ids, going on from those of the parent. The rows:
///
/// - `VALUE(SFReal32, Near, "near", 0.1f)`: a value, or a pointer that is not counted. The last
///   entry is the value of a new container; without it the value is 0, false or null.
///   Makes `getNear`, `editNear`, `setNear`, `getSFNear`, `editSFNear`.
/// - `POINTER(SFMaterialPtr, Material, "material")`: the same for a pointer that is counted.
/// - `LIST(MFInt32, Slots, "slots")`: values. Makes `getSlots` (the field, or one element by
///   index), `editSlots`, `getMFSlots`, `editMFSlots`.
/// - `POINTERS(MFStateChunkPtr, Chunks, "chunks")`: the same for pointers that are counted. The
///   field's own functions count nothing, so `X` adds functions that do.
/// - `HIDDEN(SFInt32, Id, "id")`: a value that files never hold.
///
/// References: setters count, at once or when a file reader that did not count ends its edit
/// (ChangedOrigin::Abstract); a copy of a container counts once; all are released on destruction.
/// An attachment that is held by a counted pointer has its holder among its parents.

#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGMFMathTypes.h>
#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGNodeFields.h>
#include <OpenSG/OSGPointerFieldForms.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFMathTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>

#include <iterator>
#include <type_traits>

namespace osg {

namespace detail {

/// What a row says behind the member's name: the field's name and maybe the first value.
template <class FieldT>
FieldT initialField(const Char8*) {
    return FieldT();
}
template <class FieldT>
FieldT initialField(const Char8*, const typename FieldT::StoredType& value) {
    return FieldT(value);
}
inline const Char8* rowName(const Char8* name) {
    return name;
}
template <class T>
const Char8* rowName(const Char8* name, const T&) {
    return name;
}

/// Counts a pointer that `owner` holds from now on.
template <class P>
void acquire(FieldContainer& owner, const P& pointer) {
    if (pointer == NullFC) return;
    addRefCP(pointer);
    if constexpr (std::is_base_of<AttachmentPtr, P>::value) {
        if (AttachmentContainer* holder = dynamic_cast<AttachmentContainer*>(&owner))
            pointer->addParent(AttachmentContainerPtr(holder));
    }
}

/// The opposite. Takes a copy, since what is released last may take the field with it.
template <class P>
void release(FieldContainer& owner, P pointer) {
    if (pointer == NullFC) return;
    if constexpr (std::is_base_of<AttachmentPtr, P>::value) {
        if (AttachmentContainer* holder = dynamic_cast<AttachmentContainer*>(&owner))
            pointer->subParent(AttachmentContainerPtr(holder));
    }
    subRefCP(pointer);
}

/// The new pointer is stored before the old one is released: releasing may destroy a whole
/// subgraph.
template <class P, Int32 ns>
void assignCounted(FieldContainer& owner, SField<P, ns>& field, const P& value) {
    const P previous = field.getValue();
    if (previous == value) return;
    acquire(owner, value);
    field.setValue(value);
    release(owner, previous);
}

template <class P, Int32 ns>
void acquireAll(FieldContainer& owner, SField<P, ns>& field) {
    acquire(owner, field.getValue());
}
template <class P, Int32 ns>
void acquireAll(FieldContainer& owner, MField<P, ns>& field) {
    for (const P& pointer : field)
        acquire(owner, pointer);
}

/// For pointers that a reader put into the field. One that filled the parents of attachments as
/// well wants them counted only.
template <class FieldT>
void acquireRead(FieldContainer& owner, FieldT& field, UInt32 origin) {
    if ((origin & ChangedOrigin::AbstrIncRefCount) == 0) {
        acquireAll(owner, field);
    } else if constexpr (std::is_base_of<SFFieldContainerPtr, FieldT>::value) {
        addRefCP(field.getValue());
    } else {
        for (const auto& pointer : field)
            addRefCP(pointer);
    }
}

template <class P, Int32 ns>
void releaseAll(FieldContainer& owner, SField<P, ns>& field) {
    assignCounted(owner, field, P());
}
template <class P, Int32 ns>
void releaseAll(FieldContainer& owner, MField<P, ns>& field) {
    while (!field.empty()) {
        const P last = field.back();
        field.pop_back();
        release(owner, last);
    }
}

} // namespace detail

} // namespace osg

// --- what one row turns into ---------------------------------------------------------------------

#define OSG_ROW_NOTHING(...)

#define OSG_ROW_ID(FIELD, NAME, ...) NAME##FieldId,

#define OSG_ROW_MASK(FIELD, NAME, ...)                                                             \
    static constexpr BitVector NAME##FieldMask = BitVector(1) << NAME##FieldId;

#define OSG_ROW_READ(FIELD, NAME)                                                                  \
    const FIELD::StoredType& get##NAME(void) const {                                               \
        return _sf##NAME.getValue();                                                               \
    }                                                                                              \
    FIELD::StoredType& get##NAME(void) {                                                           \
        return _sf##NAME.getValue();                                                               \
    }                                                                                              \
    FIELD::StoredType& edit##NAME(void) {                                                          \
        return _sf##NAME.getValue();                                                               \
    }                                                                                              \
    FIELD* getSF##NAME(void) {                                                                     \
        return &_sf##NAME;                                                                         \
    }                                                                                              \
    const FIELD* getSF##NAME(void) const {                                                         \
        return &_sf##NAME;                                                                         \
    }                                                                                              \
    FIELD* editSF##NAME(void) {                                                                    \
        return &_sf##NAME;                                                                         \
    }

#define OSG_ROW_VALUE(FIELD, NAME, ...)                                                            \
    OSG_ROW_READ(FIELD, NAME)                                                                      \
    void set##NAME(const FIELD::StoredType& value) {                                               \
        _sf##NAME.setValue(value);                                                                 \
    }

#define OSG_ROW_POINTER(FIELD, NAME, ...)                                                          \
    OSG_ROW_READ(FIELD, NAME)                                                                      \
    void set##NAME(const FIELD::StoredType& value) {                                               \
        detail::assignCounted(*this, _sf##NAME, value);                                            \
    }

#define OSG_ROW_LIST(FIELD, NAME, ...)                                                             \
    FIELD& get##NAME(void) {                                                                       \
        return _mf##NAME;                                                                          \
    }                                                                                              \
    const FIELD& get##NAME(void) const {                                                           \
        return _mf##NAME;                                                                          \
    }                                                                                              \
    FIELD::reference get##NAME(UInt32 index) {                                                     \
        return _mf##NAME[index];                                                                   \
    }                                                                                              \
    FIELD::const_reference get##NAME(UInt32 index) const {                                         \
        return _mf##NAME[index];                                                                   \
    }                                                                                              \
    FIELD& edit##NAME(void) {                                                                      \
        return _mf##NAME;                                                                          \
    }                                                                                              \
    FIELD::reference edit##NAME(UInt32 index) {                                                    \
        return _mf##NAME[index];                                                                   \
    }                                                                                              \
    FIELD* getMF##NAME(void) {                                                                     \
        return &_mf##NAME;                                                                         \
    }                                                                                              \
    const FIELD* getMF##NAME(void) const {                                                         \
        return &_mf##NAME;                                                                         \
    }                                                                                              \
    FIELD* editMF##NAME(void) {                                                                    \
        return &_mf##NAME;                                                                         \
    }

#define OSG_ROW_MEMBER(FIELD, NAME, ...)                                                           \
    FIELD _sf##NAME = detail::initialField<FIELD>(__VA_ARGS__);                                    \
    /* Virtual for classes that must know when a field is asked for. */                            \
    virtual Field* field##NAME(void) {                                                             \
        return &_sf##NAME;                                                                         \
    }
#define OSG_ROW_LIST_MEMBER(FIELD, NAME, ...)                                                      \
    FIELD _mf##NAME;                                                                               \
    Field* field##NAME(void) {                                                                     \
        return &_mf##NAME;                                                                         \
    }

#define OSG_ROW_COPY(FIELD, NAME, ...) , _sf##NAME(source._sf##NAME)
#define OSG_ROW_LIST_COPY(FIELD, NAME, ...) , _mf##NAME(source._mf##NAME)

#define OSG_ROW_VISIT(FIELD, NAME, ...)                                                            \
    if ((whichField & NAME##FieldMask) != 0) visit(&Self::_sf##NAME);
#define OSG_ROW_LIST_VISIT(FIELD, NAME, ...)                                                       \
    if ((whichField & NAME##FieldMask) != 0) visit(&Self::_mf##NAME);

#define OSG_ROW_DESCRIPTION_AS(INTERNAL, IS_MEMBER, FIELD, NAME, ...)                              \
    new FieldDescription(FIELD::getClassType(), detail::rowName(__VA_ARGS__), NAME##FieldId,       \
                         NAME##FieldMask, INTERNAL,                                                \
                         static_cast<FieldAccessMethod>(&Self::field##NAME), nullptr, IS_MEMBER),
#define OSG_ROW_DESCRIPTION(...) OSG_ROW_DESCRIPTION_AS(false, true, __VA_ARGS__)
#define OSG_ROW_HIDDEN_DESCRIPTION(...) OSG_ROW_DESCRIPTION_AS(true, true, __VA_ARGS__)
/// The class overrides the access, because it must know when the field is asked for.
#define OSG_ROW_WATCHED_DESCRIPTION(...) OSG_ROW_DESCRIPTION_AS(false, false, __VA_ARGS__)

// --- the classes ---------------------------------------------------------------------------------

/// Declares `CLASSBase`. `CLASSPtr` is known already.
#define OSG_TABLE_BASE(CLASS, PARENT, FIELDS)                                                      \
    OSG_TABLE_BASE_WITH(CLASS, PARENT, FIELDS, OSG_FIELD_CONTAINER_DECL)

/// The same for a class of which no objects are made.
#define OSG_ABSTR_TABLE_BASE(CLASS, PARENT, FIELDS)                                                \
    OSG_TABLE_BASE_WITH(CLASS, PARENT, FIELDS, OSG_ABSTR_FIELD_CONTAINER_DECL)

#define OSG_TABLE_BASE_WITH(CLASS, PARENT, FIELDS, DECL)                                           \
    class CLASS##Base : public PARENT {                                                            \
        typedef PARENT Inherited;                                                                  \
        typedef CLASS##Base Self;                                                                  \
                                                                                                   \
      public:                                                                                      \
        typedef CLASS##Ptr Ptr;                                                                    \
        enum {                                                                                     \
            BeforeFieldsOf##CLASS = Inherited::NextFieldId - 1,                                    \
            FIELDS(OSG_ROW_ID, OSG_ROW_ID, OSG_ROW_ID, OSG_ROW_ID, OSG_ROW_ID) NextFieldId         \
        };                                                                                         \
        FIELDS(OSG_ROW_MASK, OSG_ROW_MASK, OSG_ROW_MASK, OSG_ROW_MASK, OSG_ROW_MASK)               \
        DECL(CLASS##Ptr)                                                                           \
                                                                                                   \
        FIELDS(OSG_ROW_VALUE, OSG_ROW_POINTER, OSG_ROW_LIST, OSG_ROW_LIST, OSG_ROW_VALUE)          \
                                                                                                   \
        /** Inline all the way down: a tick ends an edit for every number that it writes. */       \
        void changed(BitVector whichField, UInt32 origin) override {                               \
            if ((origin & ChangedOrigin::Abstract) != 0) countRead(whichField, origin);            \
            Inherited::changed(whichField, origin);                                                \
        }                                                                                          \
        UInt32 getBinSize(const BitVector& whichField) override;                                   \
        void copyToBin(BinaryDataHandler& memory, const BitVector& whichField) override;           \
        void copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) override;         \
                                                                                                   \
      protected:                                                                                   \
        FIELDS(OSG_ROW_MEMBER, OSG_ROW_MEMBER, OSG_ROW_LIST_MEMBER, OSG_ROW_LIST_MEMBER,           \
               OSG_ROW_MEMBER)                                                                     \
                                                                                                   \
        CLASS##Base() = default;                                                                   \
        CLASS##Base(const CLASS##Base& source)                                                     \
            : Inherited(source) FIELDS(OSG_ROW_COPY, OSG_ROW_COPY, OSG_ROW_LIST_COPY,              \
                                       OSG_ROW_LIST_COPY, OSG_ROW_COPY) {}                         \
        ~CLASS##Base() override = default;                                                         \
                                                                                                   \
        void onCreate(const CLASS##Base* source = nullptr);                                        \
        void onDestroy() override;                                                                 \
        void executeSync(FieldContainer& other, const BitVector& whichField) override;             \
        void executeSyncImpl(CLASS##Base* other, const BitVector& whichField);                     \
                                                                                                   \
      private:                                                                                     \
        friend class FieldContainer;                                                               \
                                                                                                   \
        /** Hands the fields of a mask, as pointers to members, to a function. */                  \
        template <class Visitor>                                                                   \
        static void eachField([[maybe_unused]] BitVector whichField,                               \
                              [[maybe_unused]] Visitor visit) {                                    \
            FIELDS(OSG_ROW_VISIT, OSG_ROW_VISIT, OSG_ROW_LIST_VISIT, OSG_ROW_LIST_VISIT,           \
                   OSG_ROW_VISIT)                                                                  \
        }                                                                                          \
        /** The same for those that are counted pointers. */                                       \
        template <class Visitor>                                                                   \
        static void eachCounted([[maybe_unused]] BitVector whichField,                             \
                                [[maybe_unused]] Visitor visit) {                                  \
            FIELDS(OSG_ROW_NOTHING, OSG_ROW_VISIT, OSG_ROW_NOTHING, OSG_ROW_LIST_VISIT,            \
                   OSG_ROW_NOTHING)                                                                \
        }                                                                                          \
                                                                                                   \
        /** Counts the pointers that a reader put into the fields. */                              \
        void countRead(BitVector whichField, UInt32 origin);                                       \
                                                                                                   \
        static FieldDescription* _desc[];                                                          \
        static FieldContainerType _type;                                                           \
    };

/// First in `class CLASS : public CLASSBase`; leaves the access at private.
#define OSG_TABLE_MEMBERS(CLASS)                                                                   \
    typedef CLASS##Base Inherited;                                                                 \
    friend class FieldContainer;                                                                   \
                                                                                                   \
  protected:                                                                                       \
    CLASS() = default;                                                                             \
    CLASS(const CLASS&) = default;                                                                 \
    ~CLASS() override = default;                                                                   \
                                                                                                   \
  private:

/// Behind the class, in namespace osg.
#define OSG_TABLE_INLINE(CLASS) OSG_FIELD_CONTAINER_INL_DEF(CLASS##Base, CLASS##Ptr)
#define OSG_ABSTR_TABLE_INLINE(CLASS) OSG_ABSTR_FIELD_CONTAINER_INL_DEF(CLASS##Base, CLASS##Ptr)

/// In one source file, in namespace osg.
#define OSG_TABLE_DEF(CLASS, PARENT, FIELDS)                                                       \
    OSG_TABLE_DEF_AS(CLASS, PARENT, FIELDS, OSG_ROW_DESCRIPTION)
/// The same for a class that overrides the access to its values.
#define OSG_WATCHED_TABLE_DEF(CLASS, PARENT, FIELDS)                                               \
    OSG_TABLE_DEF_AS(CLASS, PARENT, FIELDS, OSG_ROW_WATCHED_DESCRIPTION)
#define OSG_TABLE_DEF_AS(CLASS, PARENT, FIELDS, VALUE_DESCRIPTION)                                 \
    OSG_TABLE_DEF_WITH(                                                                            \
        CLASS, PARENT, FIELDS, [] { return FieldContainerPtr(CLASS::createEmpty()); },             \
        VALUE_DESCRIPTION)                                                                         \
    OSG_FIELD_CONTAINER_DEF(CLASS##Base, CLASS##Ptr)
#define OSG_ABSTR_TABLE_DEF(CLASS, PARENT, FIELDS)                                                 \
    OSG_TABLE_DEF_WITH(CLASS, PARENT, FIELDS, nullptr, OSG_ROW_DESCRIPTION)                        \
    OSG_ABSTR_FIELD_CONTAINER_DEF(CLASS##Base, CLASS##Ptr)

/// The list of descriptions ends with a null that is not counted, so that a table may be empty.
#define OSG_TABLE_DEF_WITH(CLASS, PARENT, FIELDS, CREATE_PROTOTYPE, VALUE_DESCRIPTION)             \
    FieldDescription* CLASS##Base::_desc[] = {FIELDS(VALUE_DESCRIPTION, OSG_ROW_DESCRIPTION,       \
                                                     OSG_ROW_DESCRIPTION, OSG_ROW_DESCRIPTION,     \
                                                     OSG_ROW_HIDDEN_DESCRIPTION) nullptr};         \
    FieldContainerType CLASS##Base::_type(                                                         \
        #CLASS, #PARENT, nullptr, CREATE_PROTOTYPE, nullptr, _desc,                                \
        static_cast<UInt32>((std::size(_desc) - 1) * sizeof(void*)));                              \
                                                                                                   \
    void CLASS##Base::countRead(BitVector whichField, [[maybe_unused]] UInt32 origin) {            \
        eachCounted(whichField,                                                                    \
                    [&](auto field) { detail::acquireRead(*this, this->*field, origin); });        \
    }                                                                                              \
    UInt32 CLASS##Base::getBinSize(const BitVector& whichField) {                                  \
        UInt32 size = Inherited::getBinSize(whichField);                                           \
        eachField(whichField, [&](auto field) { size += (this->*field).getBinSize(); });           \
        return size;                                                                               \
    }                                                                                              \
    void CLASS##Base::copyToBin(BinaryDataHandler& memory, const BitVector& whichField) {          \
        Inherited::copyToBin(memory, whichField);                                                  \
        eachField(whichField, [&](auto field) { (this->*field).copyToBin(memory); });              \
    }                                                                                              \
    void CLASS##Base::copyFromBin(BinaryDataHandler& memory, const BitVector& whichField) {        \
        Inherited::copyFromBin(memory, whichField);                                                \
        eachField(whichField, [&](auto field) { (this->*field).copyFromBin(memory); });            \
    }                                                                                              \
    void CLASS##Base::onCreate(const CLASS##Base* source) {                                        \
        Inherited::onCreate(source);                                                               \
        if (source == nullptr) return;                                                             \
        eachCounted(FieldBits::AllFields,                                                          \
                    [&](auto field) { detail::acquireAll(*this, this->*field); });                 \
    }                                                                                              \
    void CLASS##Base::onDestroy() {                                                                \
        eachCounted(FieldBits::AllFields,                                                          \
                    [&](auto field) { detail::releaseAll(*this, this->*field); });                 \
        Inherited::onDestroy();                                                                    \
    }                                                                                              \
    void CLASS##Base::executeSync(FieldContainer& other, const BitVector& whichField) {            \
        executeSyncImpl(static_cast<CLASS##Base*>(&other), whichField);                            \
    }                                                                                              \
    void CLASS##Base::executeSyncImpl(CLASS##Base* other, const BitVector& whichField) {           \
        Inherited::executeSyncImpl(other, whichField);                                             \
        eachField(whichField, [&](auto field) { (this->*field).syncWith(other->*field); });        \
    }

/// A table without rows.
#define OSG_NO_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)
