// The text of numbers. Scene files and text access of fields hang on these few functions, so they
// keep to the "C" locale whatever the process has set.

#include <OpenSG/OSGBaseTypeTraits.h>

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <system_error>

namespace osg {

namespace {

bool isSpace(Char8 c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isDigit(Char8 c) {
    return c >= '0' && c <= '9';
}

Char8 toLower(Char8 c) {
    return c >= 'A' && c <= 'Z' ? static_cast<Char8>(c - 'A' + 'a') : c;
}

bool isHexDigit(Char8 c) {
    return isDigit(c) || (toLower(c) >= 'a' && toLower(c) <= 'f');
}

bool startsWith(const Char8* text, const Char8* lowerCaseWord) {
    for (; *lowerCaseWord != '\0'; ++text, ++lowerCaseWord) {
        if (toLower(*text) != *lowerCaseWord) return false;
    }
    return true;
}

/// Whether a number that its type cannot hold is too large (else it is too close to 0): the place
/// of its first digit that is not 0, counted from the point, decides together with the exponent.
bool isTooLarge(const Char8* begin, const Char8* end, bool hexadecimal) {
    const long long bitsPerDigit = hexadecimal ? 4 : 1;
    long long place = 0;
    bool seenPoint = false;
    bool seenDigit = false;
    const Char8* c = begin;
    for (; c != end; ++c) {
        if (*c == '.') {
            seenPoint = true;
        } else if (hexadecimal ? isHexDigit(*c) : isDigit(*c)) {
            seenDigit = seenDigit || *c != '0';
            if (seenDigit && !seenPoint) ++place;
            if (!seenDigit && seenPoint) --place;
        } else {
            break;
        }
    }
    if (c == end) return place > 0;
    ++c; // the exponent's letter
    const bool negative = c != end && *c == '-';
    if (c != end && (*c == '-' || *c == '+')) ++c;
    long long exponent = 0;
    for (; c != end && exponent < (1LL << 60) / 10; ++c)
        exponent = exponent * 10 + (*c - '0');
    return place * bitsPerDigit + (negative ? -exponent : exponent) > 0;
}

/// Behind everything that may belong to a number. The text may go on for megabytes, so its own end
/// is not looked for.
const Char8* endOfToken(const Char8* text) {
    while (isDigit(*text) || (toLower(*text) >= 'a' && toLower(*text) <= 'z') || *text == '.' ||
           *text == '+' || *text == '-' || *text == '(' || *text == ')' || *text == '_')
        ++text;
    return text;
}

template <class Real>
Real textToReal(const Char8* text) {
    if (text == nullptr) return 0;
    while (isSpace(*text))
        ++text;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+') ++text;
    if (*text == '-' || *text == '+') return 0; // from_chars would take a second sign

    std::chars_format format = std::chars_format::general;
    if (text[0] == '0' && toLower(text[1]) == 'x' &&
        (isHexDigit(text[2]) || (text[2] == '.' && isHexDigit(text[3])))) {
        format = std::chars_format::hex;
        text += 2;
    }
    Real value = 0;
    const std::from_chars_result result = std::from_chars(text, endOfToken(text), value, format);
    if (result.ec == std::errc::invalid_argument) return 0;
    if (result.ec == std::errc::result_out_of_range) {
        value = isTooLarge(text, result.ptr, format == std::chars_format::hex)
                    ? std::numeric_limits<Real>::infinity()
                    : Real(0);
    }
    return negative ? -value : value;
}

} // namespace

namespace detail {

void appendReal(std::string& text, Real64 value) {
    // "-1.797693e+308" is the longest.
    Char8 buffer[32];
    const std::to_chars_result result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific, 6);
    text.append(buffer, result.ptr);
}

std::string realToText(Real64 value) {
    std::string text;
    appendReal(text, value);
    return text;
}

Real32 textToReal32(const Char8* text) {
    return textToReal<Real32>(text);
}

Real64 textToReal64(const Char8* text) {
    return textToReal<Real64>(text);
}

Int64 textToInteger(const Char8* text) {
    return text == nullptr ? 0 : std::strtoll(text, nullptr, 0);
}

UInt64 textToUnsigned(const Char8* text) {
    return text == nullptr ? 0 : std::strtoull(text, nullptr, 0);
}

const Char8* nextToken(const Char8*& text) {
    static const Char8 separators[] = " \t\n,";
    if (text == nullptr) return nullptr;
    text += std::strspn(text, separators);
    if (*text == '\0') return nullptr;
    const Char8* token = text;
    text += std::strcspn(text, separators);
    return token;
}

} // namespace detail

bool TypeTraits<bool>::parse(const Char8* text, bool& value) {
    if (text == nullptr) return false;
    if (startsWith(text, "true")) {
        value = true;
    } else if (startsWith(text, "false")) {
        value = false;
    } else {
        return false;
    }
    return true;
}

bool TypeTraits<bool>::getFromString(const Char8* text) {
    bool value = false;
    parse(text, value);
    return value;
}

} // namespace osg
