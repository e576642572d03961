#pragma once

/// @file
/// The fields SFPnt2s and MFPnt2s.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
