#pragma once

// OpenSG's ASCII format, written.

#include "files/byteSink.h"
#include "files/containerTypes.h"
#include "files/fieldValues.h"
#include "files/identifiers.h"
#include "files/metContainers.h"

#include <OpenSG/OSGFieldContainer.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace osg::files {

/// Writes one text. Like the reader it keeps what is open on a stack of its own.
class AsciiWriter {
  public:
    AsciiWriter(ByteOutput& output, std::size_t indentStep)
        : _out(output), _printer(output), _indentStep(indentStep) {}

    /// The header and the containers with all they point at. Null pointers are passed over.
    void write(const std::vector<FieldContainerPtr>& containers);

    /// Whether a number was written that is not finite.
    bool sawNonFinite() const { return _printer.sawNonFinite; }

  private:
    /// A container that is being written.
    struct Frame {
        FieldContainerPtr container;
        const TypeInfo* type = nullptr;
        std::size_t level = 0;
        /// The field that is next or, inside a list of containers, the one that is being written.
        std::size_t field = 0;
        bool inField = false;
        /// The next element of a list of pointers.
        UInt32 element = 0;
        /// The place of the last attachment, shifted so that 0 is none.
        std::uint64_t attachment = 0;
    };

    void countReferences(const std::vector<FieldContainerPtr>& containers);
    void writeWhole(const FieldContainerPtr& container);
    void open(const FieldContainerPtr& container, std::size_t level);
    void writeNext();
    bool writeField(Frame& frame, const FieldInfo& info);
    bool writeAttachments(Frame& frame);
    bool writeSinglePointer(Frame& frame, const FieldInfo& info);
    bool writePointerList(Frame& frame, const FieldInfo& info);
    void writeValues(const Frame& frame, const FieldInfo& info);
    bool writeReference(const FieldContainerPtr& target, std::size_t level);
    std::string_view nameOf(const FieldContainerPtr& container);
    void indent(std::size_t level);

    ByteOutput& _out;
    ValuePrinter _printer;
    std::size_t _indentStep;
    ContainerTypes _types;
    MetContainers _met;
    std::vector<Frame> _frames;
    DefinitionNames _names;
    /// The names of the shared containers that have been written.
    std::unordered_map<UInt32, std::string> _written;
};

} // namespace osg::files
