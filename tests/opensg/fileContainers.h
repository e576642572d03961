#pragma once

// Containers of the tests' own for scene files: one that points at others of its kind, an
// attachment with pointers of all kinds, and two with values of many types. They are made from the
// tables of the host's containers, so that an installed OpenSG knows them as well.

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGMFMathTypes.h>
#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeFields.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFMathTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>

#include <OSGContainerTable.h>

OSG_BEGIN_NAMESPACE

class FileItem;
typedef FCPtr<FieldContainerPtr, FileItem> FileItemPtr;
class FileSheet;
typedef FCPtr<AttachmentPtr, FileSheet> FileSheetPtr;
class FileValues;
typedef FCPtr<AttachmentPtr, FileValues> FileValuesPtr;
class FileRareValues;
typedef FCPtr<AttachmentPtr, FileRareValues> FileRareValuesPtr;

KV_POINTER_FIELD_DECL(FileItem)

/// A plain container: a label, and a pointer to another one.
#define TEST_FILE_ITEM_FIELDS(VALUE, VALUES, POINTER, LIST)                                        \
    VALUE(SFString, Label, "label")                                                                \
    POINTER(SFFileItemPtr, Follower, "next")

class FileItem : public FieldContainer {
    KV_CONTAINER_DECL(FileItem, FieldContainer, TEST_FILE_ITEM_FIELDS)

    void dump(UInt32 = 0, const BitVector = 0) const override {}
};
KV_CONTAINER_INLINE(FileItem)

/// An attachment with pointers of all kinds.
#define TEST_FILE_SHEET_FIELDS(VALUE, VALUES, POINTER, LIST)                                       \
    VALUE(SFString, Title, "title")                                                                \
    POINTER(SFNodePtr, Target, "target")                                                           \
    VALUE(SFReal32, Speed, "speed", 1.f)                                                           \
    LIST(MFFileItemPtr, Item, Items, "items")                                                      \
    POINTER(SFFieldContainerPtr, Anything, "anything")

class FileSheet : public Attachment {
    KV_CONTAINER_DECL(FileSheet, Attachment, TEST_FILE_SHEET_FIELDS)
};
KV_CONTAINER_INLINE(FileSheet)

/// Values of the types that OpenSG's own reader of text knows.
#define TEST_FILE_VALUES_FIELDS(VALUE, VALUES, POINTER, LIST)                                      \
    VALUE(SFBool, Bool, "bool")                                                                    \
    VALUE(SFInt8, Int8, "int8")                                                                    \
    VALUE(SFUInt8, UInt8, "uint8")                                                                 \
    VALUE(SFInt16, Int16, "int16")                                                                 \
    VALUE(SFUInt16, UInt16, "uint16")                                                              \
    VALUE(SFInt32, Int32, "int32")                                                                 \
    VALUE(SFUInt32, UInt32, "uint32")                                                              \
    VALUE(SFReal32, Real32, "real32")                                                              \
    VALUE(SFTime, Time, "time")                                                                    \
    VALUE(SFGLenum, GLenum, "glenum")                                                              \
    VALUE(SFString, String, "string")                                                              \
    VALUE(SFVec2f, Vec2f, "vec2f")                                                                 \
    VALUE(SFColor3f, Color3f, "color3f")                                                           \
    VALUE(SFColor4ub, Color4ub, "color4ub")                                                        \
    VALUE(SFMatrix, Matrix, "matrix")                                                              \
    VALUE(SFQuaternion, Quaternion, "quaternion")                                                  \
    VALUE(SFDynamicVolume, Volume, "volume")                                                       \
    VALUES(MFReal32, Real32s, "real32s")                                                           \
    VALUES(MFString, Strings, "strings")                                                           \
    VALUES(MFVec3f, Vec3fs, "vec3fs")                                                              \
    VALUES(MFColor4f, Colors, "colors")

class FileValues : public Attachment {
    KV_CONTAINER_DECL(FileValues, Attachment, TEST_FILE_VALUES_FIELDS)
};
KV_CONTAINER_INLINE(FileValues)

/// Values of types that OpenSG's reader of text has no token for: it takes such a field for the end
/// of the file. Binary files keep them.
#define TEST_FILE_RARE_VALUES_FIELDS(VALUE, VALUES, POINTER, LIST)                                 \
    VALUE(SFInt64, Int64, "int64")                                                                 \
    VALUE(SFUInt64, UInt64, "uint64")                                                              \
    VALUE(SFReal64, Real64, "real64")                                                              \
    VALUE(SFBitVector, Mask, "mask")                                                               \
    VALUE(SFVec4d, Vec4d, "vec4d")                                                                 \
    VALUE(SFPnt2f, Pnt2f, "pnt2f")                                                                 \
    VALUE(SFVec3s, Vec3s, "vec3s")                                                                 \
    VALUES(MFBool, Bools, "bools")                                                                 \
    VALUES(MFUInt64, UInt64s, "uint64s")                                                           \
    VALUES(MFMatrix, Matrices, "matrices")                                                         \
    VALUE(SFString, String, "string")

class FileRareValues : public Attachment {
    KV_CONTAINER_DECL(FileRareValues, Attachment, TEST_FILE_RARE_VALUES_FIELDS)
};
KV_CONTAINER_INLINE(FileRareValues)

OSG_END_NAMESPACE
