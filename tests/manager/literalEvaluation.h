#pragma once

// The frame evaluation once more, as plainly as it can be told and with the clips' own getters at
// every level: the model that the fast one is compared with.

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <vector>

namespace kv::test {

using Fields = std::vector<kvAnimationUtils2::AnimationField>;
using Maps = std::vector<kvAnimationManager2::AnimationMap>;

constexpr float kNone = -1.0e23F;

inline bool literalHold(float f, float s, float e, float S, float E) {
    if (!(f <= e || f == E || (f > E && e == E))) return false;
    return f >= s || f == S || (f < S && s == S);
}

inline Fields literalFields(std::vector<kvAnimationCurve*> curves, float frame) {
    float S = 1.0e23F;
    float E = -1.0e23F;
    for (kvAnimationCurve* curve : curves) {
        if (curve == nullptr) continue;
        const auto start = static_cast<float>(curve->getStartFrame());
        const auto end = static_cast<float>(curve->getEndFrame());
        if (start < S) S = start;
        if (end > E) E = end;
    }
    Fields result;
    for (kvAnimationCurve* curve : curves) {
        if (curve == nullptr) continue;
        const auto start = static_cast<float>(curve->getStartFrame());
        const auto end = static_cast<float>(curve->getEndFrame());
        if (!literalHold(frame, start, end, S, E)) continue;
        const float value = kvAnimationManager2::computeCurveValue(curve, frame);
        if (value == kNone) continue;
        kvAnimationUtils2::AnimationField field = curve->getAnimationField();
        field.value = value;
        result.push_back(field);
    }
    return result;
}

inline Fields literalFields(kvAnimationBlock* block, float frame, bool motionBlurOnly,
                            bool ignoreActivity) {
    if (block == nullptr) return {};
    if (!ignoreActivity && !block->getActive()) return {};
    if (motionBlurOnly && !block->getMotionBlur()) return {};
    return literalFields(block->getBlockCurves(), frame);
}

inline Fields literalFields(kvAnimationClip* clip, float frame, bool motionBlurOnly,
                            bool ignoreActivity) {
    if (clip == nullptr) return {};
    if (!ignoreActivity && !clip->getActive()) return {};
    const float S = clip->getStartFrame();
    const float E = clip->getEndFrame();
    Fields result;
    for (kvAnimationClip* subclip : clip->getSubclips(false, false)) {
        const float s = subclip->getStartFrame();
        const float e = subclip->getEndFrame();
        if (!literalHold(frame, s, e, S, E)) continue;
        const Fields below = literalFields(subclip, frame, motionBlurOnly, ignoreActivity);
        result.insert(result.end(), below.begin(), below.end());
    }
    for (kvAnimationBlock* block : clip->getBlocks(false, false)) {
        if (!literalHold(frame, block->getStartFrame(), block->getEndFrame(), S, E)) continue;
        const Fields own = literalFields(block, frame, motionBlurOnly, ignoreActivity);
        result.insert(result.end(), own.begin(), own.end());
    }
    return result;
}

inline Maps literalMaps(kvAnimationBlock* block, float frame) {
    Maps result;
    for (kvAnimationCurve* curve : block->getBlockCurves()) {
        if (curve == nullptr) continue;
        const float value = kvAnimationManager2::computeCurveValue(curve, frame);
        if (value == kNone) continue;
        result.push_back({curve->getAppropriateNode(), curve->getAnimatedAttribute(), value});
    }
    return result;
}

inline Maps literalMaps(kvAnimationClip* clip, float frame, bool motionBlurOnly) {
    Maps result;
    for (kvAnimationClip* subclip : clip->getSubclips(false, false)) {
        if (!subclip->getActive() || !subclip->frameInClipRange(frame)) continue;
        const Maps below = literalMaps(subclip, frame, motionBlurOnly);
        result.insert(result.end(), below.begin(), below.end());
    }
    for (kvAnimationBlock* block : clip->getBlocks(false, false)) {
        if (!block->getActive() || (motionBlurOnly && !block->getMotionBlur())) continue;
        const Maps own = literalMaps(block, frame);
        result.insert(result.end(), own.begin(), own.end());
    }
    return result;
}

} // namespace kv::test
