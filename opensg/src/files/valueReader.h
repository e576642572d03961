#pragma once

// Values of fields out of scene text.

#include "files/numberText.h"
#include "files/textScanner.h"

#include <OpenSG/OSGBaseTypes.h>

#include <string>
#include <string_view>
#include <type_traits>

namespace osg::files {

/// What came of reading a value.
enum class ValueResult {
    kRead,
    kWrongKind, ///< something that is no value of the type; the position is where it was
    kMalformed  ///< the text is broken; the reader has place and reason
};

/// Reads values at the position of a scanner.
class ValueReader {
  public:
    explicit ValueReader(TextScanner& scanner) : _scanner(scanner) {}

    TextScanner& scanner() { return _scanner; }

    /// Where and why reading failed.
    const char* errorPlace() const { return _errorPlace; }
    const std::string& error() const { return _error; }

    ValueResult fail(const char* place, std::string reason) {
        _errorPlace = place;
        _error = std::move(reason);
        return ValueResult::kMalformed;
    }

    /// One number; integers wrap into narrower types.
    template <class Number>
    ValueResult number(Number& value);

    /// `count` numbers. A value that begins but ends too early is malformed.
    template <class Number>
    ValueResult numbers(Number* values, unsigned count) {
        ValueResult result = number(values[0]);
        for (unsigned i = 1; i < count && result == ValueResult::kRead; ++i)
            result = required(number(values[i]));
        return result;
    }

    /// Turns "no number" into "malformed", for the later numbers of a value.
    ValueResult required(ValueResult result) {
        if (result != ValueResult::kWrongKind) return result;
        return fail(_scanner.at(), "a number is missing");
    }

    ValueResult boolean(bool& value);

    /// Quoted text or a bare word.
    ValueResult text(StringPlace place, std::string& value);

    /// Takes the text of a value of unknown type that is no container: a quoted text, a run of
    /// numbers (in a list up to the next comma), or a word on the same line. `raw` is what stands
    /// in the file, without quotes. kWrongKind: there is no such value here.
    ValueResult plainValue(StringPlace place, std::string& raw);

    /// Whether a number of any kind comes next, `nan` and `inf` included.
    bool isNumberNext();

  private:
    ValueResult notANumber(const char* place, bool integer);
    std::string_view wordAt(const char* place) const;

    TextScanner& _scanner;
    const char* _errorPlace = nullptr;
    std::string _error;
};

template <class Number>
ValueResult ValueReader::number(Number& value) {
    if (!_scanner.skipBlanks()) return ValueResult::kWrongKind;
    const char* const place = _scanner.at();
    const bool sureNumber = isOf(*place, kNumberFirst);
    const char* behind = nullptr;
    if constexpr (std::is_floating_point_v<Number>) {
        Number read = 0;
        behind = readReal(place, _scanner.end(), read);
        if (behind != nullptr && _scanner.isWordEnd(behind)) {
            value = read;
            _scanner.moveTo(behind);
            return ValueResult::kRead;
        }
    } else if (sureNumber) {
        IntegerText read;
        behind = readInteger(place, _scanner.end(), read);
        if (behind != nullptr && _scanner.isWordEnd(behind)) {
            value = wrapInteger<Number>(read);
            _scanner.moveTo(behind);
            return ValueResult::kRead;
        }
    }
    if (!sureNumber) return ValueResult::kWrongKind;
    return notANumber(place, !std::is_floating_point_v<Number>);
}

} // namespace osg::files
