#pragma once

/// @file
/// Single fields of numbers and bool.

#include <OpenSG/OSGSField.h>
#include <OpenSG/OSGSysFieldDataType.h>

namespace osg {

typedef SField<bool, 2> SFBool;
typedef SField<Int8> SFInt8;
typedef SField<UInt8> SFUInt8;
typedef SField<Int16> SFInt16;
typedef SField<UInt16> SFUInt16;
typedef SField<Int32> SFInt32;
typedef SField<UInt32> SFUInt32;
typedef SField<Int64> SFInt64;
typedef SField<UInt64> SFUInt64;
typedef SField<Real32> SFReal32;
typedef SField<Real64> SFReal64;
typedef SField<GLenum, 1> SFGLenum;

} // namespace osg
