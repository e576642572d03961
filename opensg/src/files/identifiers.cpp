// Names in scene text: which characters and words are allowed, and how shared containers get names
// that are.

#include "files/identifiers.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <iterator>

namespace osg::files {

namespace {

struct CharacterTable {
    std::uint8_t classes[256] = {};

    constexpr CharacterTable() {
        for (unsigned c = 0; c < 256; ++c) {
            const bool control = c < 32 || c == 127;
            const bool digit = c >= '0' && c <= '9';
            bool first = !control && !digit;
            bool rest = !control;
            for (char excluded : {' ', '"', '#', '\'', ',', '.', '[', '\\', ']', '{', '}'})
                if (c == static_cast<unsigned char>(excluded)) first = rest = false;
            if (c == '+' || c == '-') first = false;
            unsigned bits = 0;
            if (c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == ',') bits |= kBlank;
            if (first) bits |= kNameFirst;
            if (rest) bits |= kNameRest;
            if (digit || c == '+' || c == '-' || c == '.') bits |= kNumberFirst;
            classes[c] = static_cast<std::uint8_t>(bits);
        }
    }
};

constexpr CharacterTable kTable;

/// Words that readers take for something else, in the order that binary search needs.
constexpr std::string_view kReserved[] = {"AS",
                                          "COMPONENT",
                                          "DEF",
                                          "EXPORT",
                                          "EXTERNPROTO",
                                          "IMPORT",
                                          "IS",
                                          "META",
                                          "NULL",
                                          "PROFILE",
                                          "PROTO",
                                          "ROUTE",
                                          "TO",
                                          "USE",
                                          "eventIn",
                                          "eventOut",
                                          "exposedField",
                                          "field",
                                          "initializeOnly",
                                          "inputOnly",
                                          "inputOutput",
                                          "outputOnly"};

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) {
    return text.size() == lowerCase.size() &&
           std::equal(text.begin(), text.end(), lowerCase.begin(), [](char a, char b) {
               return std::tolower(static_cast<unsigned char>(a)) == b;
           });
}

bool isReserved(std::string_view text) {
    if (std::binary_search(std::begin(kReserved), std::end(kReserved), text)) return true;
    if (equalsIgnoringCase(text, "true") || equalsIgnoringCase(text, "false")) return true;
    // The names of field types (SFBool, MFVec3f, ...) are words of the language as well. The list
    // differs between versions, so whatever looks like one counts.
    return text.size() > 2 && (text[0] == 'S' || text[0] == 'M') && text[1] == 'F' &&
           text[2] >= 'A' && text[2] <= 'Z';
}

} // namespace

const std::uint8_t (&kCharacterClasses)[256] = kTable.classes;

bool isValidName(std::string_view text) {
    if (text.empty() || !isOf(text.front(), kNameFirst)) return false;
    if (!std::all_of(text.begin(), text.end(), [](char c) { return isOf(c, kNameRest); }))
        return false;
    return !isReserved(text);
}

bool DefinitionNames::take(std::string_view name) {
    return isValidName(name) && _taken.emplace(name).second;
}

std::string DefinitionNames::make(std::string_view typeName, std::uint32_t id) {
    const std::string stem =
        (isValidName(typeName) ? std::string(typeName) : "Container") + std::to_string(id);
    std::string name = stem;
    for (unsigned attempt = 2; !take(name); ++attempt)
        name = stem + "_" + std::to_string(attempt);
    return name;
}

} // namespace osg::files
