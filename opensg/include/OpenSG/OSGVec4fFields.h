#pragma once

/// @file
/// The fields SFVec4f and MFVec4f.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
