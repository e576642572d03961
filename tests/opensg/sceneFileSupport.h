#pragma once

// What the tests of scene files share: scenes from text and back, the log's lines, files that are
// removed again, and containers of their own with fields of every type.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGFieldTable.h>
#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSceneFileHandler.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <string>
#include <vector>

namespace osg {

class FileItem;
typedef FCPtr<FieldContainerPtr, FileItem> FileItemPtr;
class FileSheet;
typedef FCPtr<AttachmentPtr, FileSheet> FileSheetPtr;
class FileValues;
typedef FCPtr<AttachmentPtr, FileValues> FileValuesPtr;

OSG_POINTER_FIELDS(FileItem, FieldTraitsRecurseMapper)
OSG_POINTER_FIELDS(FileSheet, FieldTraitsRecurseMapper)

// A plain container: a label, and a pointer to another one.
#define OSG_FILE_ITEM_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                               \
    VALUE(SFString, Label, "label")                                                                \
    POINTER(SFFileItemPtr, Follower, "next")                                                       \
    HIDDEN(SFInt32, Secret, "secret")

OSG_TABLE_BASE(FileItem, FieldContainer, OSG_FILE_ITEM_FIELDS)

class FileItem : public FileItemBase {
    OSG_TABLE_MEMBERS(FileItem)
  public:
    void dump(UInt32 = 0, const BitVector = 0) const override {}
};

OSG_TABLE_INLINE(FileItem)

// An attachment with pointers of all kinds.
#define OSG_FILE_SHEET_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                              \
    VALUE(SFString, Title, "title")                                                                \
    POINTER(SFNodePtr, Target, "target")                                                           \
    VALUE(SFReal32, Speed, "speed", 1.f)                                                           \
    POINTERS(MFFileItemPtr, Items, "items")                                                        \
    POINTER(SFFieldContainerPtr, Anything, "anything")

OSG_TABLE_BASE(FileSheet, Attachment, OSG_FILE_SHEET_FIELDS)

class FileSheet : public FileSheetBase {
    OSG_TABLE_MEMBERS(FileSheet)
  public:
    void addItem(const FileItemPtr& item) {
        addRefCP(item);
        getItems().push_back(item);
    }
};

OSG_TABLE_INLINE(FileSheet)

// An attachment with values of all types.
#define OSG_FILE_VALUES_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                             \
    VALUE(SFBool, Bool, "bool")                                                                    \
    VALUE(SFInt8, Int8, "int8")                                                                    \
    VALUE(SFUInt8, UInt8, "uint8")                                                                 \
    VALUE(SFInt16, Int16, "int16")                                                                 \
    VALUE(SFUInt16, UInt16, "uint16")                                                              \
    VALUE(SFInt32, Int32, "int32")                                                                 \
    VALUE(SFUInt32, UInt32, "uint32")                                                              \
    VALUE(SFInt64, Int64, "int64")                                                                 \
    VALUE(SFUInt64, UInt64, "uint64")                                                              \
    VALUE(SFReal32, Real32, "real32")                                                              \
    VALUE(SFReal64, Real64, "real64")                                                              \
    VALUE(SFTime, Time, "time")                                                                    \
    VALUE(SFBitVector, Mask, "mask")                                                               \
    VALUE(SFGLenum, GLenum, "glenum")                                                              \
    VALUE(SFString, String, "string")                                                              \
    VALUE(SFVec2f, Vec2f, "vec2f")                                                                 \
    VALUE(SFVec4d, Vec4d, "vec4d")                                                                 \
    VALUE(SFPnt2f, Pnt2f, "pnt2f")                                                                 \
    VALUE(SFVec3s, Vec3s, "vec3s")                                                                 \
    VALUE(SFColor3f, Color3f, "color3f")                                                           \
    VALUE(SFColor4ub, Color4ub, "color4ub")                                                        \
    VALUE(SFMatrix, Matrix, "matrix")                                                              \
    VALUE(SFQuaternion, Quaternion, "quaternion")                                                  \
    VALUE(SFDynamicVolume, Volume, "volume")                                                       \
    LIST(MFBool, Bools, "bools")                                                                   \
    LIST(MFReal32, Real32s, "real32s")                                                             \
    LIST(MFString, Strings, "strings")                                                             \
    LIST(MFUInt64, UInt64s, "uint64s")                                                             \
    LIST(MFVec3f, Vec3fs, "vec3fs")                                                                \
    LIST(MFMatrix, Matrices, "matrices")                                                           \
    LIST(MFColor4f, Colors, "colors")

OSG_TABLE_BASE(FileValues, Attachment, OSG_FILE_VALUES_FIELDS)

class FileValues : public FileValuesBase {
    OSG_TABLE_MEMBERS(FileValues)
};

OSG_TABLE_INLINE(FileValues)

} // namespace osg

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
