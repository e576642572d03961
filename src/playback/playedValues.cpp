// The result of the last evaluation, in whichever form the kind of playback needs it.

#include "playback/playedValues.h"

#include "playback/accumulatedValues.h"

#include <cstddef>

namespace kv {
namespace detail {

PlayedValues::~PlayedValues() = default;

std::vector<PlayedValues::Field>& PlayedValues::replace() {
    _accumulated.reset();
    if (_plain.use_count() == 1) {
        _plain->clear();
    } else {
        _plain = std::make_shared<std::vector<Field>>(); // the first, or the old one is in use
    }
    return *_plain;
}

void PlayedValues::accumulate(const std::vector<Field>& evaluation) {
    if (!_accumulated) {
        _accumulated = std::make_shared<AccumulatedValues>();
        if (_plain) _accumulated->add(*_plain);
    } else if (_accumulated.use_count() > 1) {
        _accumulated = std::make_shared<AccumulatedValues>(*_accumulated);
    }
    _accumulated->add(evaluation);
}

void PlayedValues::write() {
    if (const std::shared_ptr<AccumulatedValues> accumulated = _accumulated) {
        accumulated->write();
        return;
    }
    const std::shared_ptr<std::vector<Field>> fields = _plain;
    if (!fields) return;
    for (const Field& field : *fields)
        kvAnimationUtils2::setRealFieldValue(field);
}

std::vector<PlayedValues::Field> PlayedValues::all() const {
    if (_accumulated) return _accumulated->all();
    return _plain ? *_plain : std::vector<Field>();
}

} // namespace detail
} // namespace kv
