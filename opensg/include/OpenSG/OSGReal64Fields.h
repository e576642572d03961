#pragma once

/// @file
/// The fields SFReal64 and MFReal64.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
