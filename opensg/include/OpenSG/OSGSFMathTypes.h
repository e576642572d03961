#pragma once

/// @file
/// Single fields of matrices and rotations.

#include <OpenSG/OSGMathFieldDataType.h>
#include <OpenSG/OSGSField.h>

namespace osg {

typedef SField<Matrix> SFMatrix;
typedef SField<Quaternion> SFQuaternion;

} // namespace osg
