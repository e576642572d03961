#pragma once

/// @file
/// The fields SFVec4us and MFVec4us.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
