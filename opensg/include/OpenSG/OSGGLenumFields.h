#pragma once

/// @file
/// The fields SFGLenum and MFGLenum.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
