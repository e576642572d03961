// Scenes out of text, for callers that have a stream and no file name.

#include "files/sceneFiles.h"

#include <OpenSG/OSGLoader.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSceneFileHandler.h>

namespace osg {

OSGLoader::~OSGLoader() {
    keep(NullFC);
}

void OSGLoader::keep(const NodePtr& root) {
    // A scene that was never handed out belongs to nobody.
    if (!_handedOut && _root != NullFC) {
        addRefCP(_root);
        subRefCP(_root);
    }
    _root = root;
    _handedOut = false;
}

void OSGLoader::scanStream(std::istream& stream) {
    keep(SceneFileHandler::the().read(stream, "osg"));
}

void OSGLoader::scanFile(const Char8* fileName) {
    keep(files::readFileAs(files::SceneFormat::kAscii, fileName));
}

NodePtr OSGLoader::getRootNode() {
    _handedOut = true;
    return _root;
}

} // namespace osg
