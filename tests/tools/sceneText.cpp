// Scene files as text, record by record.
#include "tools/sceneText.h"

namespace kv::test {
namespace {

std::string point(const char* field, const std::string& frame, const std::string& value) {
    return std::string(field) + ' ' + frame + ' ' + value + '\n';
}

std::string reference(const char* field, const std::string& node) {
    return node.empty() ? std::string() : std::string(field) + " USE " + node + '\n';
}

std::string quoted(const char* field, const std::string& value) {
    return value.empty() ? std::string() : std::string(field) + " \"" + value + "\"\n";
}

std::string list(const char* field, const std::string& elements) {
    return std::string(field) + " [\n" + elements + "]\n";
}

} // namespace

std::string heldKey(const std::string& frame, const std::string& value) {
    return "AnimationControlPoint {\n" + point("ControlPoint", frame, value) +
           point("InTangent", frame, value) + point("OutTangent", frame, value) +
           "TangentType 6\n}\n";
}

std::string keyText(const std::string& frame, const std::string& inFrame,
                    const std::string& outFrame) {
    return "AnimationControlPoint {\n" + point("ControlPoint", frame, "1") +
           point("InTangent", inFrame, "1") + point("OutTangent", outFrame, "1") +
           "TangentType 6\n}\n";
}

std::string text(const CurveText& curve) {
    return "AnimationCurve {\n" + quoted("Belongs2Attribute", curve.attribute) +
           reference("AppropriateNode", curve.node) + reference("AFAppNode", curve.fieldNode) +
           quoted("AFFieldName", curve.fieldName) +
           quoted("AFGlobalFieldName", curve.globalFieldName) + "AFValuePosition " +
           std::to_string(curve.position) + '\n' + list("controlPoints", curve.keys) + "}\n";
}

std::string blockText(const std::string& name, const std::string& curves, const std::string& node) {
    return "AnimationBlock {\n" + quoted("Name", name) + reference("AppropriateNode", node) +
           "Activity TRUE\n" + list("curves", curves) + "}\n";
}

std::string heldBlock(const std::string& name, int first, int last) {
    CurveText curve;
    curve.keys = heldKey(std::to_string(first)) + heldKey(std::to_string(last));
    return blockText(name, text(curve));
}

std::string trackText(const std::string& blocks, const std::string& sequences,
                      const std::string& clips) {
    return "AnimationTrack {\nActive TRUE\n" + list("blocks", blocks) +
           list("sequences", sequences) + list("clips", clips) + "}\n";
}

std::string sequenceText(const std::string& name, const std::string& start,
                         const std::string& end) {
    return "AnimationBlock {\n" + quoted("Name", name) + "Start " + start + "\nEnd " + end +
           "\n}\n";
}

std::string clipText(const std::string& name, const std::string& tracks) {
    return "AnimationClip {\n" + quoted("Name", name) + list("tracks", tracks) + "}\n";
}

std::string sceneText(const std::string& blocks, const std::string& looseCurves,
                      const std::string& clips) {
    return "#OSG V1.0 \nDEF Hips Node {\ncore ComponentTransform {\n}\n"
           "attachments [\nName {\nname \"Hips\"\n}\nAnimationAttachment {\n" +
           list("curves", looseCurves) + list("blocks", blocks) + list("clips", clips) +
           "}\n]\n}\n";
}

} // namespace kv::test
