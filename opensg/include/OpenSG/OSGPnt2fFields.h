#pragma once

/// @file
/// The fields SFPnt2f and MFPnt2f.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
