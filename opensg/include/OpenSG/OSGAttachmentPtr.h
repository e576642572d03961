#pragma once

/// @file
/// Pointers to attachments.

#include <OpenSG/OSGAttachment.h>
