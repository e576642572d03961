#pragma once

/// @file
/// One scalar of a node that animation may drive.

#include <string>

/// A channel: the name of the quantity, what it is called in a user interface, and which of its
/// scalars is meant.
struct kvOSGChannelData {
    std::string name;        ///< "translation"
    std::string label;       ///< "Translate"
    std::string suffix;      ///< "X"; empty for a quantity with one scalar
    unsigned valueIndex = 0; ///< 0 for X or R

    /// Name and suffix: "translationX".
    std::string fullName() const { return name + suffix; }
};
