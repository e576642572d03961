// The state of a clip as text, of the model and of the library alike.

#include "clips/literalModel.h"
#include "support/access/kvAnimationTrack.h"

#include <kvAnimationBlock.h>
#include <kvAnimationCurve.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <cstdio>
#include <string>

namespace kvtest::model {

namespace {

std::string text(double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%a", value);
    return value != value ? "nan" : buffer;
}

std::string flags(bool active, bool fliped, bool motionBlur) {
    return std::string(active ? " active" : "") + (fliped ? " fliped" : "") +
           (motionBlur ? " blurred" : "");
}

std::string range(float first, float last) {
    return " " + text(static_cast<double>(first)) + " " + text(static_cast<double>(last));
}

template <class Point>
std::string point(const Point& p) {
    return " (" + text(p.x) + " " + text(p.y) + ")";
}

} // namespace

std::string describe(const Clip& clip, const std::string& indent) {
    std::string all =
        indent + "clip " + clip.name + flags(clip.active, clip.fliped, clip.motionBlur) + "\n";
    for (const Track& track : clip.tracks) {
        all += indent + "track " + std::to_string(track.number) +
               flags(track.active, track.fliped, track.motionBlur) +
               range(track.cachedFirst, track.cachedLast) + "\n";
        for (const auto& block : track.blocks) {
            all += indent + " block " + block->name +
                   flags(block->active, block->fliped, block->motionBlur) +
                   range(block->start, block->end) + "\n";
            for (const Curve& curve : block->curves)
                for (const Key& key : curve.keys)
                    all +=
                        indent + "  key" + point(key.point) + point(key.in) + point(key.out) + "\n";
        }
        for (const auto& sub : track.clips)
            all += describe(*sub, indent + "    ");
        for (const auto& sequence : track.sequences)
            all += indent + " sequence " + sequence->name +
                   flags(sequence->active, sequence->fliped, sequence->motionBlur) +
                   range(sequence->start, sequence->end) + "\n";
    }
    return all;
}

std::string describe(const kvAnimationClip& clip, const std::string& indent) {
    using Access = kvTestAccess<kvAnimationTrack>;
    std::string all = indent + "clip " + clip.getName() +
                      flags(clip.getActive(), clip.getFliped(), clip.getMotionBlur()) + "\n";
    for (const kvAnimationTrack* track : clip.getTracks()) {
        all += indent + "track " + std::to_string(track->getNumber()) +
               flags(track->getActive(), track->getFliped(), track->getMotionBlur()) +
               range(Access::firstFrame(*track), Access::lastFrame(*track)) + "\n";
        for (const kvAnimationBlock* block : track->getBlocks()) {
            all += indent + " block " + block->getBlockName() +
                   flags(block->getActive(), block->getFliped(), block->getMotionBlur()) +
                   range(block->getStartFrame(), block->getEndFrame()) + "\n";
            for (const kvAnimationCurve* curve : block->getBlockCurves())
                for (const kvControlPoint& key : curve->getCPs())
                    all += indent + "  key" + point(key.getPoint()) + point(key.getInTangent()) +
                           point(key.getOutTangent()) + "\n";
        }
        for (const kvAnimationClip* sub : track->getClips())
            all += describe(*sub, indent + "    ");
        for (const kvAnimationSequence2* sequence : track->getSequences())
            all += indent + " sequence " + sequence->getBlockName() +
                   flags(sequence->getActive(), sequence->getFliped(), sequence->getMotionBlur()) +
                   range(sequence->getStartFrame(), sequence->getEndFrame()) + "\n";
    }
    return all;
}

} // namespace kvtest::model
