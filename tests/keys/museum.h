#pragma once

#include <kvControlPointManager.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <vector>

// A museum of curves, each there to catch one failure. Keys of type User, so that the handles are
// the ones shown here.
namespace kv::test {

struct MuseumKey {
    double x;
    double y;
    double inX;
    double inY;
    double outX;
    double outY;
};

struct MuseumCurve {
    std::string name;
    std::string catches; ///< what goes wrong with a curve like this
    std::vector<MuseumKey> keys;
};

inline const std::vector<MuseumCurve>& museum() {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInf = std::numeric_limits<double>::infinity();
    // A float's idea of a third: near the degenerate handles, but not on them.
    const double nearThird = static_cast<double>(10.0F / 3.0F);
    static const std::vector<MuseumCurve> curves = {
        {"empty", "reading the first key of none", {}},
        {"single", "an interval with one end", {{5, 2, 5, 2, 5, 2}}},
        {"held",
         "smoothing a stepped curve",
         {{0, 0, 0, 0, 0, 0}, {10, 5, 10, 5, 10, 5}, {20, -3, 20, -3, 20, -3}}},
        {"half handles",
         "the plainest curve of all",
         {{0, 0, -5, 0, 5, 0}, {10, 10, 5, 10, 15, 10}, {20, 0, 15, 0, 25, 0}}},
        {"three roots",
         "taking a candidate outside the segment",
         {{0, 1, -2, 1, 2, 4}, {10, -1, 8, -4, 12, 2}, {25, 3, 20, 3, 30, 3}}},
        {"vertical handles",
         "a repeated root at the keys, where the evaluator may find no value",
         {{0, 0, 0, -4, 0, 4}, {10, 10, 10, 6, 10, 14}, {20, 0, 20, 4, 20, -4}}},
        {"overshooting handles",
         "several parameters for one frame",
         {{0, 0, -20, 0, 20, 5}, {10, 10, -10, 5, 30, 10}, {20, 0, 0, 0, 40, 0}}},
        {"crossing handles",
         "handles that lie behind each other",
         {{0, 0, 0, 0, 9, 3}, {10, 10, 1, 7, 19, 10}, {20, 0, 11, 5, 20, 0}}},
        {"backward handles",
         "handles that lie behind the neighbours' keys",
         {{0, 0, 8, 0, -8, 0}, {10, 10, 18, 9, 2, 11}, {20, 0, 28, 0, 12, 0}}},
        {"collapsed on the left",
         "taking a half-held segment for a held one",
         {{0, 1, 0, 1, 0, 1}, {10, 5, 5, 5, 15, 5}}},
        {"collapsed on the right",
         "taking a half-held segment for a held one",
         {{0, 1, -5, 1, 5, 1}, {10, 5, 10, 5, 10, 5}}},
        {"near thirds",
         "the last digits of a cubic that is almost none",
         {{0, 0, -nearThird, 0, nearThird, nearThird},
          {10, 10, 10 - nearThird, 10 - nearThird, 10 + nearThird, 10}}},
        {"exact thirds",
         "a guard for a leading coefficient of 0",
         {{0, 0, -1, 0, 1, 1}, {3, 3, 2, 2, 4, 3}}},
        {"equal frames",
         "slopes that are infinite, intervals without length",
         {{0, 0, -1, 0, 1, 0}, {5, 1, 4, 1, 6, 1}, {5, 7, 4, 7, 6, 7}, {9, 0, 8, 0, 10, 0}}},
        {"near-equal frames",
         "a segment that is all rounding",
         {{1, 0, 0.5, 0, 1.0000000000005, 0}, {1.000000000001, 1, 1.0000000000005, 1, 2, 1}}},
        {"huge",
         "overflow in the cube of the coefficients",
         {{-1e15, -1e30, -2e15, -1e30, 1e14, -1e30}, {1e15, 1e30, 3e14, 1e30, 2e15, 1e30}}},
        {"beyond all reason",
         "infinite intermediate results",
         {{-1e200, 0, -1e200, 0, 1e199, 1}, {1e200, 1e300, 0, 1, 1e200, 1}}},
        {"tiny",
         "values that are snapped to 0, discriminants inside the band",
         {{0, 5e-7, -5e-4, 0, 3e-4, 1e-6}, {1e-3, 2e-6, 5e-4, 2e-6, 2e-3, 0}}},
        {"denormal",
         "coefficients that vanish when multiplied",
         {{0, 0, 0, 0, 1e-310, 1}, {1e-308, 1, 5e-309, 0, 2e-308, 0}}},
        {"negative frames",
         "comparisons of magnitudes",
         {{-30, 2, -33, 2, -27, 1}, {-20, -2, -24, -1, -18, -3}, {-5, 0, -9, 0, -1, 0}}},
        {"NaN frame",
         "a sort that runs out of bounds, a search that loses keys",
         {{0, 0, -1, 0, 1, 0}, {10, 1, 9, 1, 11, 1}, {kNaN, 2, 3, 2, 4, 2}}},
        {"NaN value", "a NaN taken for no value", {{0, 0, -5, 0, 5, kNaN}, {10, 1, 5, 1, 15, 1}}},
        {"NaN handle frame",
         "a NaN that is taken for a branch of its own",
         {{0, 0, -5, 0, kNaN, 0}, {10, 1, 5, 1, 15, 1}}},
        {"infinite frames",
         "differences of infinities",
         {{-kInf, 1, -kInf, 1, 0, 1}, {0, 2, -1, 2, 1, 2}, {kInf, 3, 5, 3, kInf, 3}}},
    };
    return curves;
}

/// The piece with this name; an empty curve when there is none.
inline const MuseumCurve& museumCurve(const std::string& name) {
    for (const MuseumCurve& curve : museum())
        if (curve.name == name) return curve;
    return museum().front();
}

/// Replaces the keys of a list by those of a piece, as they are, and links them.
inline void hang(const MuseumCurve& piece, kvControlPointManager& list) {
    std::vector<kvControlPoint>& keys = list.getCPs();
    keys.clear();
    for (const MuseumKey& shown : piece.keys) {
        kvControlPoint key(shown.x, shown.y, kvControlPoint::User);
        key.setInTangent({shown.inX, shown.inY});
        key.setOutTangent({shown.outX, shown.outY});
        keys.push_back(key);
    }
    list.sortCPs();
}

/// Frames worth asking a piece for: before, on and behind every key, and between neighbours.
inline std::vector<float> interestingFrames(const MuseumCurve& piece) {
    std::vector<float> frames = {0.0F,
                                 -1.0F,
                                 1e6F,
                                 -1e6F,
                                 std::numeric_limits<float>::quiet_NaN(),
                                 std::numeric_limits<float>::infinity(),
                                 -std::numeric_limits<float>::infinity()};
    for (std::size_t i = 0; i < piece.keys.size(); ++i) {
        const float frame = static_cast<float>(piece.keys[i].x);
        frames.push_back(frame);
        frames.push_back(std::nextafter(frame, -std::numeric_limits<float>::infinity()));
        frames.push_back(std::nextafter(frame, std::numeric_limits<float>::infinity()));
        if (i + 1 == piece.keys.size()) continue;
        const double to = piece.keys[i + 1].x;
        for (int step = 1; step < 16; ++step)
            frames.push_back(
                static_cast<float>(piece.keys[i].x + (to - piece.keys[i].x) * step / 16.0));
    }
    return frames;
}

} // namespace kv::test
