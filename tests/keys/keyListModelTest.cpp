// Random edits of a curve, compared after every step with the plain model: order, values, links,
// ids, the current key, the counter, all handles, and how many random numbers were consumed.
#include <kvAnimationCurve.h>

#include "keys/curveEvaluation.h"
#include "keys/keyListFixture.h"
#include "keys/literalEvaluation.h"
#include "keys/literalKeyList.h"
#include "keys/playedSegments.h"
#include "manager/identifiers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

using namespace kv::test;

namespace {

// A curve whose protected operations can be called.
class OpenCurve : public kvAnimationCurve {
  public:
    using kvAnimationCurve::addControlPoint;
};

bool same(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (a != a && b != b);
}
bool same(kvControlPoint::Point a, kvControlPoint::Point b) {
    return same(a.x, b.x) && same(a.y, b.y);
}

class Comparison {
  public:
    explicit Comparison(unsigned seed) : _random(seed), _curve(std::make_unique<OpenCurve>()) {
        const auto& issued = kv::detail::identifierStore().issued();
        _ids.insert(issued.begin(), issued.end());
    }

    // Does one random edit on both sides; false once they differ.
    bool step() {
        const unsigned draws = static_cast<unsigned>(_random());
        const std::uint32_t edit = static_cast<std::uint32_t>(_random());
        const std::mt19937 choices = _random;
        takeDown();
        std::srand(draws);
        editCurve(edit);
        const int consumed = std::rand();

        const std::mt19937 after = _random;
        _random = choices;
        std::srand(draws);
        editModel(edit);
        EXPECT_EQ(std::rand(), consumed) << "random numbers consumed by " << _edit;
        EXPECT_TRUE(_random == after) << "the test itself is out of step in " << _edit;
        compare();
        compareTaken();
        return !::testing::Test::HasFailure();
    }

    std::size_t size() const { return _model.keys.size(); }

    /// How often a player would not have asked the curve after an edit.
    std::size_t told() const { return _told; }

  private:
    // Few distinct frames, so that keys meet; halves, so that snapping rounds; rarely NaN.
    double frame() {
        const std::uint32_t choice = static_cast<std::uint32_t>(_random() % 400);
        if (choice == 0) return kNaN;
        return (static_cast<double>(choice) - 200.0) * 0.5;
    }
    double value() { return static_cast<double>(_random() % 1000) / 7.0 - 70.0; }
    float single(double v) { return static_cast<float>(v); }
    bool coin() { return _random() % 2 == 0; }
    std::size_t place() { return _model.keys.empty() ? 0 : _random() % _model.keys.size(); }

    void editCurve(std::uint32_t edit);
    void editModel(std::uint32_t edit);
    void editCurveShape(std::uint32_t edit);
    void editModelShape(std::uint32_t edit);
    int drawId();
    void compare();
    void takeDown();
    void compareTaken();

    kv::detail::PlayedSegments _played;
    std::size_t _told = 0;
    std::mt19937 _random;
    std::unique_ptr<OpenCurve> _curve;
    LiteralKeyList _model;
    std::unordered_set<std::uint64_t> _ids;
    std::string _edit;
    bool _currentDangles = true;
};

// An identifier by the literal rule, on the model's own record of those issued.
int Comparison::drawId() {
    const int r1 = std::rand() & 0x7FFF;
    const int r2 = std::rand() & 0x7FFF;
    const std::uint64_t id = static_cast<std::uint64_t>(r1 * (r2 % 100 + 1));
    if (_ids.count(id) == 1) drawId();
    _ids.insert(id);
    return static_cast<int>(id);
}

void Comparison::editCurve(std::uint32_t edit) {
    OpenCurve& curve = *_curve;
    std::vector<kvControlPoint>& keys = State::keys(curve);
    switch (edit % 32) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 4:
    case 5: {
        const double x = frame();
        const double y = value();
        const bool snapX = coin();
        curve.insertCP(x, y, snapX, coin());
        break;
    }
    case 6:
        curve.insertCP(curve.getEndFrame() + 0.5, value());
        break;
    case 7:
    case 8: {
        const float x = single(frame());
        const float y = single(value());
        const float inX = single(value());
        curve.importControlPoint(x, y, inX, 2.0F, 3.0F, 4.0F, static_cast<int>(_random() % 8));
        break;
    }
    case 9: {
        const double x = frame();
        kvControlPoint cp(x, 1.5, static_cast<int>(_random() % 8));
        curve.addControlPoint(cp);
        EXPECT_EQ(cp.getId(), State::count(curve) - 1);
        break;
    }
    case 10:
        curve.deleteExistingKey(frame());
        break;
    case 11:
    case 12:
        if (!keys.empty()) curve.deleteCP(&keys[place()]);
        break;
    case 13:
        curve.deleteAllSelectedCPs();
        break;
    case 14:
        if (!keys.empty()) keys[place()].setPoint({frame(), 3.0});
        break;
    case 15:
        if (!keys.empty()) keys[place()].setId(static_cast<int>(_random() % 40));
        break;
    default:
        editCurveShape(edit);
    }
}

void Comparison::editModel(std::uint32_t edit) {
    _currentDangles = false;
    switch (edit % 32) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 4:
    case 5: {
        _edit = "insertCP";
        const double x = frame();
        const double y = value();
        const bool snapX = coin();
        const bool snapY = coin();
        _model.insert(x, y, snapX, snapY, drawId());
        break;
    }
    case 6: {
        _edit = "insertCP at the end";
        const double end = _model.keys.empty() ? -99999.0 : _model.keys.back().point.x;
        _model.insert(end + 0.5, value(), false, false, drawId());
        break;
    }
    case 7:
    case 8: {
        _edit = "importControlPoint";
        LiteralKey key;
        key.point.x = static_cast<double>(single(frame()));
        key.point.y = static_cast<double>(single(value()));
        key.in = {static_cast<double>(single(value())), 2.0};
        key.out = {3.0, 4.0};
        key.type = static_cast<int>(_random() % 8);
        drawId(); // the default key's own
        _model.import(key);
        break;
    }
    case 9: {
        _edit = "addControlPoint";
        LiteralKey key;
        key.point = {frame(), 1.5};
        key.in = key.point;
        key.out = key.point;
        key.type = static_cast<int>(_random() % 8);
        drawId();
        _model.import(key);
        break;
    }
    case 10:
        _edit = "deleteExistingKey";
        _model.deleteExisting(frame());
        _currentDangles = true;
        break;
    case 11:
    case 12:
        _edit = "deleteCP";
        if (!_model.keys.empty()) _model.deleteKey(place());
        _currentDangles = true;
        break;
    case 13:
        _edit = "deleteAllSelectedCPs";
        _model.deleteSelected();
        _currentDangles = true;
        break;
    case 14:
        _edit = "setPoint";
        if (!_model.keys.empty()) {
            LiteralKey& key = _model.keys[place()];
            key.point = {frame(), 3.0};
        }
        break;
    case 15:
        _edit = "setId";
        if (!_model.keys.empty()) {
            LiteralKey& key = _model.keys[place()];
            key.id = static_cast<int>(_random() % 40);
        }
        break;
    default:
        editModelShape(edit);
    }
}

void Comparison::editCurveShape(std::uint32_t edit) {
    OpenCurve& curve = *_curve;
    std::vector<kvControlPoint>& keys = State::keys(curve);
    switch (edit % 32) {
    case 16:
    case 17:
    case 18:
        for (int i = 0; i < 2 && !keys.empty(); ++i) {
            kvControlPoint& cp = keys[place()];
            cp.setSelected(!cp.isSelected());
        }
        break;
    case 19:
        curve.computeTangents(static_cast<int>(_random() % 8));
        break;
    case 20:
        curve.computeTangents();
        break;
    case 21:
        curve.constantCurveInterval();
        break;
    case 22:
        curve.setTangentLength(static_cast<int>(_random() % 5));
        break;
    case 23:
    case 24:
    case 25:
        if (!keys.empty()) {
            kvControlPoint& cp = keys[place()];
            const float x = single(frame());
            curve.moveCPTo(&cp, x, single(value()));
        }
        break;
    case 26:
        curve.sortCPs();
        break;
    case 27:
        curve.computeLinkedList();
        break;
    case 28:
        curve.findCP(static_cast<int>(_random() % 40));
        break;
    case 29:
        if (coin())
            curve.stretchLeft(single(frame()));
        else
            curve.stretchRight(single(frame()));
        break;
    case 30:
        curve.flip();
        break;
    default:
        _curve = std::make_unique<OpenCurve>(curve);
    }
}

void Comparison::editModelShape(std::uint32_t edit) {
    switch (edit % 32) {
    case 16:
    case 17:
    case 18:
        _edit = "setSelected";
        for (int i = 0; i < 2 && !_model.keys.empty(); ++i) {
            LiteralKey& key = _model.keys[place()];
            key.selected = !key.selected;
        }
        break;
    case 19:
        _edit = "computeTangents(type)";
        _model.recomputeSelected(static_cast<int>(_random() % 8));
        break;
    case 20:
        _edit = "computeTangents";
        _model.recomputeAll();
        break;
    case 21:
        _edit = "constantCurveInterval";
        _model.holdSelected();
        break;
    case 22:
        _edit = "setTangentLength";
        _model.length = static_cast<int>(_random() % 5);
        break;
    case 23:
    case 24:
    case 25:
        _edit = "moveCPTo";
        if (!_model.keys.empty()) {
            const std::size_t at = place();
            const float x = single(frame());
            _model.moveTo(at, x, single(value()));
        }
        break;
    case 26:
        _edit = "sortCPs";
        _model.sort();
        break;
    case 27:
        _edit = "computeLinkedList";
        _model.link();
        break;
    case 28:
        _edit = "findCP";
        _model.find(static_cast<int>(_random() % 40));
        break;
    case 29:
        _edit = "stretch";
        if (coin())
            _model.stretchLeft(single(frame()));
        else
            _model.stretchRight(single(frame()));
        break;
    case 30:
        _edit = "flip";
        _model.flip();
        break;
    default:
        _edit = "copy";
        _model.loseLinks();
        _model.current = -1;
    }
}

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

constexpr double kPlayed[] = {-80.0, -13.25, 0.0, 0.5, 7.0, 42.5};

// What a player takes down at these frames.
void Comparison::takeDown() {
    _played.rewind();
    _played.forgetIfEdited();
    for (const double frame : kPlayed) {
        const std::size_t place = _played.nextPlace();
        if (_played.has(place, *_curve, frame)) continue;
        const std::size_t after = kv::detail::KeyListReader::firstAfter(*_curve, frame, 0);
        _played.take(place, *_curve, frame, after);
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

} // namespace

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
