#pragma once

/// @file
/// A field of an unsigned 64-bit identifier that every reader of scene files understands.
///
/// OpenSG's ASCII reader has no token for `SFUInt64` and takes such a field for the end of the
/// file. A field type may however ask to be scanned like another one, and the integer token passes
/// digits through as text whatever their number. Hence a field type of its own, with the content
/// type "Ident64"; the C++ value type is `UInt64`.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGField.h>
#include <OpenSG/OSGFieldType.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGUInt64Fields.h>

#include "kvOpenSGExtApi.h"

OSG_BEGIN_NAMESPACE

template <>
struct KV_OPENSG_EXT_API FieldDataTraits2<UInt64>
    : public FieldTraitsIntegralRecurseMapper<UInt64> {
    static DataType _type;
    enum {
        StringConvertable = FieldTraits::ToStringConvertable | FieldTraits::FromStringConvertable
    };
    static DataType& getType(void) { return _type; }
    static const Char8* getSName(void) { return "SFIdent64"; }
    static const Char8* getMName(void) { return "MFIdent64"; }
    static bool getFromString(UInt64& value, const Char8*& text);
    static void putToString(const UInt64& value, std::string& text);
};

/// The first two namespaces of `UInt64` fields belong to OpenSG.
typedef SField<UInt64, 2> SFIdent64;

/// @cond the manual has no class to put a specialised member under
template <>
const FieldType SField<UInt64, 2>::_fieldType;
/// @endcond

OSG_END_NAMESPACE
