#pragma once

/// @file
/// The fields SFMatrix and MFMatrix.

#include <OpenSG/OSGMFMathTypes.h>
#include <OpenSG/OSGSFMathTypes.h>
