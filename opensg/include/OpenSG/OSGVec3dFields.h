#pragma once

/// @file
/// The fields SFVec3d and MFVec3d.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
