#pragma once

// A container with a field that files never hold, made from the tables of the embedded scene graph:
// those of the host's containers have no such row.

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGFieldTable.h>

namespace osg {

class FileSecret;
typedef FCPtr<FieldContainerPtr, FileSecret> FileSecretPtr;

#define OSG_FILE_SECRET_FIELDS(VALUE, POINTER, LIST, POINTERS, HIDDEN)                             \
    VALUE(SFString, Label, "label")                                                                \
    HIDDEN(SFInt32, Secret, "secret")

OSG_TABLE_BASE(FileSecret, FieldContainer, OSG_FILE_SECRET_FIELDS)

class FileSecret : public FileSecretBase {
    OSG_TABLE_MEMBERS(FileSecret)
  public:
    void dump(UInt32 = 0, const BitVector = 0) const override {}
};

OSG_TABLE_INLINE(FileSecret)

} // namespace osg
