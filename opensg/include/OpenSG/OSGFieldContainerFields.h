#pragma once

/// @file
/// Pointers as field values, and the fields SFFieldContainerPtr and MFFieldContainerPtr.

#include <OpenSG/OSGDataType.h>
#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSField.h>

namespace osg {

namespace detail {

/// Reads a container's number. Null when there is no such container, or when it is not of the type
/// that pointers of `contentType` point at.
FieldContainerPtr readPointer(BinaryDataHandler& handler, const DataType& contentType);

} // namespace detail

/// The binary form of pointers, the container's number, for the FieldDataTraits of a pointer type.
/// Pointers have no text form unless the traits add one.
template <class P, bool typeParent = true>
struct FieldTraitsRecurseMapper : public FieldTraitsRecurseBase<P> {
    static UInt32 getBinSize(const P&) { return static_cast<UInt32>(sizeof(UInt32)); }
    static void copyToBin(BinaryDataHandler& handler, const P& pointer) {
        handler.putValue(pointer == NullFC ? UInt32(0) : getContainerId(pointer));
    }
    static void copyFromBin(BinaryDataHandler& handler, P& pointer) {
        static_cast<FieldContainerPtr&>(pointer) =
            detail::readPointer(handler, FieldDataTraits<P>::getType());
    }
};

namespace detail {

/// For pointer types whose fields show an address as their text.
template <class P>
struct PrintedPointerTraits : public FieldTraitsRecurseMapper<P, true> {
    enum { StringConvertable = FieldTraits::ToStringConvertable, bHasParent = 0x01 };

    static bool getFromString(P&, const Char8*&) { return false; }
    static void putToString(const P& pointer, std::string& text) { pointerToText(pointer, text); }
};

} // namespace detail

template <>
struct FieldDataTraits<FieldContainerPtr> : public detail::PrintedPointerTraits<FieldContainerPtr> {
    static DataType _type;
    enum { bHasParent = 0x00 };

    static DataType& getType() { return _type; }
    static const Char8* getSName() { return "SFFieldContainerPtr"; }
    static const Char8* getMName() { return "MFFieldContainerPtr"; }
};

/// Every single pointer field is one of these, every multi pointer field one of those: its pointers
/// may be read, and written if the containers are of the right type, without knowing more of it.
typedef SField<FieldContainerPtr> SFFieldContainerPtr;
typedef MField<FieldContainerPtr> MFFieldContainerPtr;

extern template class SField<FieldContainerPtr, 0>;
extern template class MField<FieldContainerPtr, 0>;

} // namespace osg
