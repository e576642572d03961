// The second opinion on handle placement. Each cell of the table says for either handle in which
// direction it points and how its length is measured; the cells are then drawn by one routine. The
// roundings to single precision are part of the expected result, so lengths are computed in the
// precision that the handles are defined in.
#include "support/oracles/tangentOracle.h"

#include <cmath>

namespace kv::test {
namespace {

const double kThird = static_cast<double>(1.0F / 3.0F);

double rounded(double value) {
    return static_cast<double>(static_cast<float>(value));
}

double slope(Spot a, Spot b) {
    return (b.y - a.y) / (b.x - a.x);
}

/// How a handle's offset comes from an angle and a length.
enum class Measure {
    Horizontal, // (L, 0)
    Along,      // (L cos a, L sin a): L is measured along the handle
    AcrossX     // (L, tan a * L): L is the handle's extent in frames
};

struct Handle {
    Measure measure;
    double angle;
    double length;
};

Spot offset(const Handle& h) {
    switch (h.measure) {
    case Measure::Horizontal:
        return {h.length, 0.0};
    case Measure::Along:
        return {h.length * std::cos(h.angle), h.length * std::sin(h.angle)};
    case Measure::AcrossX:
        return {h.length, std::tan(h.angle) * h.length};
    }
    return {};
}

Handles draw(Spot key, const Handle& in, const Handle& out) {
    const Spot back = offset(in), ahead = offset(out);
    return {{key.x - back.x, key.y - back.y}, {key.x + ahead.x, key.y + ahead.y}};
}

Handles both(Spot key, const Handle& h) {
    return draw(key, h, h);
}

/// Lengths of the chord-limited handles of a middle key: a third of the chord between the
/// neighbours, but never beyond half way to the neighbour on the same side.
struct Limited {
    double in;
    double out;
};

Limited limitedLengths(Spot q, Spot p, Spot n) {
    const double chord = rounded(kThird * (n.x - q.x));
    const double halfBack = rounded(p.x - q.x) * 0.5, halfAhead = rounded(n.x - p.x) * 0.5;
    return {chord < halfBack ? chord : halfBack, halfAhead > chord ? chord : halfAhead};
}

Handle flat(double length) {
    return {Measure::Horizontal, 0.0, length};
}

enum class Place { First, Middle, Last };

/// The length in frames that modes 2 and 3 give where a cell has a single length L.
double sharedLength(int mode, Place place, Spot q, Spot p, Spot n) {
    const double share = mode == 2 ? 0.5 : kThird;
    if (place == Place::First) return share * (n.x - p.x);
    if (place == Place::Last) return share * (p.x - q.x);
    return share * (n.x - q.x);
}

Handles aimed(int mode, Place place, Spot q, Spot p, Spot n) {
    const double ahead = place == Place::Last ? 0.0 : std::atan(slope(p, n));
    const double back = place == Place::First ? 0.0 : std::atan((q.y - p.y) / (q.x - p.x));
    if (mode == 1) {
        return draw(p, place == Place::First ? flat(2.0) : Handle{Measure::Along, back, 2.0},
                    place == Place::Last ? flat(2.0) : Handle{Measure::Along, ahead, 2.0});
    }
    const double backQP = place == Place::First ? 0.0 : std::atan(slope(q, p));
    if (place == Place::Middle && mode == 2) {
        return draw(p, {Measure::AcrossX, backQP, 0.5 * (p.x - q.x)},
                    {Measure::AcrossX, ahead, 0.5 * (n.x - p.x)});
    }
    const double length = sharedLength(mode, place, q, p, n);
    if (place == Place::Middle)
        return draw(p, {Measure::Along, backQP, length}, {Measure::Along, ahead, length});
    if (place == Place::First) return draw(p, flat(length), {Measure::AcrossX, ahead, length});
    return draw(p, {Measure::AcrossX, backQP, length}, flat(length));
}

Handles smooth(int mode, Place place, Spot q, Spot p, Spot n) {
    const Spot from = place == Place::First ? p : q, to = place == Place::Last ? p : n;
    if (mode == 3) {
        const Spot d{kThird * (to.x - from.x), kThird * (to.y - from.y)};
        return {{p.x - d.x, p.y - d.y}, {p.x + d.x, p.y + d.y}};
    }
    const double angle = std::atan(slope(from, to));
    if (mode == 1) return both(p, {Measure::Along, angle, 2.0});
    if (place == Place::Middle) {
        const Limited l = limitedLengths(q, p, n);
        return draw(p, {Measure::AcrossX, angle, l.in}, {Measure::AcrossX, angle, l.out});
    }
    return both(p, {Measure::AcrossX, angle, sharedLength(mode, place, q, p, n)});
}

Handles level(int mode, Place place, Spot q, Spot p, Spot n) {
    if (mode == 1) return both(p, flat(2.0));
    if (mode == 2 && place == Place::Middle) {
        const Limited l = limitedLengths(q, p, n);
        return draw(p, flat(l.in), flat(l.out));
    }
    return both(p, flat(sharedLength(mode, place, q, p, n)));
}

Handles automatic(int mode, Place place, Spot q, Spot p, Spot n) {
    if (place == Place::Last) return level(mode, place, q, p, n);
    if (mode == 1) return both(p, {Measure::Along, std::atan(slope(p, n)), 2.0});
    if (mode == 2 && place == Place::Middle) {
        // The only angle that is taken in single precision throughout.
        const float dy = static_cast<float>(n.y - p.y), dx = static_cast<float>(n.x - p.x);
        const double angle = static_cast<double>(std::atan(dy / dx));
        const Limited l = limitedLengths(q, p, n);
        return draw(p, {Measure::AcrossX, angle, l.in}, {Measure::AcrossX, angle, l.out});
    }
    return both(p, {Measure::AcrossX, std::atan(slope(p, n)), sharedLength(mode, place, q, p, n)});
}

} // namespace

Handles expectedHandles(int type, int mode, std::optional<Spot> previous, Spot key,
                        std::optional<Spot> next) {
    if (type < 2 || type > 5 || mode < 1 || mode > 3) return {key, key};
    const Place place = !previous ? Place::First : (!next ? Place::Last : Place::Middle);
    const Spot q = previous.value_or(Spot{}), n = next.value_or(Spot{});
    switch (type) {
    case 2:
        return aimed(mode, place, q, key, n);
    case 3:
        return smooth(mode, place, q, key, n);
    case 4:
        return level(mode, place, q, key, n);
    default:
        return automatic(mode, place, q, key, n);
    }
}

} // namespace kv::test
