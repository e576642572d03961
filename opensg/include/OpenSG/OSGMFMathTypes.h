#pragma once

/// @file
/// Multi fields of matrices and rotations.

#include <OpenSG/OSGMathFieldDataType.h>
#include <OpenSG/OSGMField.h>

namespace osg {

typedef MField<Matrix> MFMatrix;
typedef MField<Quaternion> MFQuaternion;

} // namespace osg
