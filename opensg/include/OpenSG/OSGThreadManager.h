#pragma once

/// @file
/// All threads of the program.

#include <OpenSG/OSGThread.h>
