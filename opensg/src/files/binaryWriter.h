#pragma once

// OpenSG's binary format, written.

#include "files/binaryFormat.h"
#include "files/byteSink.h"
#include "files/containerTypes.h"
#include "files/metContainers.h"

#include <OpenSG/OSGBinaryDataHandler.h>
#include <OpenSG/OSGNode.h>

#include <deque>
#include <string_view>

namespace osg::files {

/// Writes one scene: the root and everything that can be reached from it, breadth first, each
/// container once.
class BinaryWriter : private BinaryDataHandler {
  public:
    explicit BinaryWriter(ByteOutput& output) : _out(output) {}

    void writeScene(const NodePtr& root);

  private:
    void write(MemoryHandle source, UInt32 size) override;

    void writeText(std::string_view text);
    void writeRecord(const FieldContainerPtr& container);
    void writeField(const FieldContainerPtr& container, const TypeInfo& type,
                    const FieldInfo& info);
    void writeAttachments(const FieldContainerPtr& container, const Field& field,
                          const FieldInfo& info);
    void writeFieldHeader(const Field& field, const FieldInfo& info, UInt32 size);
    void writePointer(const FieldContainerPtr& target);

    ByteOutput& _out;
    ContainerTypes _types;
    MetContainers _met;
    std::deque<FieldContainerPtr> _waiting;
};

} // namespace osg::files
