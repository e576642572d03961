#pragma once

/// @file
/// The fields SFVec2f and MFVec2f.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
