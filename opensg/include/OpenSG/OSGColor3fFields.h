#pragma once

/// @file
/// The fields SFColor3f and MFColor3f.

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
