#pragma once

// Curves to measure: the same keys for every rung of the ladder and for every peer.

#include <OpenSG/OSGConfig.h>

#include <kvAnimationCurve.h>

#include <cstddef>
#include <random>
#include <vector>

namespace kv::bench {

constexpr double kFramesPerKey = 10.0;

/// The value of key number i, smooth enough to be an animation.
inline float keyValue(std::size_t i) {
    return static_cast<float>((i * 7919U) % 101U) * 0.1F;
}

/// n keys, ten frames apart, of type User. The handles lie at 0.3 and 0.6 of each segment, so that
/// the cubic in time has nothing special about it. The first key stands at `start`.
inline void fillCurve(kvAnimationCurve& curve, std::size_t n, float start = 0.0F) {
    for (std::size_t i = 0; i < n; ++i) {
        const float x = start + static_cast<float>(kFramesPerKey * static_cast<double>(i));
        const float y = keyValue(i);
        curve.importControlPoint(x, y, x - 4.0F, y, x + 3.0F, y, 6);
    }
}

/// Frames over the whole curve, in playback order (an even step) or shuffled.
inline std::vector<float> framesOver(std::size_t keys, std::size_t count, bool shuffled) {
    const double end = kFramesPerKey * static_cast<double>(keys - 1);
    std::vector<float> frames(count);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> anywhere(0.0, end);
    for (std::size_t i = 0; i < count; ++i)
        frames[i] = static_cast<float>(shuffled ? anywhere(random)
                                                : end * static_cast<double>(i) /
                                                      static_cast<double>(count));
    return frames;
}

} // namespace kv::bench
