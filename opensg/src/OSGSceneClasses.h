#pragma once

namespace osg {

namespace detail {

/// Announces the cores, lights, materials, cameras and geometry where the library is linked
/// statically: a linker takes no object file that nobody refers to, and then a scene file could
/// name classes that were left out. False when a class has not registered itself, which cannot be.
bool linkSceneClasses();

} // namespace detail

} // namespace osg
