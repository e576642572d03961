// Segments that have no value, and segments in which time runs backwards.
#include "segmentCheck.h"

#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace kvanim {
namespace {

// What the evaluation answers when there is no value.
constexpr float kNoValue = -1.0e23F;

// Rounding of handles to single precision is no time that runs backwards. Relative to the frames
// between the keys.
constexpr double kBackwardsTolerance = 1e-6;

struct Frames {
    double x0, x1, x2, x3;
};

bool isFinite(kvControlPoint::Point point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// Whether x(t) falls anywhere in [0, 1]: its slope is a quadratic whose Bernstein coefficients are
/// the steps from control point to control point.
bool runsBackwards(const Frames& f) {
    const double first = f.x1 - f.x0, middle = f.x2 - f.x1, last = f.x3 - f.x2;
    double least = (std::min)(first, last);
    const double bend = first - 2.0 * middle + last;
    if (bend > 0.0) {
        const double t = (first - middle) / bend;
        if (t > 0.0 && t < 1.0) least = (std::min)(least, (first * last - middle * middle) / bend);
    }
    return least < -kBackwardsTolerance * (f.x3 - f.x0);
}

/// The frames at which the cubic x(t) = frame has a double root, and that in the middle of them.
/// There the closed form takes its branch for repeated roots, which may have none to offer.
void addBranchFrames(const Frames& f, std::vector<float>& frames) {
    const double a3 = 3.0 * f.x1 - f.x0 - 3.0 * f.x2 + f.x3;
    const double a2 = -6.0 * f.x1 + 3.0 * f.x0 + 3.0 * f.x2;
    const double a1 = 3.0 * f.x1 - 3.0 * f.x0;
    if (a3 == 0.0) return;
    const double p = a1 / a3 - a2 * a2 / (3.0 * a3 * a3);
    const double atStart = 2.0 * a2 * a2 * a2 / (27.0 * a3 * a3 * a3) - a1 * a2 / (3.0 * a3 * a3);
    const double half = p < 0.0 ? 2.0 * std::pow(-p / 3.0, 1.5) : 0.0;
    for (const double q : {-half, 0.0, half}) {
        const float frame = static_cast<float>(f.x0 - a3 * (q - atStart));
        if (!std::isfinite(frame)) continue;
        frames.push_back(frame);
        frames.push_back(std::nextafter(frame, std::numeric_limits<float>::lowest()));
        frames.push_back(std::nextafter(frame, (std::numeric_limits<float>::max)()));
    }
}

class GapSearch {
  public:
    GapSearch(kvAnimationCurve& curve, int samples) : _curve(curve), _samples(samples) {}

    void search(std::size_t key, const Frames& f, std::vector<SegmentFault>& faults) {
        const float first = static_cast<float>(f.x0);
        const float last = std::nextafter(static_cast<float>(f.x3), first);
        chooseFrames(f, first, last);
        for (std::size_t i = 0; i < _frames.size(); ++i) {
            if (hasValue(_frames[i])) continue;
            std::size_t end = i;
            while (end + 1 < _frames.size() && !hasValue(_frames[end + 1]))
                ++end;
            const float from = i == 0 ? first : edge(_frames[i], _frames[i - 1]);
            const float to =
                end + 1 == _frames.size() ? last : edge(_frames[end], _frames[end + 1]);
            faults.push_back({key, false, from == first && to == last, from, to});
            i = end + 1; // that one has a value, or there is none
        }
    }

  private:
    bool hasValue(float frame) {
        const float value = kvAnimationManager2::computeCurveValue(&_curve, frame);
        return value != kNoValue && !std::isnan(value);
    }

    void chooseFrames(const Frames& f, float first, float last) {
        _frames.clear();
        addBranchFrames(f, _frames);
        for (int i = 0; i < _samples; ++i) {
            const double part = static_cast<double>(i) / (_samples - 1);
            _frames.push_back(static_cast<float>(f.x0 + part * (f.x3 - f.x0)));
        }
        for (float& frame : _frames)
            frame = (std::min)((std::max)(frame, first), last);
        std::sort(_frames.begin(), _frames.end());
        _frames.erase(std::unique(_frames.begin(), _frames.end()), _frames.end());
    }

    /// The last frame without a value on the way from one without to one with a value. Halving ends
    /// when no number lies between the two, after 64 steps at most: floats have 32 bits.
    float edge(float without, float with) {
        for (int step = 0; step < 64; ++step) {
            const float middle = static_cast<float>(
                (static_cast<double>(without) + static_cast<double>(with)) / 2.0);
            if (middle == without || middle == with) break;
            (hasValue(middle) ? with : without) = middle;
        }
        return without;
    }

    kvAnimationCurve& _curve;
    int _samples;
    std::vector<float> _frames;
};

} // namespace

std::vector<SegmentFault> segmentFaults(kvAnimationCurve& curve, int samples) {
    std::vector<SegmentFault> faults;
    const std::vector<kvControlPoint>& keys = static_cast<const kvAnimationCurve&>(curve).getCPs();
    GapSearch gaps(curve, (std::max)(samples, 2));
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
        const kvControlPoint &a = keys[i], &b = keys[i + 1];
        if (!isFinite(a.getPoint()) || !isFinite(a.getOutTangent()) ||
            !isFinite(b.getInTangent()) || !isFinite(b.getPoint()))
            continue;
        const Frames f{a.getPoint().x, a.getOutTangent().x, b.getInTangent().x, b.getPoint().x};
        if (f.x3 <= f.x0) continue;
        if (runsBackwards(f))
            faults.push_back({i, true, true, static_cast<float>(f.x0), static_cast<float>(f.x3)});
        gaps.search(i, f, faults);
    }
    return faults;
}

} // namespace kvanim
