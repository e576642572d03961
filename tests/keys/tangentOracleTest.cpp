// Handle placement, all types, modes and places of a key, against a table written apart from the
// code; equality is exact, since the roundings are part of what hosts rely on.
#include "support/oracles/tangentOracle.h"

#include <OpenSG/OSGConfig.h>

#include <kvAnimationCurve.h>

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <vector>

using kv::test::Handles;
using kv::test::Spot;

namespace {

std::optional<Spot> spotAt(const std::vector<kvControlPoint>& keys, std::size_t i, int step) {
    if ((step < 0 && i == 0) || (step > 0 && i + 1 == keys.size())) return std::nullopt;
    const kvControlPoint::Point p = keys[step < 0 ? i - 1 : i + 1].getPoint();
    return Spot{p.x, p.y};
}

void expectExact(kvControlPoint::Point actual, Spot expected, const char* what) {
    EXPECT_EQ(actual.x, expected.x) << what;
    EXPECT_EQ(actual.y, expected.y) << what;
}

} // namespace

TEST(TangentOracle, everyTypeModeAndPlaceAgreesExactly) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> step(0.01, 20.0), height(-50.0, 50.0);
    for (int type = -1; type <= 7; ++type) {
        if (type == 6) continue; // never recomputed; has a test of its own
        for (int mode = 0; mode <= 4; ++mode) {
            for (int round = 0; round < 20; ++round) {
                kvAnimationCurve curve;
                curve.setTangentLength(mode);
                double x = height(random);
                for (int i = 0; i < 4; ++i, x += step(random))
                    curve.insertCP(x, height(random));
                for (kvControlPoint& key : curve.getCPs())
                    key.setTangentType(type);
                curve.computeTangents();
                const std::vector<kvControlPoint>& keys = curve.getCPs();
                for (std::size_t i = 0; i < keys.size(); ++i) {
                    SCOPED_TRACE(::testing::Message() << "type " << type << ", mode " << mode
                                                      << ", key " << i << ", round " << round);
                    const kvControlPoint::Point p = keys[i].getPoint();
                    const Handles expected = kv::test::expectedHandles(
                        type, mode, spotAt(keys, i, -1), Spot{p.x, p.y}, spotAt(keys, i, 1));
                    expectExact(keys[i].getInTangent(), expected.in, "in-handle");
                    expectExact(keys[i].getOutTangent(), expected.out, "out-handle");
                }
                if (::testing::Test::HasFailure()) return;
            }
        }
    }
}
