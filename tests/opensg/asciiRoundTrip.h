#pragma once

// What the tests of scenes that are written as text and read again share.

#include "opensg/fileContainers.h"
#include "opensg/sceneFileSupport.h"

#include <OpenSG/OSGGroup.h>

#include <string>

namespace asciiRoundTrip {

using namespace osg;

inline NodePtr makeNode() {
    return makeCoredNode<Group>();
}

template <class Attachment>
typename Attachment::Ptr attach(const NodePtr& node) {
    const typename Attachment::Ptr attachment = Attachment::create();
    node->addAttachment(attachment);
    return attachment;
}

/// The scene written and read, without the group that reading adds.
class Copy {
  public:
    explicit Copy(const Scene& scene) : _text(writeText(scene.root())), _scene(readText(_text)) {}

    const std::string& text() const { return _text; }
    NodePtr root() const { return _scene.isNull() ? NodePtr() : _scene.at({0}); }
    template <class T>
    typename T::Ptr attachment() const {
        return _scene.attachment<T>(root());
    }

  private:
    std::string _text;
    Scene _scene;
};

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// Numbers of few digits, a different one in each place.
inline Matrix someMatrix() {
    Matrix matrix;
    for (UInt32 i = 0; i < 16; ++i)
        matrix[i % 4][i / 4] = static_cast<float>(i) / 8;
    return matrix;
}

} // namespace asciiRoundTrip
