#pragma once

/// @file
/// The fields SFBool and MFBool.

#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
