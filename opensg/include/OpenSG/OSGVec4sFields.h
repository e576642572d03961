#pragma once

/// @file
/// The fields SFVec4s and MFVec4s.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
