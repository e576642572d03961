#pragma once

/// @file
/// The fields SFUInt64 and MFUInt64.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
