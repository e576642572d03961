// Reading numbers, words and texts, and telling a value of the wrong kind, which is passed over,
// from broken text, which ends the reading of the file.

#include "files/valueReader.h"

#include <algorithm>

namespace osg::files {

namespace {

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) {
    return text.size() == lowerCase.size() &&
           std::equal(text.begin(), text.end(), lowerCase.begin(), [](char a, char b) {
               return a == b || (a >= 'A' && a <= 'Z' && a + 32 == b);
           });
}

} // namespace

std::string_view ValueReader::wordAt(const char* place) const {
    const char* behind = place;
    while (behind != _scanner.end() && isOf(*behind, kNameRest | kNumberFirst))
        ++behind;
    return {place, static_cast<std::size_t>(behind - place)};
}

ValueResult ValueReader::notANumber(const char* place, bool integer) {
    const std::string word(wordAt(place).substr(0, 40));
    return fail(place, "\"" + word + (integer ? "\" is no integer" : "\" is no number"));
}

ValueResult ValueReader::boolean(bool& value) {
    const std::string_view word = _scanner.peekName();
    const bool isTrue = equalsIgnoringCase(word, "true");
    if (!isTrue && !equalsIgnoringCase(word, "false")) return ValueResult::kWrongKind;
    value = isTrue;
    _scanner.moveTo(_scanner.at() + word.size());
    return ValueResult::kRead;
}

ValueResult ValueReader::text(StringPlace place, std::string& value) {
    if (_scanner.peek() == '"') {
        const char* const start = _scanner.at();
        if (_scanner.takeString(place, value)) return ValueResult::kRead;
        return fail(start, "a text has no closing quote");
    }
    const std::string_view word = _scanner.takeName();
    if (word.empty()) return ValueResult::kWrongKind;
    value = word;
    return ValueResult::kRead;
}

bool ValueReader::isNumberNext() {
    if (!_scanner.skipBlanks()) return false;
    if (isOf(*_scanner.at(), kNumberFirst)) return true;
    double ignored = 0;
    const char* const behind = readReal(_scanner.at(), _scanner.end(), ignored);
    return behind != nullptr && _scanner.isWordEnd(behind);
}

ValueResult ValueReader::plainValue(StringPlace place, std::string& raw) {
    raw.clear();
    const char* const start = _scanner.at();
    if (_scanner.peek() == '"') return text(place, raw);
    if (isNumberNext()) {
        const char* const first = _scanner.at();
        const char* behind = first;
        bool more = true;
        while (more) {
            behind = _scanner.at() + wordAt(_scanner.at()).size();
            _scanner.moveTo(behind);
            const bool comma = _scanner.skipBlanksSawComma();
            more = !(comma && place == StringPlace::kInList) && isNumberNext();
        }
        raw.assign(first, behind);
        return ValueResult::kRead;
    }
    const std::string_view word = _scanner.peekName();
    if (word.empty() || std::find(start, word.data(), '\n') != word.data())
        return ValueResult::kWrongKind;
    raw = word;
    _scanner.moveTo(word.data() + word.size());
    return ValueResult::kRead;
}

} // namespace osg::files
