#pragma once

/// @file
/// The fields SFInt8 and MFInt8.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
