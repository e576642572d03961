#pragma once

/// @file
/// The fields SFQuaternion and MFQuaternion.

#include <OpenSG/OSGMFMathTypes.h>
#include <OpenSG/OSGSFMathTypes.h>
