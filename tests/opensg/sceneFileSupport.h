#pragma once

// What the tests of scene files share: scenes from text and back, the log's lines, files that are
// removed again.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSceneFileHandler.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <string>
#include <vector>

/// A scene that goes when the test is over, with whatever hangs on it.
class Scene {
  public:
    explicit Scene(osg::NodePtr root) : _root(root) { osg::addRefCP(_root); }
    ~Scene() { osg::subRefCP(_root); }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    bool isNull() const { return _root == osg::NullFC; }
    osg::NodePtr root() const { return _root; }
    osg::Node* operator->() const { return _root.operator->(); }

    /// The node that is reached by going down to these children.
    osg::NodePtr at(std::initializer_list<osg::UInt32> path) const;

    /// The attachment of a node that is a T; null when there is none.
    template <class T>
    typename T::Ptr attachment(const osg::NodePtr& node) const {
        return T::Ptr::dcast(node->findAttachment(T::getClassType()));
    }

  private:
    osg::NodePtr _root;
};

/// What the log shows from the construction on; standard error is caught meanwhile.
class LogLines {
  public:
    LogLines();
    ~LogLines();
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;

    /// The lines up to now, the end of catching.
    const std::vector<std::string>& take();

  private:
    bool _taken = false;
    std::vector<std::string> _lines;
};

/// The path of a file that does not exist yet and is removed at the end.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& extension);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return _path; }
    const char* name() const { return _path.c_str(); }

  private:
    std::string _path;
};

std::string contentsOf(const std::string& path);
void writeContents(const std::string& path, const std::string& contents);

/// The contents of a file of the test data.
std::string testData(const std::string& name);

/// The scene in a text; count 0, null when it is refused.
osg::NodePtr readText(const std::string& text, const char* extension = "osg");

/// A scene as text or bytes; empty when it is refused.
std::string writeText(const osg::NodePtr& root, const char* extension = "osg");

/// How many containers there are in the program.
std::size_t countContainers();

/// The name of a container, "(none)" when it has none.
std::string nameOf(const osg::AttachmentContainerPtr& container);
