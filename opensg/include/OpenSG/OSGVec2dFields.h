#pragma once

/// @file
/// The fields SFVec2d and MFVec2d.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
