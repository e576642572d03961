#pragma once

/// @file
/// The field SFAttachmentMap.

#include <OpenSG/OSGFieldContainerFields.h>

#include <map>

namespace osg {

/// Attachments by `(group id << 16) | binding`.
typedef std::map<UInt32, AttachmentPtr> AttachmentMap;

template <>
struct FieldDataTraits<AttachmentMap> : public FieldTraitsRecurseBase<AttachmentMap> {
    static DataType _type;
    enum { StringConvertable = FieldTraits::ToStringConvertable };

    static DataType& getType() { return _type; }
    static const Char8* getSName() { return "SFAttachmentMap"; }
    static const Char8* getMName() { return "MFAttachmentMap"; }

    static bool getFromString(AttachmentMap&, const Char8*&) { return false; }
    static void putToString(const AttachmentMap&, std::string& text) { text = "AttachmentMap"; }

    /// The number of attachments, then for each its binding and its container's number.
    static UInt32 getBinSize(const AttachmentMap& map);
    static void copyToBin(BinaryDataHandler& handler, const AttachmentMap& map);
    static void copyFromBin(BinaryDataHandler& handler, AttachmentMap& map);
};

typedef SField<AttachmentMap> SFAttachmentMap;

extern template class SField<AttachmentMap, 0>;

} // namespace osg
