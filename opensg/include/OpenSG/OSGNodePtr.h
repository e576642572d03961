#pragma once

/// @file
/// Pointers to nodes.

#include <OpenSG/OSGNode.h>
