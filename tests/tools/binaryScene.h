#pragma once

#include <string>

namespace kv::test {

/// A scene of sceneText.h in binary form, with another number in place of every key's coordinate
/// and sequence's frame that is `placeholder`. Not every reader of text takes numbers that are not
/// finite.
std::string binaryScene(const std::string& text, float placeholder, float number);

} // namespace kv::test
