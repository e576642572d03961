#pragma once

/// @file
/// The fields SFPnt3f and MFPnt3f.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
