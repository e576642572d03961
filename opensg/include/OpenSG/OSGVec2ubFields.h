#pragma once

/// @file
/// The fields SFVec2ub and MFVec2ub.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
