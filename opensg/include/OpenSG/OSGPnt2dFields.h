#pragma once

/// @file
/// The fields SFPnt2d and MFPnt2d.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
