#pragma once

// What the tests of scenes in binary form share.

#include "opensg/fileContainers.h"
#include "opensg/sceneFileSupport.h"

#include <cstdint>
#include <string>

namespace binaryScene {

using namespace osg;

template <class Attachment>
typename Attachment::Ptr attach(const NodePtr& node) {
    const typename Attachment::Ptr attachment = Attachment::create();
    node->addAttachment(attachment);
    return attachment;
}

/// Big-endian numbers and texts in front of each other.
class Bytes {
  public:
    Bytes& number(std::uint64_t value, unsigned size) {
        for (unsigned i = 0; i < size; ++i)
            _bytes += static_cast<char>(value >> (8 * (size - 1 - i)) & 0xff);
        return *this;
    }
    Bytes& text(const std::string& value) {
        number(value.size() + 1, 4);
        _bytes += value + '\0';
        return *this;
    }
    Bytes& header() { return text("OpenSG binary V1.0").text("").text("").number(0, 8); }
    Bytes& record(const std::string& type, unsigned id, unsigned kind) {
        text(type).number(id, 4);
        if (kind != 0) number(kind, 1);
        return number(100, 2);
    }
    Bytes& field(const std::string& name, const std::string& type, const std::string& payload) {
        text(name).text(type).number(payload.size(), 4);
        _bytes += payload;
        return *this;
    }
    Bytes& end() { return text(""); }
    const std::string& str() const { return _bytes; }

  private:
    std::string _bytes;
};

inline std::string number(std::uint64_t value, unsigned size = 4) {
    return Bytes().number(value, size).str();
}

inline NodePtr readBytes(const Bytes& bytes) {
    return readText(bytes.str(), "osb");
}

/// A node with a field that no node has.
inline Bytes withUnknownFields() {
    Bytes bytes;
    bytes.header();
    bytes.record("Node", 1, 2)
        .field("colour", "SFColor3f", std::string(12, '\0'))
        .field("travMask", "SFUInt32", number(5))
        .end();
    return bytes.end();
}

} // namespace binaryScene
