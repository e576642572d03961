#pragma once

/// @file
/// The fields SFVec4d and MFVec4d.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
