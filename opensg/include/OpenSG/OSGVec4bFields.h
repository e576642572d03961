#pragma once

/// @file
/// The fields SFVec4b and MFVec4b.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
