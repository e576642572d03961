#pragma once

// The museum of named curves, for the tests of every room.
#include "keys/museum.h"
