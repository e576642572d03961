#pragma once

/// @file
/// Start and end of the library.

#include <OpenSG/OSGBaseTypes.h>

namespace osg {

enum SystemState { Startup, Running, Shutdown };

/// Startup until osgInit, Shutdown from osgExit on.
extern SystemState GlobalSystemState;

/// Makes all types usable; call it before the first container is created. A second call does
/// nothing and returns true; a call after osgExit ends the process. The arguments may be 0 and null
/// and are not looked at. False when the headers are those of another version.
bool osgInit(Int32 argc, Char8** argv, UInt16 major = OSG_MAJOR_VERSION,
             UInt16 minor = OSG_MINOR_VERSION, UInt16 release = OSG_RELEASE_VERSION);

/// Ends the library; happens by itself at the end of the program. Afterwards nothing can be created
/// and no container is found by its number any more. Containers that were not released are not
/// destroyed.
bool osgExit();

} // namespace osg
