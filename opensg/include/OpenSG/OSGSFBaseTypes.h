#pragma once

/// @file
/// Single fields of strings, colours, times, bit masks and volumes.

#include <OpenSG/OSGBaseFieldDataType.h>
#include <OpenSG/OSGSField.h>

namespace osg {

typedef SField<std::string> SFString;
typedef SField<Color3f> SFColor3f;
typedef SField<Color4f> SFColor4f;
typedef SField<Color3ub> SFColor3ub;
typedef SField<Color4ub> SFColor4ub;
typedef SField<Time, 1> SFTime;
typedef SField<BitVector, 1> SFBitVector;
typedef SField<DynamicVolume> SFDynamicVolume;

} // namespace osg
