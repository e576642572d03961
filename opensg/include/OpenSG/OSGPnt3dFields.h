#pragma once

/// @file
/// The fields SFPnt3d and MFPnt3d.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
