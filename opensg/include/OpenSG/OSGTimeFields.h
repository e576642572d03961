#pragma once

/// @file
/// The fields SFTime and MFTime.

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
