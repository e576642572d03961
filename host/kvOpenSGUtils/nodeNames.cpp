// Names of nodes, and what of them is UTF-8.
#include "kvNodeUtils.h"

#include <OpenSG/OSGSimpleAttachments.h>

#include <cstddef>

namespace {

unsigned byteAt(const std::string& text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

/// The length of the well-formed UTF-8 sequence at a place; 0 when there is none. Neither overlong
/// forms nor surrogates nor what lies beyond U+10FFFF are well formed.
std::size_t sequenceLength(const std::string& text, std::size_t index) {
    const unsigned lead = byteAt(text, index);
    if (lead < 0x80) return 1;
    const std::size_t length = lead < 0xC2   ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || text.size() - index < length) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byteAt(text, index + i) & 0xC0) != 0x80) return 0;
    const unsigned second = byteAt(text, index + 1);
    if (lead == 0xE0 && second < 0xA0) return 0;
    if (lead == 0xED && second > 0x9F) return 0;
    if (lead == 0xF0 && second < 0x90) return 0;
    if (lead == 0xF4 && second > 0x8F) return 0;
    return length;
}

/// Every byte that begins no well-formed sequence becomes U+FFFD.
std::string wellFormed(const std::string& text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = sequenceLength(text, i);
        if (length == 0) {
            result += "\xEF\xBF\xBD";
            ++i;
        } else {
            result.append(text, i, length);
            i += length;
        }
    }
    return result;
}

} // namespace

std::string kvNodeUtils::getName(const osg::NodePtr& node) {
    if (node == osg::NullFC) return std::string();
    const osg::Char8* const name = osg::getName(node);
    return name ? std::string(name) : std::string();
}

void kvNodeUtils::setName(const osg::NodePtr& node, const std::string& name, bool utf8) {
    if (node == osg::NullFC) return;
    osg::beginEditCP(node, osg::Node::AttachmentsFieldMask);
    if (name.empty())
        osg::setName(node, static_cast<const osg::Char8*>(nullptr));
    else
        osg::setName(node, utf8 ? wellFormed(name) : name);
    osg::endEditCP(node, osg::Node::AttachmentsFieldMask);
}

bool kvNodeUtils::hasUtf8Name(const osg::NodePtr& node) {
    const std::string name = getName(node);
    bool beyondAscii = false;
    for (std::size_t i = 0; i < name.size();) {
        const std::size_t length = sequenceLength(name, i);
        if (length == 0) return false;
        beyondAscii = beyondAscii || length > 1;
        i += length;
    }
    return beyondAscii;
}
