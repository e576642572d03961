// Lists of floats to and from text, with the conversions of the standard library that know no
// locale.
#include "kvString.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace {

bool isSeparator(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f' || c == ',';
}

/// A double as a float; what lies beyond the floats becomes infinite.
float narrowed(double value) {
    // Values up to here still round to the largest float: half a step above it.
    constexpr double kLargest = 3.4028235677973366e38;
    if (value >= kLargest) return std::numeric_limits<float>::infinity();
    if (value <= -kLargest) return -std::numeric_limits<float>::infinity();
    return static_cast<float>(value);
}

/// The value of digits that are a number but not one within the range of a float.
float outOfRange(const char* begin, const char* end, bool negative) {
    double wide = 0.0;
    if (std::from_chars(begin, end, wide).ec == std::errc()) return narrowed(wide);
    // Not within the range of a double either. Such a number is huge unless its exponent is
    // negative or it begins with a row of zeros.
    bool tiny =
        *begin == '0' || *begin == '.' || (*begin == '-' && (begin[1] == '0' || begin[1] == '.'));
    for (const char* c = begin; c + 1 < end; ++c)
        if (*c == 'e' || *c == 'E') tiny = c[1] == '-';
    const float magnitude = tiny ? 0.0f : std::numeric_limits<float>::infinity();
    return negative ? -magnitude : magnitude;
}

/// Appends the number that a piece of text is; nothing when it is not one as a whole.
void appendNumber(const char* begin, const char* end, std::vector<float>& values) {
    // The standard conversion takes a minus but no plus, nor both.
    if (*begin == '+' && (++begin == end || *begin == '-')) return;
    float value = 0.0f;
    const std::from_chars_result result = std::from_chars(begin, end, value);
    if (result.ptr != end || result.ec == std::errc::invalid_argument) return;
    if (result.ec == std::errc::result_out_of_range) value = outOfRange(begin, end, *begin == '-');
    values.push_back(value);
}

} // namespace

void kvString::getValuesFromString(const std::string& text, std::vector<float>& values) {
    values.clear();
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        if (isSeparator(*position)) {
            ++position;
            continue;
        }
        const char* const begin = position;
        while (position != end && !isSeparator(*position))
            ++position;
        appendNumber(begin, position, values);
    }
}

std::vector<float> kvString::getValuesFromString(const std::string& text) {
    std::vector<float> values;
    getValuesFromString(text, values);
    return values;
}

std::string kvString::createStringFromValues(const std::vector<float>& values) {
    // The longest: a sign, "0.", 44 zeros and 9 digits for the smallest numbers.
    char digits[64];
    std::string text;
    for (const float value : values) {
        if (!text.empty()) text += ' ';
        if (std::isnan(value)) {
            text += "nan";
        } else if (std::isinf(value)) {
            text += value < 0.0f ? "-inf" : "inf";
        } else {
            const std::to_chars_result result =
                std::to_chars(digits, digits + sizeof(digits), value, std::chars_format::fixed);
            text.append(digits, result.ptr);
        }
    }
    return text;
}
