#pragma once

/// @file
/// The fields SFPnt3s and MFPnt3s.

#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
