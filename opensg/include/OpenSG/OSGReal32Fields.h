#pragma once

/// @file
/// The fields SFReal32 and MFReal32.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
