#pragma once

/// @file
/// The fields SFInt32 and MFInt32.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
