#pragma once

/// @file
/// The fields SFVec2b and MFVec2b.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
