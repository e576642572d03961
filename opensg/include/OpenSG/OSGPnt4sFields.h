#pragma once

/// @file
/// The fields SFPnt4s and MFPnt4s.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
