#pragma once

/// @file
/// The fields SFColor4f and MFColor4f.

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
