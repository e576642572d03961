#pragma once

/// @file
/// The fields SFVec3f and MFVec3f.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
