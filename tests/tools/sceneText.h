#pragma once

#include <string>
#include <vector>

namespace kv::test {

/// Stored animation as the text of a scene file, so that a test can write what no writer would.

/// A key whose handles lie on it: between two of these the first value is held.
std::string heldKey(const std::string& frame, const std::string& value = "0");
/// A key with handles at these frames and at its own value, kept as they are.
std::string keyText(const std::string& frame, const std::string& inFrame,
                    const std::string& outFrame);

/// What a curve says about the scene. Empty texts leave a field out.
struct CurveText {
    std::string keys = heldKey("0") + heldKey("10");
    std::string attribute = "translateX";
    std::string node = "Hips";
    std::string fieldNode = "Hips";
    std::string fieldName = "translationX";
    std::string globalFieldName = "translation";
    int position = 0;
};
std::string text(const CurveText& curve);

/// A block with that name on the node; without a node for an empty name.
std::string blockText(const std::string& name, const std::string& curves,
                      const std::string& node = "Hips");
/// A block with one curve held over these frames.
std::string heldBlock(const std::string& name, int first, int last);

/// A track with these lists.
std::string trackText(const std::string& blocks, const std::string& sequences = "",
                      const std::string& clips = "");
std::string sequenceText(const std::string& name, const std::string& start, const std::string& end);
std::string clipText(const std::string& name, const std::string& tracks);

/// A scene with one node "Hips", whose core is a component transform, that carries the records.
std::string sceneText(const std::string& blocks, const std::string& looseCurves = "",
                      const std::string& clips = "");

} // namespace kv::test
