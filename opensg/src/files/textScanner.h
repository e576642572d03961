#pragma once

// Walks over the text of a scene file that lies in memory and hands out its words without copying
// them. The parser asks for what it expects; nothing is turned into tokens ahead of that.

#include "files/identifiers.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace osg::files {

/// Where a quoted text stands. Tells its end when its writer did not escape the quotes inside.
enum class StringPlace { kSingle, kInList };

/// A position in scene text. The text must stay alive and unchanged.
class TextScanner {
  public:
    TextScanner(const char* begin, const char* end) : _begin(begin), _at(begin), _end(end) {}

    const char* at() const { return _at; }
    const char* end() const { return _end; }
    void moveTo(const char* place) { _at = place; }

    /// The line that a place is in, from 1. Counts lines: for messages only.
    std::size_t lineOf(const char* place) const;

    /// Skips white space, commas and comments, and tells whether anything is left.
    bool skipBlanks() {
        while (_at != _end) {
            if (*_at == ' ') {
                skipSpaces();
            } else if (isOf(*_at, kBlank)) {
                ++_at;
            } else if (*_at == '#') {
                skipLine();
            } else {
                return true;
            }
        }
        return false;
    }

    /// Like skipBlanks; tells whether a comma was passed.
    bool skipBlanksSawComma();

    /// The next character after blanks, '\0' at the end.
    char peek() { return skipBlanks() ? *_at : '\0'; }

    /// Takes `c` if it comes next.
    bool take(char c) {
        if (peek() != c) return false;
        ++_at;
        return true;
    }

    /// Takes `word` if it comes next and is not just the start of a longer name.
    bool takeWord(std::string_view word) {
        if (!skipBlanks() || !startsWith(_at, word)) return false;
        _at += word.size();
        return true;
    }

    /// Takes a name; empty when none comes next.
    std::string_view takeName() {
        if (!skipBlanks() || !isOf(*_at, kNameFirst)) return {};
        const char* start = _at;
        do
            ++_at;
        while (_at != _end && isOf(*_at, kNameRest));
        return {start, static_cast<std::size_t>(_at - start)};
    }

    /// The name that comes next, without taking it.
    std::string_view peekName() {
        const std::string_view name = takeName();
        _at -= name.size();
        return name;
    }

    /// Takes a quoted text and removes the escapes. Texts with quotes that were not escaped by
    /// their writer are taken whole when the rest of the line leaves no doubt.
    /// \return false when the text does not end; the position is then unchanged.
    bool takeString(StringPlace place, std::string& text);

    /// The rest of the line, or a part of it when the line is very long.
    std::string_view restOfLine() const;

    /// Whether `place` is where a word may end: at a blank, a bracket, a comment or the end.
    bool isWordEnd(const char* place) const {
        return place == _end || !isOf(*place, kNameRest | kNumberFirst);
    }

  private:
    bool startsWith(const char* place, std::string_view word) const {
        return static_cast<std::size_t>(_end - place) >= word.size() &&
               std::string_view(place, word.size()) == word && isWordEnd(place + word.size());
    }

    void skipSpaces();
    void skipLine();
    const char* findStringEnd(const char* from, StringPlace place) const;
    bool quoteEndsString(const char* quote, StringPlace place) const;
    const char* findLineEnd(const char* from) const;

    const char* _begin;
    const char* _at;
    const char* _end;
};

} // namespace osg::files
