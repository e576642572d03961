#pragma once

/// @file
/// The fields SFVec2us and MFVec2us.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
