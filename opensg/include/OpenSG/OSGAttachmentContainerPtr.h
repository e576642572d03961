#pragma once

/// @file
/// Pointers to attachment containers.

#include <OpenSG/OSGAttachmentContainer.h>
