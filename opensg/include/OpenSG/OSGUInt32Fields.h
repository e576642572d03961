#pragma once

/// @file
/// The fields SFUInt32 and MFUInt32.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
