#pragma once

/// @file
/// The type Time.

#include <OpenSG/OSGBaseTypes.h>
