#pragma once

// clang-format off
/**
 * @file
 * A field container made from one table of its fields.
 *
 * OpenSG wants a long list of members from each container, all of which follow from its fields:
 * ids, masks, descriptions, accessors, the binary form, the copying between threads, and references
 * that are counted by the setters, by the readers and by copies, and released when the container is
 * destroyed. Here the fields are written down once and the rest follows:
 *
 *     class Cue;
 *     typedef FCPtr<AttachmentPtr, Cue> CuePtr;
 *
 *     #define KV_CUE_FIELDS(VALUE, VALUES, POINTER, LIST) \
 *         VALUE(SFString, Title, "title")                 \
 *         VALUES(MFReal32, Weights, "weights")            \
 *         POINTER(SFNodePtr, Target, "target")            \
 *         LIST(MFNotePtr, Note, Notes, "notes")
 *
 *     class Cue : public Attachment {
 *         KV_CONTAINER_DECL(Cue, Attachment, KV_CUE_FIELDS)
 *     };
 *     KV_CONTAINER_INLINE(Cue)
 *
 * and in one .cpp, inside namespace osg, `KV_CONTAINER_DEF(Cue, Attachment, KV_CUE_FIELDS)`.
 *
 * The order of the table is the order of the field ids and of the fields in a file. The text is the
 * name of the field in a file. The rows, and the members that each of them makes:
 *
 * - `VALUE(SFString, Title, "title")`: `getTitle`, `setTitle`, `getSFTitle`. A fourth entry is the
 *   value of a new container; without one it is zero, false or empty.
 * - `VALUES(MFReal32, Weights, "weights")`: `getWeights` (the field), `getMFWeights`.
 * - `POINTER(SFNodePtr, Target, "target")`: `getTarget`, `setTarget`, which counts the reference,
 *   `setTargetNoRefCount`, which only stores the pointer and leaves the counting of old and new value
 *   to the caller, `getSFTarget`.
 * - `LIST(MFNotePtr, Note, Notes, "notes")`: `getNotes` (the field, or one element by index),
 *   `getMFNotes`, `addNote` (null is ignored), `subNote` (the first one that is equal, or by index;
 *   false when there is none) and `clearNotes`, all counting.
 *
 * Every row also makes `TitleFieldId` and `TitleFieldMask`. Nothing opens an edit bracket by itself.
 *
 * References: a reader that works below the interface fills the fields without counting and ends its
 * edit with the origin `ChangedOrigin::Abstract`; `changed` then counts. OpenSG's reader of `.osb`
 * counts for itself and says `ChangedOrigin::External`. A copy counts once, on its creation, however
 * many threads have a copy of the fields.
 */
// clang-format on

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGFieldContainerPtr.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGFieldDescription.h>

#include "kvOpenSGExtApi.h"
#include "OSGLateReleases.h"

#include <algorithm>
#include <type_traits>
#include <utility>
#include <vector>

OSG_BEGIN_NAMESPACE

namespace kvtable {

/// The type of the value of a single field, and of an element of a multi field.
template <class SFieldT>
using ValueOf = std::decay_t<decltype(std::declval<SFieldT&>().getValue())>;
template <class MFieldT>
using ElementOf = std::decay_t<decltype(std::declval<MFieldT&>()[0])>;

/// What a row says behind the member's name: the field's name in files and, if it is there, the
/// value of a new container.
template <class SFieldT>
SFieldT initialField(const Char8*) {
    return SFieldT();
}
template <class SFieldT>
SFieldT initialField(const Char8*, const ValueOf<SFieldT>& value) {
    return SFieldT(value);
}
inline const Char8* fieldName(const Char8* name) {
    return name;
}
template <class T>
const Char8* fieldName(const Char8* name, const T&) {
    return name;
}

template <class T, Int32 space>
void addReferences(SField<T, space>& field) {
    addRefCP(field.getValue());
}

template <class T, Int32 space>
void addReferences(MField<T, space>& field) {
    for (UInt32 i = 0; i < field.getSize(); ++i)
        addRefCP(field[i]);
}

/// Stores the new value before the old one is released: releasing may destroy whole sub-graphs, the
/// owner of the field among them, so that the field is not touched afterwards.
template <class T, Int32 space>
void assignCounted(SField<T, space>& field, const T& value) {
    T added = value;
    T released = field.getValue();
    addRefCP(added);
    field.setValue(added);
    subRefCP(released);
}

template <class T, Int32 space>
void appendCounted(MField<T, space>& field, const T& element) {
    if (element == NullFC) return;
    addRefCP(element);
    field.push_back(element);
}

template <class T, Int32 space>
bool eraseCounted(MField<T, space>& field, UInt32 index) {
    if (index >= field.getSize()) return false;
    T released = field[index];
    field.erase(field.begin() + static_cast<std::ptrdiff_t>(index));
    subRefCP(released);
    return true;
}

template <class T, Int32 space>
bool eraseCounted(MField<T, space>& field, const T& element) {
    const auto found = std::find(field.begin(), field.end(), element);
    if (found == field.end()) return false;
    return eraseCounted(field, static_cast<UInt32>(found - field.begin()));
}

/// The list is emptied before its elements are released, for the reason told at assignCounted.
template <class T, Int32 space>
void clearCounted(MField<T, space>& field) {
    if (field.getSize() == 0) return;
    std::vector<T> released(field.begin(), field.end());
    field.clear();
    for (T& element : released)
        subRefCP(element);
}

/// For a container that is being destroyed, with a LateReleases in place.
template <class T, Int32 space>
void giveUp(SField<T, space>& field) {
    const T released = field.getValue();
    field.setValue(NullFC);
    LateReleases::add(released);
}

template <class T, Int32 space>
void giveUp(MField<T, space>& field) {
    for (UInt32 i = 0; i < field.getSize(); ++i)
        LateReleases::add(field[i]);
    field.clear();
}

} // namespace kvtable

OSG_END_NAMESPACE

// --- what one row of a table turns into ----------------------------------------------------------

#define KV_ROW_NOTHING(...)

#define KV_ROW_ID(FIELD, NAME, ...) NAME##FieldId,
#define KV_ROW_LIST_ID(FIELD, ITEM, NAME, TEXT) NAME##FieldId,

#define KV_ROW_MASK(FIELD, NAME, ...)                                                              \
    static constexpr BitVector NAME##FieldMask = BitVector(1) << NAME##FieldId;
#define KV_ROW_LIST_MASK(FIELD, ITEM, NAME, TEXT) KV_ROW_MASK(FIELD, NAME, TEXT)

#define KV_ROW_MEMBER(FIELD, NAME, ...)                                                            \
    FIELD _sf##NAME = kvtable::initialField<FIELD>(__VA_ARGS__);                                   \
    Field* field##NAME(void) {                                                                     \
        return &_sf##NAME;                                                                         \
    }
#define KV_ROW_VALUES_MEMBER(FIELD, NAME, TEXT) KV_ROW_LIST_MEMBER(FIELD, NAME, NAME, TEXT)
#define KV_ROW_LIST_MEMBER(FIELD, ITEM, NAME, TEXT)                                                \
    FIELD _mf##NAME;                                                                               \
    Field* field##NAME(void) {                                                                     \
        return &_mf##NAME;                                                                         \
    }

#define KV_ROW_COPY(FIELD, NAME, ...) , _sf##NAME(source._sf##NAME)
#define KV_ROW_VALUES_COPY(FIELD, NAME, TEXT) , _mf##NAME(source._mf##NAME)
#define KV_ROW_LIST_COPY(FIELD, ITEM, NAME, TEXT) , _mf##NAME(source._mf##NAME)

#define KV_ROW_ACCESS(FIELD, NAME, ...)                                                            \
    const kvtable::ValueOf<FIELD>& get##NAME(void) const {                                         \
        return _sf##NAME.getValue();                                                               \
    }                                                                                              \
    void set##NAME(const kvtable::ValueOf<FIELD>& value) {                                         \
        _sf##NAME.setValue(value);                                                                 \
    }                                                                                              \
    FIELD* getSF##NAME(void) {                                                                     \
        return &_sf##NAME;                                                                         \
    }
#define KV_ROW_VALUES_ACCESS(FIELD, NAME, TEXT)                                                    \
    FIELD& get##NAME(void) {                                                                       \
        return _mf##NAME;                                                                          \
    }                                                                                              \
    const FIELD& get##NAME(void) const {                                                           \
        return _mf##NAME;                                                                          \
    }                                                                                              \
    FIELD* getMF##NAME(void) {                                                                     \
        return &_mf##NAME;                                                                         \
    }
#define KV_ROW_POINTER_ACCESS(FIELD, NAME, TEXT)                                                   \
    const kvtable::ValueOf<FIELD>& get##NAME(void) const {                                         \
        return _sf##NAME.getValue();                                                               \
    }                                                                                              \
    void set##NAME(const kvtable::ValueOf<FIELD>& value) {                                         \
        kvtable::assignCounted(_sf##NAME, value);                                                  \
    }                                                                                              \
    void set##NAME##NoRefCount(const kvtable::ValueOf<FIELD>& value) {                             \
        _sf##NAME.setValue(value);                                                                 \
    }                                                                                              \
    FIELD* getSF##NAME(void) {                                                                     \
        return &_sf##NAME;                                                                         \
    }
#define KV_ROW_LIST_ACCESS(FIELD, ITEM, NAME, TEXT)                                                \
    FIELD& get##NAME(void) {                                                                       \
        return _mf##NAME;                                                                          \
    }                                                                                              \
    const FIELD& get##NAME(void) const {                                                           \
        return _mf##NAME;                                                                          \
    }                                                                                              \
    kvtable::ElementOf<FIELD> get##NAME(UInt32 index) {                                            \
        return _mf##NAME[index];                                                                   \
    }                                                                                              \
    FIELD* getMF##NAME(void) {                                                                     \
        return &_mf##NAME;                                                                         \
    }                                                                                              \
    void add##ITEM(const kvtable::ElementOf<FIELD>& element) {                                     \
        kvtable::appendCounted(_mf##NAME, element);                                                \
    }                                                                                              \
    bool sub##ITEM(const kvtable::ElementOf<FIELD>& element) {                                     \
        return kvtable::eraseCounted(_mf##NAME, element);                                          \
    }                                                                                              \
    bool sub##ITEM(UInt32 index) {                                                                 \
        return kvtable::eraseCounted(_mf##NAME, index);                                            \
    }                                                                                              \
    void clear##NAME(void) {                                                                       \
        kvtable::clearCounted(_mf##NAME);                                                          \
    }

#define KV_ROW_VISIT(FIELD, NAME, ...)                                                             \
    if (which & NAME##FieldMask) visit(&KvClass::_sf##NAME);
#define KV_ROW_VALUES_VISIT(FIELD, NAME, TEXT) KV_ROW_LIST_VISIT(FIELD, NAME, NAME, TEXT)
#define KV_ROW_LIST_VISIT(FIELD, ITEM, NAME, TEXT)                                                 \
    if (which & NAME##FieldMask) visit(&KvClass::_mf##NAME);

#define KV_ROW_DESCRIPTION(FIELD, NAME, ...)                                                       \
    new FieldDescription(FIELD::getClassType(), kvtable::fieldName(__VA_ARGS__), NAME##FieldId,    \
                         NAME##FieldMask, false,                                                   \
                         static_cast<FieldAccessMethod>(&KvClass::field##NAME)),
#define KV_ROW_LIST_DESCRIPTION(FIELD, ITEM, NAME, TEXT) KV_ROW_DESCRIPTION(FIELD, NAME, TEXT)

// --- the parts of a container --------------------------------------------------------------------

/// Everything but `changed`. `INITIALISERS` are those of members that are no fields, for the copy
/// constructor. Leaves the access at `public`.
#define KV_CONTAINER_PARTS(CLASS, PARENT, FIELDS, INITIALISERS)                                    \
    typedef PARENT Inherited;                                                                      \
    typedef CLASS KvClass;                                                                         \
                                                                                                   \
  public:                                                                                          \
    typedef CLASS##Ptr Ptr;                                                                        \
    enum {                                                                                         \
        KvBeforeFirst##CLASS = Inherited::NextFieldId - 1,                                         \
        FIELDS(KV_ROW_ID, KV_ROW_ID, KV_ROW_ID, KV_ROW_LIST_ID) NextFieldId                        \
    };                                                                                             \
    FIELDS(KV_ROW_MASK, KV_ROW_MASK, KV_ROW_MASK, KV_ROW_LIST_MASK)                                \
    OSG_FIELD_CONTAINER_DECL(CLASS##Ptr)                                                           \
                                                                                                   \
    FIELDS(KV_ROW_ACCESS, KV_ROW_VALUES_ACCESS, KV_ROW_POINTER_ACCESS, KV_ROW_LIST_ACCESS)         \
                                                                                                   \
    virtual UInt32 getBinSize(const BitVector& which);                                             \
    virtual void copyToBin(BinaryDataHandler& handler, const BitVector& which);                    \
    virtual void copyFromBin(BinaryDataHandler& handler, const BitVector& which);                  \
                                                                                                   \
  protected:                                                                                       \
    FIELDS(KV_ROW_MEMBER, KV_ROW_VALUES_MEMBER, KV_ROW_MEMBER, KV_ROW_LIST_MEMBER)                 \
                                                                                                   \
    CLASS(void) {}                                                                                 \
    CLASS(const CLASS& source)                                                                     \
        : Inherited(source) FIELDS(KV_ROW_COPY, KV_ROW_VALUES_COPY, KV_ROW_COPY, KV_ROW_LIST_COPY) \
              INITIALISERS() {}                                                                    \
    virtual ~CLASS(void) {}                                                                        \
                                                                                                   \
    /* Not virtual in OpenSG: found by name in the class that is created. */                       \
    void onCreate(const CLASS* source = NULL);                                                     \
    virtual void onDestroy(void);                                                                  \
    virtual void executeSync(FieldContainer& other, const BitVector& which);                       \
    void executeSyncImpl(CLASS* other, const BitVector& which);                                    \
    /* Adds the references that a reader left out; part of `changed`. */                           \
    void countRead(BitVector which, UInt32 origin);                                                \
                                                                                                   \
  private:                                                                                         \
    friend class FieldContainer;                                                                   \
    static FieldDescription* _desc[];                                                              \
    static FieldContainerType _type;                                                               \
    static FieldContainerPtr makePrototype(void) {                                                 \
        return createEmpty();                                                                      \
    }                                                                                              \
    void operator=(const CLASS&);                                                                  \
                                                                                                   \
    template <class Visitor>                                                                       \
    static void eachField([[maybe_unused]] BitVector which, [[maybe_unused]] Visitor visit) {      \
        FIELDS(KV_ROW_VISIT, KV_ROW_VALUES_VISIT, KV_ROW_VISIT, KV_ROW_LIST_VISIT)                 \
    }                                                                                              \
    template <class Visitor>                                                                       \
    static void eachReference([[maybe_unused]] BitVector which, [[maybe_unused]] Visitor visit) {  \
        FIELDS(KV_ROW_NOTHING, KV_ROW_NOTHING, KV_ROW_VISIT, KV_ROW_LIST_VISIT)                    \
    }                                                                                              \
                                                                                                   \
  public:

/// A container that does nothing of its own when an edit of it ends.
#define KV_CONTAINER_DECL(CLASS, PARENT, FIELDS)                                                   \
    KV_CONTAINER_PARTS(CLASS, PARENT, FIELDS, KV_ROW_NOTHING)                                      \
    virtual void changed(BitVector which, UInt32 origin) {                                         \
        countRead(which, origin);                                                                  \
        Inherited::changed(which, origin);                                                         \
    }

/// A container with a `changed` of its own, which must call `countRead` and `Inherited::changed`,
/// and perhaps with members that are no fields: the macro `INITIALISERS()` begins with a comma and
/// copies them from `source`; KV_ROW_NOTHING when there are none.
#define KV_REACTING_CONTAINER_DECL(CLASS, PARENT, FIELDS, INITIALISERS)                            \
    KV_CONTAINER_PARTS(CLASS, PARENT, FIELDS, INITIALISERS)                                        \
    virtual void changed(BitVector which, UInt32 origin);

/// Behind the class, inside namespace osg.
#define KV_CONTAINER_INLINE(CLASS)                                                                 \
    OSG_FIELD_CONTAINER_INL_DEF(CLASS, CLASS##Ptr)                                                 \
    /** The generated half of a pair of classes in OpenSG; here both are one. */                   \
    typedef CLASS CLASS##Base;

/// In one .cpp, inside namespace osg. The static descriptions end with an entry that is not
/// counted, so that a table may be empty.
#define KV_CONTAINER_DEF(CLASS, PARENT, FIELDS)                                                    \
    FieldDescription* CLASS::_desc[] = {FIELDS(KV_ROW_DESCRIPTION, KV_ROW_DESCRIPTION,             \
                                               KV_ROW_DESCRIPTION, KV_ROW_LIST_DESCRIPTION) NULL}; \
    FieldContainerType CLASS::_type(#CLASS, #PARENT, NULL, &CLASS::makePrototype, NULL, _desc,     \
                                    static_cast<UInt32>(sizeof(_desc) - sizeof(_desc[0])));        \
    OSG_FIELD_CONTAINER_DEF(CLASS, CLASS##Ptr)                                                     \
                                                                                                   \
    UInt32 CLASS::getBinSize(const BitVector& which) {                                             \
        UInt32 size = Inherited::getBinSize(which);                                                \
        eachField(which, [&](auto field) { size += (this->*field).getBinSize(); });                \
        return size;                                                                               \
    }                                                                                              \
    void CLASS::copyToBin(BinaryDataHandler& handler, const BitVector& which) {                    \
        Inherited::copyToBin(handler, which);                                                      \
        eachField(which, [&](auto field) { (this->*field).copyToBin(handler); });                  \
    }                                                                                              \
    void CLASS::copyFromBin(BinaryDataHandler& handler, const BitVector& which) {                  \
        Inherited::copyFromBin(handler, which);                                                    \
        eachField(which, [&](auto field) { (this->*field).copyFromBin(handler); });                \
    }                                                                                              \
    void CLASS::executeSync(FieldContainer& other, const BitVector& which) {                       \
        executeSyncImpl(static_cast<CLASS*>(&other), which);                                       \
    }                                                                                              \
    void CLASS::executeSyncImpl(CLASS* other, const BitVector& which) {                            \
        Inherited::executeSyncImpl(other, which);                                                  \
        eachField(which, [&](auto field) { (this->*field).syncWith(other->*field); });             \
    }                                                                                              \
    void CLASS::countRead(BitVector which, UInt32 origin) {                                        \
        if (!(origin & ChangedOrigin::Abstract)) return;                                           \
        eachReference(which, [&](auto field) { kvtable::addReferences(this->*field); });           \
    }                                                                                              \
    void CLASS::onCreate(const CLASS* source) {                                                    \
        Inherited::onCreate(source);                                                               \
        if (source == NULL) return;                                                                \
        eachReference(FieldBits::AllFields,                                                        \
                      [&](auto field) { kvtable::addReferences(this->*field); });                  \
    }                                                                                              \
    void CLASS::onDestroy(void) {                                                                  \
        /* Once a container, while its destructor runs once for each thread that has a copy. */    \
        if (GlobalSystemState != Shutdown) {                                                       \
            const kvtable::LateReleases releases;                                                  \
            eachReference(FieldBits::AllFields,                                                    \
                          [&](auto field) { kvtable::giveUp(this->*field); });                     \
        }                                                                                          \
        Inherited::onDestroy();                                                                    \
    }

/// Makes `CLASS##Ptr` a type that fields can hold: `SFCLASSPtr` and `MFCLASSPtr`. Behind the
/// pointer's typedef and before the first use of such a field. The names contain "Ptr" because
/// OpenSG's readers and writers recognise pointer fields by that.
#define KV_POINTER_FIELD_DECL(CLASS)                                                               \
    template <>                                                                                    \
    struct KV_OPENSG_EXT_API FieldDataTraits<CLASS##Ptr>                                           \
        : public FieldTraitsRecurseMapper<CLASS##Ptr, true> {                                      \
        static DataType _type;                                                                     \
        enum { StringConvertable = 0x00, bHasParent = 0x01 };                                      \
        static DataType& getType(void) { return _type; }                                           \
        static const Char8* getSName(void) { return "SF" #CLASS "Ptr"; }                           \
        static const Char8* getMName(void) { return "MF" #CLASS "Ptr"; }                           \
    };                                                                                             \
    typedef SField<CLASS##Ptr> SF##CLASS##Ptr;                                                     \
    typedef MField<CLASS##Ptr> MF##CLASS##Ptr;

/// In one .cpp, after OSGSFieldTypeDef.inl and OSGMFieldTypeDef.inl, inside namespace osg.
/// `PARENT_POINTER` is the name of the parent's pointer type as a string.
#define KV_POINTER_FIELD_DEF(CLASS, PARENT_POINTER)                                                \
    DataType FieldDataTraits<CLASS##Ptr>::_type(#CLASS "Ptr", PARENT_POINTER);                     \
    OSG_DLLEXPORT_SFIELD_DEF1(CLASS##Ptr, KV_OPENSG_EXT_API);                                      \
    OSG_DLLEXPORT_MFIELD_DEF1(CLASS##Ptr, KV_OPENSG_EXT_API);
