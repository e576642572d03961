#pragma once

/// @file
/// Reading text in OpenSG's ASCII format.

#include <OpenSG/OSGBaseTypes.h>
#include <OpenSG/OSGNodePtr.h>

#include <iosfwd>

namespace osg {

/// Reads scenes from text. What it accepts and returns is that of `SceneFileHandler` for `osg`.
class OSGLoader {
  public:
    OSGLoader() = default;
    /// Destroys a scene that nobody asked for.
    ~OSGLoader();

    /// Reads the rest of a stream. A scene that was read before and not asked for is destroyed.
    void scanStream(std::istream& stream);
    void scanFile(const Char8* fileName);

    /// The scene that was read last, null when there is none or it was malformed. It has reference
    /// count 0 and belongs to the caller.
    NodePtr getRootNode();

    OSGLoader(const OSGLoader&) = delete;
    OSGLoader& operator=(const OSGLoader&) = delete;

  private:
    void keep(const NodePtr& root);

    NodePtr _root;
    bool _handedOut = false;
};

} // namespace osg
