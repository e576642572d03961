#pragma once

/// @file
/// The fields SFInt64 and MFInt64.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
