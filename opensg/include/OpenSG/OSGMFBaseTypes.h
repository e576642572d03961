#pragma once

/// @file
/// Multi fields of strings, colours, times, bit masks and volumes.

#include <OpenSG/OSGBaseFieldDataType.h>
#include <OpenSG/OSGMField.h>

namespace osg {

typedef MField<std::string> MFString;
typedef MField<Color3f> MFColor3f;
typedef MField<Color4f> MFColor4f;
typedef MField<Color3ub> MFColor3ub;
typedef MField<Color4ub> MFColor4ub;
typedef MField<Time, 1> MFTime;
typedef MField<BitVector, 1> MFBitVector;
typedef MField<DynamicVolume> MFDynamicVolume;

} // namespace osg
