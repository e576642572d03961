#pragma once

/// @file
/// The fields SFColor4ub and MFColor4ub.

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
