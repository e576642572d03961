#pragma once

/// @file
/// The fields SFUInt16 and MFUInt16.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
