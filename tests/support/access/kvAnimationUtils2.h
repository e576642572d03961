#pragma once

#include <kvAnimationUtils2.h>

/// The registered attribute names.
template <>
struct kvTestAccess<kvAnimationUtils2> {
    static std::vector<std::string>& attributes() { return kvAnimationUtils2::_attributes(); }
};
