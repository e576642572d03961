#pragma once

/// @file
/// The fields SFVec3ub and MFVec3ub.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
