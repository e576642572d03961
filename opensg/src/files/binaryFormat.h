#pragma once

// What the reader and the writer of OpenSG's binary format agree on.
//
// Numbers have their highest byte first. A text is a 32-bit length that includes a final NUL, the
// bytes and the NUL. A file is a header and one record for each container, the root first:
//
//     header    text kHeader, text name, text options, 64-bit size (0)
//     record    text type name, 32-bit number, body; the empty type name ends the file
//     body      8-bit kind, 16-bit version, fields; the empty field name ends it
//     field     text name, text field type name, 32-bit size in bytes, that many bytes
//
// Bodies of Geometry and Image have no kind. The version is 100, so the first byte tells them
// apart.

#include <cstdint>

namespace osg::files {

constexpr char kBinaryHeader[] = "OpenSG binary V1.0";
constexpr std::uint16_t kBinaryVersion = 100;

/// The kind that a body begins with.
enum BodyKind : std::uint8_t {
    kNoKind = 0, ///< the type has bodies without one
    kOtherBody = 1,
    kNodeBody = 2,
    kCoreBody = 3,
    kAttachmentBody = 4,
    kMaterialBody = 5,
    kChunkBody = 6
};

} // namespace osg::files
