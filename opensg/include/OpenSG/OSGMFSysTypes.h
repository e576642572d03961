#pragma once

/// @file
/// Multi fields of numbers and bool.

#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSysFieldDataType.h>

namespace osg {

typedef MField<bool, 2> MFBool;
typedef MField<Int8> MFInt8;
typedef MField<UInt8> MFUInt8;
typedef MField<Int16> MFInt16;
typedef MField<UInt16> MFUInt16;
typedef MField<Int32> MFInt32;
typedef MField<UInt32> MFUInt32;
typedef MField<Int64> MFInt64;
typedef MField<UInt64> MFUInt64;
typedef MField<Real32> MFReal32;
typedef MField<Real64> MFReal64;
typedef MField<GLenum, 1> MFGLenum;

} // namespace osg
