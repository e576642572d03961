#pragma once

/// @file
/// The fields SFDynamicVolume and MFDynamicVolume.

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
