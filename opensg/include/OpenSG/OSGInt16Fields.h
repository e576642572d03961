#pragma once

/// @file
/// The fields SFInt16 and MFInt16.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
