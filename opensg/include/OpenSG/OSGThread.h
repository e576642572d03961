#pragma once

/// @file
/// Threads see one copy of the scene here, so there is little to know about them.

#include <OpenSG/OSGBaseTypes.h>

namespace osg {

/// A thread of the program.
class Thread {
  public:
    /// The copy of the scene that the calling thread works on.
    static UInt32 getAspect() { return 0; }
    static UInt32 getCurrentAspect() { return getAspect(); }
};

/// All threads of the program.
class ThreadManager {
  public:
    /// How many copies of the scene there are, so how often constructors of containers run.
    static UInt32 getNumAspects() { return 1; }
};

} // namespace osg
