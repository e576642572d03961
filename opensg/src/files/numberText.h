#pragma once

// Numbers in scene files: reading them out of a text buffer without copying, and printing them with
// as few digits as bring back the same bits. None of this follows the locale of the host.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace osg::files {

/// Reads a floating-point number at `text`: sign, decimal with exponent, `0x` hexadecimal, `inf`,
/// `infinity`, `nan` in any letter case. Too large a number is infinite, too small a one is 0 or
/// denormal.
/// \return the place behind the number; null when there is none.
const char* readReal(const char* text, const char* end, float& value);
const char* readReal(const char* text, const char* end, double& value);

/// An integer as it stands in the text; a magnitude beyond 64 bits is the largest one.
struct IntegerText {
    std::uint64_t magnitude = 0;
    bool negative = false;
};

/// Reads an integer: sign, decimal, `0x` hexadecimal, octal after a leading 0 (unless a digit above
/// 7 says that decimal was meant).
/// \return the place behind the number; null when there is none.
const char* readInteger(const char* text, const char* end, IntegerText& value);

/// The integer as a value of T, wrapped into it the way the text form of integer fields wraps: 300
/// is 44 in 8 bits, -1 is the largest unsigned number.
template <class T>
T wrapInteger(const IntegerText& text) {
    static_assert(std::is_integral_v<T>, "for integer fields");
    std::uint64_t magnitude = text.magnitude;
    if constexpr (std::is_signed_v<T>) {
        const std::uint64_t limit = std::uint64_t(1) << 63;
        if (text.negative && magnitude > limit) magnitude = limit;
        if (!text.negative && magnitude >= limit) magnitude = limit - 1;
    }
    return static_cast<T>(text.negative ? std::uint64_t(0) - magnitude : magnitude);
}

/// Room that every number fits into.
constexpr std::size_t kNumberLength = 40;

/// Prints a number to `out`, which must have kNumberLength characters of room. The digits are the
/// fewest that bring the same bits back; not-a-number is `nan`, infinity `inf` or `-inf`.
/// \return the place behind the text.
char* printReal(char* out, float value);
char* printReal(char* out, double value);
char* printInteger(char* out, std::uint64_t value);
char* printInteger(char* out, std::int64_t value);

} // namespace osg::files
