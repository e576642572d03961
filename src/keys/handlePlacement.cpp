// Placement of Bezier handles: one function for each type of tangent. The forms of the expressions
// (which slope, whether an arctangent is taken back by a tangent, which differences pass through
// single precision) decide the last bits of every handle and are deliberate.
#include "keys/handlePlacement.h"

#include <kvControlPointManager.h>

#include <cmath>

namespace kv::detail {

namespace {

using Point = kvControlPoint::Point;
using Placed = std::optional<HandlePair>;

// A third as single precision has it, used in double arithmetic.
constexpr double kThird = 0.3333333432674408;

// The length of the handles in mode Fixed.
constexpr double kFixedLength = 2.0;

double slope(Point a, Point b) {
    return (b.y - a.y) / (b.x - a.x);
}
double angle(Point a, Point b) {
    return std::atan(slope(a, b));
}
double single(double v) {
    return static_cast<double>(static_cast<float>(v));
}

Point plus(Point p, Point offset) {
    return {p.x + offset.x, p.y + offset.y};
}
Point minus(Point p, Point offset) {
    return {p.x - offset.x, p.y - offset.y};
}

// `length` along a direction.
Point along(double theta, double length) {
    return {length * std::cos(theta), length * std::sin(theta)};
}

// `length` along the frame axis, on a line of this slope. Going through the angle is deliberate.
Point onSlope(double s, double length) {
    return {length, std::tan(std::atan(s)) * length};
}

HandlePair symmetric(Point p, Point offset) {
    return {minus(p, offset), plus(p, offset)};
}
HandlePair horizontal(Point p, double length) {
    return {{p.x - length, p.y}, {p.x + length, p.y}};
}

// The factor of the frame distance in the modes Half and Third.
double fraction(int mode) {
    return mode == kvControlPointManager::Half ? 0.5 : kThird;
}

// The two ends of the chord that a key's handles are measured by: its neighbours, or itself where
// it is the first or the last key. Not valid when one of them is missing.
struct Chord {
    explicit Chord(const KeySurroundings& key)
        : from(key.role == KeyRole::First ? &key.point : key.previous),
          to(key.role == KeyRole::Last ? &key.point : key.next) {}
    bool valid() const { return from != nullptr && to != nullptr; }
    double frames() const { return to->x - from->x; }

    const Point* from;
    const Point* to;
};

// How far the handles of a middle key reach in mode Half: a third of the chord between its
// neighbours, but never beyond half of the way to the neighbour on their own side.
struct LimitedLengths {
    explicit LimitedLengths(const KeySurroundings& key) {
        const double chord = single(kThird * (key.next->x - key.previous->x));
        const double toPrevious = single(key.point.x - key.previous->x) * 0.5;
        const double toNext = single(key.next->x - key.point.x) * 0.5;
        in = chord < toPrevious ? chord : toPrevious;
        // Not the mirror of the line above: a NaN here ends on the other side.
        out = toNext > chord ? chord : toNext;
    }

    double in;
    double out;
};

HandlePair limitedOnAngle(const KeySurroundings& key, double theta) {
    const LimitedLengths length(key);
    const double rise = std::tan(theta);
    return {minus(key.point, {length.in, rise * length.in}),
            plus(key.point, {length.out, rise * length.out})};
}

Placed aimed(int mode, const KeySurroundings& key) {
    if (!Chord(key).valid()) return {};
    const Point p = key.point;
    const Point* q = key.previous;
    const Point* n = key.next;
    const bool fixed = mode == kvControlPointManager::Fixed;

    if (key.role == KeyRole::Middle) {
        if (fixed)
            return HandlePair{minus(p, along(angle(p, *q), kFixedLength)),
                              plus(p, along(angle(p, *n), kFixedLength))};
        if (mode == kvControlPointManager::Half)
            return HandlePair{minus(p, onSlope(slope(*q, p), 0.5 * (p.x - q->x))),
                              plus(p, onSlope(slope(p, *n), 0.5 * (n->x - p.x)))};
        // Unlike Half, Third measures along the handle: its length in the plane, not in frames.
        const double length = kThird * (n->x - q->x);
        return HandlePair{minus(p, along(angle(*q, p), length)),
                          plus(p, along(angle(p, *n), length))};
    }
    if (key.role == KeyRole::First) {
        const double length = fixed ? kFixedLength : fraction(mode) * (n->x - p.x);
        const Point offset =
            fixed ? along(angle(p, *n), kFixedLength) : onSlope(slope(p, *n), length);
        return HandlePair{{p.x - length, p.y}, plus(p, offset)};
    }
    const double length = fixed ? kFixedLength : fraction(mode) * (p.x - q->x);
    const Point offset = fixed ? along(angle(p, *q), kFixedLength) : onSlope(slope(*q, p), length);
    return HandlePair{minus(p, offset), {p.x + length, p.y}};
}

Placed smooth(int mode, const KeySurroundings& key) {
    const Chord chord(key);
    if (!chord.valid()) return {};
    const Point a = *chord.from;
    const Point b = *chord.to;
    if (mode == kvControlPointManager::Fixed)
        return symmetric(key.point, along(angle(a, b), kFixedLength));
    if (mode == kvControlPointManager::Third)
        return symmetric(key.point, {kThird * (b.x - a.x), kThird * (b.y - a.y)});
    if (key.role == KeyRole::Middle) return limitedOnAngle(key, angle(a, b));
    return symmetric(key.point, onSlope(slope(a, b), 0.5 * chord.frames()));
}

Placed flat(int mode, const KeySurroundings& key) {
    if (mode == kvControlPointManager::Fixed) return horizontal(key.point, kFixedLength);
    const Chord chord(key);
    if (!chord.valid()) return {};
    if (mode == kvControlPointManager::Half && key.role == KeyRole::Middle) {
        const LimitedLengths length(key);
        return HandlePair{{key.point.x - length.in, key.point.y},
                          {key.point.x + length.out, key.point.y}};
    }
    return horizontal(key.point, fraction(mode) * chord.frames());
}

Placed automatic(int mode, const KeySurroundings& key) {
    if (key.role == KeyRole::Last) return flat(mode, key);
    const Point p = key.point;
    if (mode == kvControlPointManager::Fixed) {
        if (key.next == nullptr) return {};
        return symmetric(p, along(angle(p, *key.next), kFixedLength));
    }
    const Chord chord(key);
    if (!chord.valid()) return {};
    const Point n = *key.next;
    if (mode == kvControlPointManager::Half && key.role == KeyRole::Middle) {
        // The one angle that is taken in single precision.
        const float s = static_cast<float>(n.y - p.y) / static_cast<float>(n.x - p.x);
        return limitedOnAngle(key, static_cast<double>(std::atan(s)));
    }
    return symmetric(p, onSlope(slope(p, n), fraction(mode) * chord.frames()));
}

} // namespace

std::optional<HandlePair> placeHandles(int tangentType, int lengthMode,
                                       const KeySurroundings& key) {
    if (tangentType == kvControlPoint::User) return {};
    const HandlePair collapsed{key.point, key.point};
    const bool knownMode =
        lengthMode >= kvControlPointManager::Fixed && lengthMode <= kvControlPointManager::Third;
    if (!knownMode) return collapsed;
    switch (tangentType) {
    case kvControlPoint::Aimed:
        return aimed(lengthMode, key);
    case kvControlPoint::Smooth:
        return smooth(lengthMode, key);
    case kvControlPoint::Flat:
        return flat(lengthMode, key);
    case kvControlPoint::Auto:
        return automatic(lengthMode, key);
    default:
        return collapsed;
    }
}

} // namespace kv::detail
