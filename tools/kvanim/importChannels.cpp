// From the translation, rotation and scaling samples of a model to scalars over frames.
#include "importChannels.h"

#include <assimp/anim.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace kvanim {
namespace {

constexpr double kDegrees = 57.295779513082320877;

using Angles = std::array<double, 3>;

/// Degrees about x, y and z of a rotation applied in this order: q = qz * qy * qx.
Angles anglesOf(const aiQuaternion& q) {
    const double x = static_cast<double>(q.x), y = static_cast<double>(q.y),
                 z = static_cast<double>(q.z), w = static_cast<double>(q.w);
    const double sine = std::clamp(2.0 * (w * y - z * x), -1.0, 1.0);
    if (std::fabs(sine) > 0.9999999) {
        // Straight up or down, x and z turn about the same axis; all of it is given to x.
        return {2.0 * std::atan2(x, w) * kDegrees, std::asin(sine) * kDegrees, 0.0};
    }
    return {std::atan2(2.0 * (w * x + y * z), 1.0 - 2.0 * (x * x + y * y)) * kDegrees,
            std::asin(sine) * kDegrees,
            std::atan2(2.0 * (w * z + x * y), 1.0 - 2.0 * (y * y + z * z)) * kDegrees};
}

double nearestTurn(double angle, double to) {
    return angle - 360.0 * std::round((angle - to) / 360.0);
}

/// The same rotation written so that it follows the angles before it: by whole turns, and by the
/// second set of angles that every rotation has.
Angles following(const Angles& angles, const Angles& before) {
    const auto turned = [&](const Angles& a) {
        return Angles{nearestTurn(a[0], before[0]), nearestTurn(a[1], before[1]),
                      nearestTurn(a[2], before[2])};
    };
    const auto distance = [&](const Angles& a) {
        return std::fabs(a[0] - before[0]) + std::fabs(a[1] - before[1]) +
               std::fabs(a[2] - before[2]);
    };
    const Angles first = turned(angles);
    const Angles second = turned({angles[0] + 180.0, 180.0 - angles[1], angles[2] + 180.0});
    return distance(second) < distance(first) ? second : first;
}

/// Three channels that are filled sample by sample.
class Triple {
  public:
    Triple(const char* name, std::size_t size) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            _channels[axis].attribute = std::string(name) + "XYZ"[axis];
            _channels[axis].frames.reserve(size);
            _channels[axis].values.reserve(size);
        }
    }

    /// False when the frame does not lie behind the one before.
    bool add(double frame, const Angles& values) {
        if (!(std::isfinite(frame) && (!_last || frame > *_last))) return false;
        _last = frame;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            SourceChannel& channel = _channels[axis];
            channel.constant = channel.constant &&
                               (channel.values.empty() || channel.values.front() == values[axis]);
            channel.frames.push_back(frame);
            channel.values.push_back(values[axis]);
        }
        return true;
    }

    void moveTo(std::vector<SourceChannel>& all) {
        for (SourceChannel& channel : _channels)
            all.push_back(std::move(channel));
    }

  private:
    std::array<SourceChannel, 3> _channels;
    std::optional<double> _last;
};

Angles asAngles(const aiVector3D& v) {
    return {static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)};
}

} // namespace

std::vector<SourceChannel> channelsOf(const aiNodeAnim& source, double perTick,
                                      std::size_t& unordered) {
    std::vector<SourceChannel> all;
    Triple translation("translate", source.mNumPositionKeys);
    for (unsigned i = 0; i < source.mNumPositionKeys; ++i) {
        const aiVectorKey& key = source.mPositionKeys[i];
        unordered += translation.add(key.mTime * perTick, asAngles(key.mValue)) ? 0 : 1;
    }
    translation.moveTo(all);
    Triple rotation("rotate", source.mNumRotationKeys);
    Angles before{};
    for (unsigned i = 0; i < source.mNumRotationKeys; ++i) {
        const aiQuatKey& key = source.mRotationKeys[i];
        const Angles angles = following(anglesOf(key.mValue), before);
        if (rotation.add(key.mTime * perTick, angles))
            before = angles;
        else
            ++unordered;
    }
    rotation.moveTo(all);
    Triple scale("scale", source.mNumScalingKeys);
    for (unsigned i = 0; i < source.mNumScalingKeys; ++i) {
        const aiVectorKey& key = source.mScalingKeys[i];
        unordered += scale.add(key.mTime * perTick, asAngles(key.mValue)) ? 0 : 1;
    }
    scale.moveTo(all);
    return all;
}

} // namespace kvanim
