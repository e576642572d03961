#pragma once

/// @file
/// Pointers to containers: their classes, `NullFC`, reference counting and edits.

#include <OpenSG/OSGFieldContainer.h>
