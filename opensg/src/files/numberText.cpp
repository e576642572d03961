// The number forms of scene files. std::from_chars and std::to_chars do the work, since they are
// exact, fast and blind to the locale; what they leave out (a plus sign, hexadecimal prefixes,
// numbers beyond the range) is added here.

#include "files/numberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace osg::files {

namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether the text starts with `word` (in lower case) in any letter case.
bool startsWith(const char* text, const char* end, const char* word) {
    for (; *word != '\0'; ++word, ++text)
        if (text == end || lower(*text) != *word) return false;
    return true;
}

bool hasHexPrefix(const char* text, const char* end) {
    return end - text > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

/// `nan`, `inf`, `infinity`; null when the text is none of them.
template <class Real>
const char* readWord(const char* text, const char* end, Real& value) {
    if (startsWith(text, end, "infinity")) {
        value = std::numeric_limits<Real>::infinity();
        return text + 8;
    }
    if (startsWith(text, end, "inf")) {
        value = std::numeric_limits<Real>::infinity();
        return text + 3;
    }
    if (startsWith(text, end, "nan")) {
        value = std::numeric_limits<Real>::quiet_NaN();
        return text + 3;
    }
    return nullptr;
}

/// Whether a decimal number that left the range of its type is too large rather than too small: the
/// power of ten of its first digit that is not 0 tells.
bool isTooLarge(const char* text, const char* end) {
    long power = 0;
    bool significant = false;
    bool fraction = false;
    for (; text != end && lower(*text) != 'e'; ++text) {
        if (*text == '.') {
            fraction = true;
        } else {
            significant = significant || *text != '0';
            if (fraction && !significant) --power;
            if (!fraction && significant) ++power;
        }
    }
    if (text == end) return power > 0;
    ++text;
    if (text != end && *text == '+') ++text;
    long exponent = 0;
    const auto result = std::from_chars(text, end, exponent);
    if (result.ec == std::errc::result_out_of_range) return *text != '-';
    return power + exponent > 0;
}

template <class Real>
const char* readAnyReal(const char* text, const char* end, Real& value) {
    bool negative = false;
    if (text != end && (*text == '-' || *text == '+')) {
        negative = *text == '-';
        ++text;
    }
    if (text == end) return nullptr;
    Real magnitude = 0;
    const char* behind = nullptr;
    if (isDigit(*text) || *text == '.') {
        const bool hex = hasHexPrefix(text, end);
        const char* digits = hex ? text + 2 : text;
        const auto format = hex ? std::chars_format::hex : std::chars_format::general;
        const auto result = std::from_chars(digits, end, magnitude, format);
        if (result.ec == std::errc::invalid_argument) return nullptr;
        if (result.ec == std::errc::result_out_of_range) {
            // Decimals below the smallest denormal and above the largest number end up here.
            magnitude = !hex && isTooLarge(digits, result.ptr)
                            ? std::numeric_limits<Real>::infinity()
                            : Real(0);
        }
        behind = result.ptr;
    } else {
        behind = readWord(text, end, magnitude);
        if (behind == nullptr) return nullptr;
    }
    value = negative ? -magnitude : magnitude;
    return behind;
}

template <class Real>
char* printAnyReal(char* out, Real value) {
    if (std::isfinite(value)) return std::to_chars(out, out + kNumberLength, value).ptr;
    const char* word = std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
    return std::copy_n(word, std::strlen(word), out);
}

} // namespace

const char* readReal(const char* text, const char* end, float& value) {
    return readAnyReal(text, end, value);
}

const char* readReal(const char* text, const char* end, double& value) {
    return readAnyReal(text, end, value);
}

const char* readInteger(const char* text, const char* end, IntegerText& value) {
    value.negative = false;
    if (text != end && (*text == '-' || *text == '+')) {
        value.negative = *text == '-';
        ++text;
    }
    if (text == end || !isDigit(*text)) return nullptr;
    int base = 10;
    if (hasHexPrefix(text, end)) {
        base = 16;
        text += 2;
    } else if (*text == '0') {
        base = 8;
        for (const char* digit = text; digit != end && isDigit(*digit); ++digit)
            if (*digit > '7') base = 10;
    }
    const auto result = std::from_chars(text, end, value.magnitude, base);
    if (result.ec == std::errc::invalid_argument) return nullptr;
    if (result.ec == std::errc::result_out_of_range)
        value.magnitude = (std::numeric_limits<std::uint64_t>::max)();
    return result.ptr;
}

char* printReal(char* out, float value) {
    return printAnyReal(out, value);
}

char* printReal(char* out, double value) {
    return printAnyReal(out, value);
}

char* printInteger(char* out, std::uint64_t value) {
    return std::to_chars(out, out + kNumberLength, value).ptr;
}

char* printInteger(char* out, std::int64_t value) {
    return std::to_chars(out, out + kNumberLength, value).ptr;
}

} // namespace osg::files
