#pragma once

/// @file
/// The fields SFUInt8 and MFUInt8.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
