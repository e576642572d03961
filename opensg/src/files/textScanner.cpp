// The lexical side of scene text. Indentation makes up most of a deep scene, so blanks are passed
// eight at a time.

#include "files/textScanner.h"

#include <algorithm>
#include <cstring>

namespace osg::files {

namespace {

/// How far the end of a line is looked for where that is only a hint. Keeps a file of a single line
/// from being searched again for each of its words.
constexpr std::size_t kLongestLine = 4096;

bool isOneOf(char c, std::string_view characters) {
    return characters.find(c) != std::string_view::npos;
}

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

const char* skipSpacesOfLine(const char* place, const char* end) {
    while (place != end && isSpace(*place))
        ++place;
    return place;
}

} // namespace

std::size_t TextScanner::lineOf(const char* place) const {
    return 1 + static_cast<std::size_t>(std::count(_begin, place, '\n'));
}

void TextScanner::skipSpaces() {
    const char spaces[] = "        ";
    while (_end - _at >= 8 && std::memcmp(_at, spaces, 8) == 0)
        _at += 8;
    while (_at != _end && *_at == ' ')
        ++_at;
}

void TextScanner::skipLine() {
    const void* newline = std::memchr(_at, '\n', static_cast<std::size_t>(_end - _at));
    _at = newline == nullptr ? _end : static_cast<const char*>(newline) + 1;
}

bool TextScanner::skipBlanksSawComma() {
    bool comma = false;
    while (_at != _end) {
        if (*_at == '#') {
            skipLine();
        } else if (isOf(*_at, kBlank)) {
            comma = comma || *_at == ',';
            ++_at;
        } else {
            break;
        }
    }
    return comma;
}

const char* TextScanner::findLineEnd(const char* from) const {
    const std::size_t length = (std::min)(static_cast<std::size_t>(_end - from), kLongestLine);
    const void* newline = std::memchr(from, '\n', length);
    return newline == nullptr ? from + length : static_cast<const char*>(newline);
}

std::string_view TextScanner::restOfLine() const {
    return {_at, static_cast<std::size_t>(findLineEnd(_at) - _at)};
}

/// Whether a quote inside a text is its end. Nothing but a blank, a comment or a bracket may follow
/// a text; where that holds by accident, the rest of the line must not look like the end of this
/// same text: an odd number of quotes of which the last closes a word at the line's end.
bool TextScanner::quoteEndsString(const char* quote, StringPlace place) const {
    const char* next = quote + 1;
    const char* lineEnd = findLineEnd(next);
    const char* word = skipSpacesOfLine(next, lineEnd);
    if (word == lineEnd || isOneOf(*word, ",]}#")) return true;
    if (word == next) return false;
    if (place == StringPlace::kInList) return true;
    while (isSpace(lineEnd[-1]))
        --lineEnd;
    if (lineEnd[-1] != '"' || isSpace(lineEnd[-2])) return true;
    return std::count(next, lineEnd, '"') % 2 == 0;
}

/// The closing quote of a text that starts at `from`; null when there is none.
const char* TextScanner::findStringEnd(const char* from, StringPlace place) const {
    const char* quote = from;
    while (quote != _end && *quote != '"')
        quote += quote + 1 != _end && *quote == '\\' && isOneOf(quote[1], "\"\\") ? 2 : 1;
    if (quote == _end) return nullptr;
    if (quoteEndsString(quote, place)) return quote;

    // The text was written without escapes, and on one line: alone it reaches to the line's last
    // quote, in a list to the first one that ends an element.
    const char* lineEnd = findLineEnd(quote);
    const char* last = quote;
    for (const char* other = quote + 1; other != lineEnd; ++other) {
        if (*other != '"') continue;
        last = other;
        const char* next = skipSpacesOfLine(other + 1, lineEnd);
        if (place == StringPlace::kInList && (next == lineEnd || isOneOf(*next, ",]"))) break;
    }
    return last;
}

bool TextScanner::takeString(StringPlace place, std::string& text) {
    const char* from = _at + 1;
    const char* quote = findStringEnd(from, place);
    if (quote == nullptr) return false;
    text.clear();
    while (from != quote) {
        const void* found = std::memchr(from, '\\', static_cast<std::size_t>(quote - from));
        const char* slash = found == nullptr ? quote : static_cast<const char*>(found);
        text.append(from, slash);
        from = slash;
        if (from == quote) break;
        const bool escape = from + 1 != quote && (from[1] == '"' || from[1] == '\\');
        text += escape ? from[1] : '\\';
        from += escape ? 2 : 1;
    }
    _at = quote + 1;
    return true;
}

} // namespace osg::files
