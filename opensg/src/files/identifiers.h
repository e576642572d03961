#pragma once

// What may stand as a name in the text of a scene file, and the names under which shared containers
// are defined and used.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

namespace osg::files {

/// Classes of characters in scene text; bits of kCharacterClasses.
enum CharacterClass : std::uint8_t {
    kBlank = 1,       ///< white space, which the comma is, too
    kNameFirst = 2,   ///< may start a name
    kNameRest = 4,    ///< may stand inside a name
    kNumberFirst = 8, ///< may start a number
};

/// The classes of every character.
extern const std::uint8_t (&kCharacterClasses)[256];

inline bool isOf(char c, unsigned classes) {
    return (kCharacterClasses[static_cast<unsigned char>(c)] & classes) != 0;
}

/// Whether the text is a name that every reader of the format accepts for a container: made of the
/// allowed characters and not a reserved word.
bool isValidName(std::string_view text);

/// Hands out the names of shared containers so that each is valid and none is given twice.
class DefinitionNames {
  public:
    /// Takes `name` when it is valid and still free.
    bool take(std::string_view name);

    /// A free name made of type name and id, for a container without a usable name of its own.
    std::string make(std::string_view typeName, std::uint32_t id);

  private:
    std::unordered_set<std::string> _taken;
};

} // namespace osg::files
