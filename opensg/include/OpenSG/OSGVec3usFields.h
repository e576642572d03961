#pragma once

/// @file
/// The fields SFVec3us and MFVec3us.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
