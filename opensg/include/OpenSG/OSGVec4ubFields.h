#pragma once

/// @file
/// The fields SFVec4ub and MFVec4ub.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
