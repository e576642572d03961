#pragma once

#include <kvAnimationCurve.h>

#include "keys/playedSegments.h"
#include "manager/frameEvaluation.h"
#include "support/access/kvControlPointManager.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace kv::test {

using Curves = std::vector<kvAnimationCurve*>;

/// Keeps what it is given, as a player does.
class Player final : public kv::detail::FieldSink {
  public:
    struct Record {
        std::uint64_t binding;
        std::uint32_t value; // its bits
        bool operator==(const Record& other) const {
            return binding == other.binding && value == other.value;
        }
    };

    void add(const kv::detail::CurveBatch::Entry* evaluated, std::size_t count) override {
        for (std::size_t i = 0; i < count; ++i) {
            Record record{evaluated[i].binding, 0};
            std::memcpy(&record.value, &evaluated[i].value, sizeof record.value);
            _records.push_back(record);
        }
    }
    kv::detail::PlayedSegments* playedSegments() override { return &_segments; }

    const std::vector<Record>& records() const { return _records; }

    const std::vector<Record>& evaluate(const Curves& curves, float frame) {
        _records.clear();
        _segments.rewind();
        kv::detail::evaluateFields(*this, curves, frame);
        return _records;
    }

  private:
    kv::detail::PlayedSegments _segments;
    std::vector<Record> _records;
};

inline std::vector<Player::Record> evaluatedAfresh(const Curves& curves, float frame) {
    return Player().evaluate(curves, frame);
}

/// Keys at 0, 10, 20 and 30 with handles of their own.
inline void fill(kvAnimationCurve& curve, float value) {
    for (int i = 0; i < 4; ++i) {
        const float x = 10.0F * static_cast<float>(i);
        const float y = value + static_cast<float>(i % 2);
        curve.importControlPoint(x, y, x - 4.0F, y + 1.0F, x + 3.0F, y - 2.0F,
                                 kvControlPoint::User);
    }
}

/// A key without telling the list that it may change.
inline kvControlPoint& keyOf(kvAnimationCurve& curve, std::size_t place) {
    return kvTestAccess<kvControlPointManager>::keys(curve)[place];
}

} // namespace kv::test
