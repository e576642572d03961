#pragma once

/// @file
/// Scenes in files and streams.

#include <OpenSG/OSGBaseTypes.h>
#include <OpenSG/OSGNodePtr.h>

#include <iosfwd>

namespace osg {

class GraphOpSeq;

/// Reads and writes scenes. The one object of the program is `SceneFileHandler::the()`.
///
/// The format goes by the extension, in any letter case; a further ".gz" is looked through:
/// - `osg`, OpenSG's ASCII format. A read scene is a new node with a `Group` core; its children are
///   the file's top-level containers.
/// - `osb`, OpenSG's binary format: smaller, faster, and every number is exact. A read scene is the
///   node that was written.
///
/// Compressed input is recognised by its contents, whatever it is called.
///
/// A read scene has reference count 0 and new ids. Everything in it hangs on the returned node:
/// `addRefCP` and later `subRefCP` on that node hold and release all of it.
///
/// **Failure.** A scene comes back whole or not at all: on a file that cannot be read or is
/// malformed `read` returns a null node and puts one line into the log that names the file, the
/// place and the reason. Containers and fields of types that this program does not know are left
/// out of the scene, with one warning for each kind.
///
/// A file is written beside its target and takes its place when it is complete, so that a failed
/// `write` leaves an older file as it was.
class SceneFileHandler {
  public:
    static SceneFileHandler& the();

    /// Null file names and unknown extensions fail. `ops` would change the scene after reading in
    /// OpenSG; it is accepted and nothing is changed: the scene is what the file holds.
    NodePtr read(const Char8* fileName, GraphOpSeq* ops = nullptr);

    /// Reads the rest of a stream. `extension` may be a file name or just its extension.
    NodePtr read(std::istream& stream, const Char8* extension, GraphOpSeq* ops = nullptr);

    /// Writes a node and everything that can be reached from it. `compress` asks for gzip, as an
    /// extension ".gz" does. False, with a line in the log, for a null node or when it fails.
    bool write(const NodePtr& node, const Char8* fileName, bool compress = false);
    bool write(const NodePtr& node, std::ostream& stream, const Char8* extension,
               bool compress = false);

    SceneFileHandler(const SceneFileHandler&) = delete;
    SceneFileHandler& operator=(const SceneFileHandler&) = delete;

  private:
    SceneFileHandler() = default;
};

} // namespace osg
