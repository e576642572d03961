#pragma once

/// @file
/// The fields SFString and MFString.

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
