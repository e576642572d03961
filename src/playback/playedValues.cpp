// The result of the last evaluation, in whichever form the kind of playback needs it.

#include "playback/playedValues.h"

#include "playback/accumulatedValues.h"

#include <cstddef>

namespace kv {
namespace detail {

PlayedValues::~PlayedValues() = default;

TickRecords& PlayedValues::replace() {
    _accumulated.reset();
    if (_plain.use_count() == 1) {
        _plain->clear();
    } else {
        _plain = std::make_shared<TickRecords>(); // the first, or the old one is in use
    }
    return *_plain;
}

FieldSink& PlayedValues::accumulate() {
    if (!_accumulated) {
        _accumulated = std::make_shared<AccumulatedValues>();
        if (_plain) _accumulated->add(*_plain);
    } else if (_accumulated.use_count() > 1) {
        _accumulated = std::make_shared<AccumulatedValues>(*_accumulated);
    }
    _accumulated->beginEvaluation();
    return *_accumulated;
}

void PlayedValues::write() {
    if (const std::shared_ptr<AccumulatedValues> accumulated = _accumulated) {
        accumulated->write();
        return;
    }
    if (const std::shared_ptr<TickRecords> plain = _plain) plain->write();
}

std::vector<PlayedValues::Field> PlayedValues::all() const {
    if (_accumulated) return _accumulated->all();
    return _plain ? _plain->all() : std::vector<Field>();
}

} // namespace detail
} // namespace kv
