#pragma once

/// @file
/// Lists of floats to and from text.

#include "kvUtilsApi.h"

#include <string>
#include <vector>

/// Text forms that do not depend on the locale. The reading side takes what OpenSG prints for field
/// values, the writing side makes what OpenSG accepts.
class KV_UTILS_API kvString {
  public:
    /// The numbers of a text, in order.
    ///
    /// The text is split at blanks, tabs, line ends and commas. A piece that is a number as a whole
    /// counts, everything else is left out: "1 x 2" holds two numbers, "TRUE", "12px" and "0x10"
    /// none. A number has an optional sign, digits with an optional point, and an optional
    /// exponent; "nan", "inf" and "infinity" in any letter case are numbers, because OpenSG prints
    /// such values so. Numbers are rounded to the nearest float; beyond its range they become
    /// infinite or zero.
    static std::vector<float> getValuesFromString(const std::string& text);

    /// The same into a vector that the caller keeps, so that reading again and again need not
    /// allocate. What the vector held is dropped.
    static void getValuesFromString(const std::string& text, std::vector<float>& values);

    /// The values with one blank between them, each with the fewest digits that read back as the
    /// very same float and without an exponent: 0.1 is "0.1", 1e-7 is "0.0000001". Minus zero is
    /// "-0". Not-a-number is "nan" whatever its sign, the infinities are "inf" and "-inf".
    static std::string createStringFromValues(const std::vector<float>& values);
};
