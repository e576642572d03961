#pragma once

// Containers with fields of every type, made from the tables of the embedded scene graph, for the
// tests of its scene files.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGFieldTable.h>
#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGNode.h>

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
