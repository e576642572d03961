#pragma once

/// @file
/// Base types and numeric constants. OpenGL's headers are not needed and not included.

#include <OpenSG/OSGConfig.h>

#include <cstddef>

/// As in GL/gl.h, which may be included beside this header.
typedef unsigned int GLenum;

namespace osg {

typedef char Char8;
typedef signed char Int8;
typedef unsigned char UInt8;
typedef short Int16;
typedef unsigned short UInt16;
typedef int Int32;
typedef unsigned int UInt32;
typedef long long Int64;
typedef unsigned long long UInt64;
typedef float Real32;
typedef double Real64;

/// One bit for each field of a container; bit n is the field with id n.
typedef UInt64 BitVector;

/// Seconds.
typedef Real64 Time;

/// The tolerance of `==` of the math classes.
const Real32 Eps = 1e-6f;
const Real32 Pi = 3.14159265358979323846f;
/// A number that counts as infinitely large; finite.
const Real32 Inf = 1e30f;

} // namespace osg
