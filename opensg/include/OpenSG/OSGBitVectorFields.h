#pragma once

/// @file
/// The fields SFBitVector and MFBitVector.

#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
