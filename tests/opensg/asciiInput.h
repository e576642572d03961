#pragma once

// What the tests of the ASCII reader share.

#include "opensg/fileContainers.h"
#include "opensg/sceneFileSupport.h"

#include <stdexcept>
#include <string>

namespace asciiInput {

/// A node that carries a FileSheet with these fields.
std::string sheetNode(const std::string& fields);

/// The sheet of a node that was read; null without one.
osg::FileSheetPtr sheetOf(const osg::NodePtr& node);

/// The attachment of a node that is read with these fields; the scene stays in `scene`.
template <class Attachment>
class ReadValues {
  public:
    explicit ReadValues(const std::string& fields)
        : _scene(readText("Node { attachments [ " +
                          std::string(Attachment::getClassType().getCName()) + " { " + fields +
                          " } ] }")) {}

    typename Attachment::Ptr operator->() const {
        if (_scene.isNull()) throw std::runtime_error("the text was refused");
        return _scene.template attachment<Attachment>(_scene.at({0}));
    }
    bool isRefused() const { return _scene.isNull(); }

  private:
    Scene _scene;
};
typedef ReadValues<osg::FileValues> Values;
typedef ReadValues<osg::FileRareValues> RareValues;

/// A node that a sheet points at is read under this name, unquoted, in DEF and USE.
void expectNameAccepted(const std::string& name);

/// A field of the wrong kind is left as it was, and what follows is read.
void expectFieldLeftOut(const std::string& field);

/// A string as it stands in a file, and what it means.
struct TextCase {
    const char* written;
    const char* meant;
};
void expectTextRead(const TextCase& text);

} // namespace asciiInput
