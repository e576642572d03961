// Numbers as text that reads back exactly.
#include "numbers.h"

#include <array>
#include <charconv>

namespace kvanim {
namespace {

template <class T>
std::string print(T value) {
    std::array<char, 64> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return std::string(text.data(), end);
}

} // namespace

std::string shortest(float value) {
    return print(value);
}
std::string shortest(double value) {
    return print(value);
}

std::string brief(double value) {
    std::array<char, 64> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, 6)
            .ptr;
    return std::string(text.data(), end);
}

} // namespace kvanim
