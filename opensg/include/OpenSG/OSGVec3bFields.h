#pragma once

/// @file
/// The fields SFVec3b and MFVec3b.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
