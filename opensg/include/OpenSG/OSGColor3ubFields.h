#pragma once

/// @file
/// The fields SFColor3ub and MFColor3ub.

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
