#pragma once

#include <kvAnimationCurve.h>

#include "keys/keyListFixture.h"
#include "keys/literalKeyList.h"
#include "keys/playedSegments.h"
#include "manager/identifiers.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <unordered_set>

namespace kv::test {

/// A curve whose protected operations can be called.
class OpenCurve : public kvAnimationCurve {
  public:
    using kvAnimationCurve::addControlPoint;
};

/// Random edits of a curve and the same edits of the plain model.
class Comparison {
  public:
    explicit Comparison(unsigned seed) : _random(seed), _curve(std::make_unique<OpenCurve>()) {
        const auto& issued = kv::detail::identifierStore().issued();
        _ids.insert(issued.begin(), issued.end());
    }

    /// Does one random edit on both sides; false once they differ.
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

} // namespace kv::test
