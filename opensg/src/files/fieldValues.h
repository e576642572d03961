#pragma once

// The values of fields in scene files: for every field type how its text is read and printed.

#include "files/byteSink.h"
#include "files/valueReader.h"

#include <OpenSG/OSGField.h>

namespace osg::files {

/// Prints values. Keeps what is common to all fields of a text.
struct ValuePrinter {
    explicit ValuePrinter(ByteOutput& output) : out(output) {}

    ByteOutput& out;
    /// Whether a number was printed that is not finite.
    bool sawNonFinite = false;
    /// Blanks in front of the lines of a list.
    std::size_t indent = 0;
    /// For types without a printer of their own.
    std::string scratch;
};

/// How the values of a field type stand in text.
struct FieldText {
    /// Reads the value of a single field, or one element and appends it. After kWrongKind and
    /// kMalformed the field is as it was.
    ValueResult (*read)(Field& field, ValueReader& reader);
    /// Prints the value of a single field, or all elements on lines of their own.
    void (*print)(const Field& field, ValuePrinter& printer);
    /// Removes the elements of a multi field and gives back what room the last ones left; null for
    /// single fields and for types that only know their own text.
    void (*clear)(Field& field);
    void (*trim)(Field& field);
    /// Bytes that a value takes in memory; a text may take as many again as it is long.
    std::size_t size;
};

/// The text of a field type. For types that are not OpenSG's own it is the text that the field
/// itself converts.
const FieldText& fieldTextOf(const Field& field);

/// How many bytes a value of a content type takes in binary form, 0 when that differs from value
/// to value or the type is not OpenSG's own.
UInt32 binaryWidthOf(const Char8* contentTypeName);

} // namespace osg::files
