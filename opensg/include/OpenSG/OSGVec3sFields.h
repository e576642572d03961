#pragma once

/// @file
/// The fields SFVec3s and MFVec3s.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
