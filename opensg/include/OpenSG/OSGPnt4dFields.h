#pragma once

/// @file
/// The fields SFPnt4d and MFPnt4d.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
