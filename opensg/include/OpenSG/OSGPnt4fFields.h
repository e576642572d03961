#pragma once

/// @file
/// The fields SFPnt4f and MFPnt4f.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
