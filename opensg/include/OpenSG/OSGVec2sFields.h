#pragma once

/// @file
/// The fields SFVec2s and MFVec2s.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
