// Random edits of a curve, compared after every step with the plain model: order, values, links,
// ids, the current key, the counter, all handles, how many random numbers were consumed, and what
// players have taken down.
#include "keys/keyListComparison.h"

#include "keys/curveEvaluation.h"
#include "keys/literalEvaluation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <vector>

namespace {

bool same(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (a != a && b != b);
}
bool same(kvControlPoint::Point a, kvControlPoint::Point b) {
    return same(a.x, b.x) && same(a.y, b.y);
}

constexpr double kPlayed[] = {-80.0, -13.25, 0.0, 0.5, 7.0, 42.5};

} // namespace

namespace kv::test {

void Comparison::compare() {
    const OpenCurve& curve = *_curve;
    const std::vector<kvControlPoint>& keys = curve.getCPs();
    ASSERT_EQ(keys.size(), _model.keys.size()) << "after " << _edit;
    // A link of a copied list leads nowhere, even if this list lies where the other one was.
    const bool foreign = State::hasForeignLinks(curve);
    const auto placeOf = [&keys](const kvControlPoint* cp) {
        for (std::size_t i = 0; i < keys.size(); ++i)
            if (cp == &keys[i]) return static_cast<int>(i);
        return -1;
    };
    const int size = static_cast<int>(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const LiteralKey& expected = _model.keys[i];
        const kvControlPoint& cp = keys[i];
        EXPECT_TRUE(same(cp.getPoint(), expected.point)) << "key " << i << " after " << _edit;
        EXPECT_TRUE(same(cp.getInTangent(), expected.in)) << "key " << i << " after " << _edit;
        EXPECT_TRUE(same(cp.getOutTangent(), expected.out)) << "key " << i << " after " << _edit;
        EXPECT_EQ(cp.getId(), expected.id) << "key " << i << " after " << _edit;
        EXPECT_EQ(cp.getTangentType(), expected.type) << "key " << i << " after " << _edit;
        EXPECT_EQ(cp.isSelected(), expected.selected) << "key " << i << " after " << _edit;
        EXPECT_EQ(foreign ? -1 : placeOf(Links::next(cp)),
                  expected.next < size ? expected.next : -1)
            << "key " << i << " after " << _edit;
        EXPECT_EQ(foreign ? -1 : placeOf(Links::previous(cp)),
                  expected.previous < size ? expected.previous : -1)
            << "key " << i << " after " << _edit;
    }
    EXPECT_EQ(State::count(*_curve), _model.count) << "after " << _edit;
    if (!_currentDangles && _model.current >= 0 && _model.current < size) {
        EXPECT_EQ(placeOf(State::current(*_curve)), _model.current) << "after " << _edit;
    }
    for (const float frame : {-200.0F, -13.25F, 0.0F, 0.5F, 7.0F, 42.5F}) {
        const float fast = kv::detail::evaluateCurve(&curve, frame);
        const float literal = kv::detail::evaluateCurveLiterally(&curve, frame);
        EXPECT_EQ(std::memcmp(&fast, &literal, sizeof fast), 0) << frame << " after " << _edit;
    }
}

// What a player takes down at these frames.
void Comparison::takeDown() {
    _played.rewind();
    _played.forgetIfEdited();
    for (const double frame : kPlayed) {
        const std::size_t place = _played.nextPlace();
        if (_played.has(place, *_curve, frame)) continue;
        const std::size_t after = kv::detail::KeyListReader::firstAfter(*_curve, frame, 0);
        _played.take(place, *_curve, after);
    }
}

// What the player has not forgotten since is what the model says.
void Comparison::compareTaken() {
    _played.forgetIfEdited();
    for (std::size_t place = 0; place < std::size(kPlayed); ++place) {
        if (!_played.has(place, *_curve, kPlayed[place])) continue;
        ++_told;
        const auto after =
            std::find_if(_model.keys.begin(), _model.keys.end(),
                         [&](const LiteralKey& key) { return key.point.x > kPlayed[place]; });
        ASSERT_TRUE(after != _model.keys.begin() && after != _model.keys.end()) << _edit;
        EXPECT_FALSE(std::isnan(_model.keys.back().point.x)) << _edit;
        const LiteralKey& before = *(after - 1);
        const kv::detail::Segment& taken = _played.at(place).segment;
        EXPECT_TRUE(same({taken.x0, taken.y0}, before.point)) << _edit;
        EXPECT_TRUE(same({taken.x1, taken.y1}, before.out)) << _edit;
        EXPECT_TRUE(same({taken.x2, taken.y2}, after->in)) << _edit;
        EXPECT_TRUE(same({taken.x3, taken.y3}, after->point)) << _edit;
    }
}

TEST(KeyListModel, randomEditsEqualThePlainModel) {
    std::size_t told = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        Comparison comparison(seed);
        for (int i = 0; i < 250; ++i)
            ASSERT_TRUE(comparison.step()) << "seed " << seed << " step " << i;
        told += comparison.told();
    }
    EXPECT_GT(told, 3000U);
}

TEST(KeyListModel, aLongSequenceOfEditsEqualsThePlainModel) {
    Comparison comparison(4711);
    for (int i = 0; i < 4000; ++i)
        ASSERT_TRUE(comparison.step()) << "step " << i;
}

} // namespace kv::test
