#pragma once

/// @file
/// What all fields can do without their value type being known.

#include <OpenSG/OSGBaseTypes.h>
#include <OpenSG/OSGFieldType.h>

#include <string>

namespace osg {

class BinaryDataHandler;

/// A value, or a list of values, of a container.
///
/// Containers hand out their fields as `Field *`; the type tells which `SField` or `MField` it is.
/// Writing to a field notifies nobody: bracket it with beginEditCP and endEditCP.
class Field {
  public:
    virtual ~Field();

    virtual const FieldType& getType() const = 0;
    const DataType& getContentType() const { return getType().getContentType(); }
    FieldType::Cardinality getCardinality() const { return getType().getCardinality(); }

    /// 1 for a single field, the number of elements of a multi field.
    virtual UInt32 getSize() const = 0;
    /// Whether a multi field has no elements; a single field is never empty.
    virtual bool isEmpty() const = 0;

    /// Single field: parses the text and replaces the value. Multi field: parses one element and
    /// appends it. Text that is no value of the type changes nothing, null neither.
    virtual void pushValueByStr(const Char8* text) = 0;

    /// Single field: replaces `text` with the value's text. Multi field: appends the text of all
    /// elements, joined by ", ".
    virtual std::string& getValueByStr(std::string& text) const = 0;

    /// Single field: the value for index 0. Multi field: appends the text of one element. Nothing
    /// happens to `text` when the index is out of range.
    virtual std::string& getValueByStr(std::string& text, UInt32 index) const = 0;

    /// Copies the other field's contents when both are of one type, else does nothing.
    virtual void setAbstrValue(const Field& other) = 0;

    /// The binary form: numbers with the highest byte first, a multi field after its `UInt32` size.
    virtual UInt32 getBinSize() const = 0;
    virtual void copyToBin(BinaryDataHandler& handler) const = 0;
    virtual void copyFromBin(BinaryDataHandler& handler) = 0;

    /// Writes the contents to the log, for debugging.
    virtual void dump() const;

  protected:
    Field() = default;
    Field(const Field&) = default;
    Field& operator=(const Field&) = default;
};

namespace detail {

/// One line in the log: fields of this type have no text form, so nothing was converted.
void logNoTextForm(const FieldType& type, bool fromText);

} // namespace detail

} // namespace osg
