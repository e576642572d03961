#pragma once

#include <string>

namespace kvanim {

/// The fewest digits that read back as the same number, whatever the locale.
std::string shortest(float value);
std::string shortest(double value);

/// Six significant digits, for people and for rates that a source knows no better.
std::string brief(double value);

} // namespace kvanim
