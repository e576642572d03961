// The text form of a scene's animation that two processes compare.
#include "dump.h"

#include "numbers.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <OpenSG/OSGMatrix.h>

#include <initializer_list>
#include <utility>

namespace kvanim {
namespace {

std::string single(double value) {
    return shortest(static_cast<float>(value));
}

void addPoint(std::string& text, kvControlPoint::Point p) {
    text += ' ' + single(p.x) + ' ' + single(p.y);
}

void addCurve(std::string& text, kvAnimationCurve& curve, const std::string& indent) {
    const kvAnimationUtils2::AnimationField field = curve.getAnimationField();
    text += indent + "curve " + curve.getAnimatedAttribute() + " of " +
            nameOf(curve.getAppropriateNode()) + ", bound " +
            (field.fcId != 0 ? field.fieldName + " (" + field.globalFieldName + ' ' +
                                   std::to_string(field.valuePosition) + ")"
                             : std::string("to nothing")) +
            '\n';
    for (const kvControlPoint& key : std::as_const(curve).getCPs()) {
        text += indent + "  key " + std::to_string(key.getTangentType());
        addPoint(text, key.getPoint());
        addPoint(text, key.getInTangent());
        addPoint(text, key.getOutTangent());
        text += '\n';
    }
}

void addFlags(std::string& text, std::initializer_list<std::pair<const char*, bool>> flags) {
    for (const auto& [name, set] : flags)
        if (set) text += std::string(" ") + name;
    text += '\n';
}

void addBlock(std::string& text, kvAnimationBlock& block, const std::string& indent) {
    text += indent + "block " + block.getBlockName() + " of " + nameOf(block.getAppropriateNode()) +
            ' ' + shortest(block.getStartFrame()) + ".." + shortest(block.getEndFrame()) +
            " type " + std::to_string(block.getAnimatedType());
    addFlags(text, {{"camera", block.isCameraBlock()},
                    {"active", block.getActive()},
                    {"repeat", block.getRepeat()},
                    {"flipped", block.getFliped()},
                    {"motion blur", block.getMotionBlur()}});
    for (kvAnimationCurve* curve : block.getBlockCurves())
        if (curve != nullptr) addCurve(text, *curve, indent + "  ");
}

void addClip(std::string& text, kvAnimationClip& clip, const std::string& indent) {
    text += indent + "clip " + clip.getName();
    addFlags(text, {{"repeat", clip.getRepeat()},
                    {"flipped", clip.getFliped()},
                    {"motion blur", clip.getMotionBlur()}});
    for (const kvAnimationTrack* track : clip.getTracks()) {
        text += indent + "  track";
        addFlags(text, {{"active", track->getActive()},
                        {"flipped", track->getFliped()},
                        {"motion blur", track->getMotionBlur()}});
        for (kvAnimationBlock* block : track->getBlocks())
            addBlock(text, *block, indent + "    ");
        for (kvAnimationSequence2* item : track->getSequences())
            text += indent + "    sequence " + item->getSequence() + ' ' +
                    shortest(item->getStartFrame()) + ".." + shortest(item->getEndFrame()) + '\n';
        for (kvAnimationClip* nested : track->getClips())
            addClip(text, *nested, indent + "    ");
    }
}

void addMatrices(std::string& text, const Scene& scene, float frame) {
    scene.apply(frame);
    text += "frame " + shortest(frame) + '\n';
    for (const osg::NodePtr& node : scene.nodes()) {
        const osg::Matrix world = node->getToWorld();
        text += "  world " + nameOf(node);
        for (osg::UInt32 row = 0; row < 4; ++row)
            for (osg::UInt32 column = 0; column < 4; ++column)
                text += ' ' + shortest(world[column][row]);
        text += '\n';
    }
}

} // namespace

std::vector<float> defaultDumpFrames(const Scene& scene) {
    constexpr int kCount = 10;
    const FrameRange range = rangeOf(scene);
    std::vector<float> frames;
    frames.reserve(kCount);
    for (int i = 0; i < kCount; ++i)
        frames.push_back(range.start + (range.end - range.start) * static_cast<float>(i) /
                                           static_cast<float>(kCount - 1));
    return frames;
}

std::string dumpOf(const Scene& scene, const std::vector<float>& frames) {
    std::string text;
    for (kvAnimationCurve* curve : scene.curves())
        addCurve(text, *curve, "");
    for (kvAnimationBlock* block : scene.blocks())
        addBlock(text, *block, "");
    for (kvAnimationClip* clip : scene.clips())
        addClip(text, *clip, "");
    for (const float frame : frames)
        addMatrices(text, scene, frame);
    return text;
}

} // namespace kvanim
