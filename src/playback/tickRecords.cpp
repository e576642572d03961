// The list of what the last tick wrote.

#include "playback/tickRecords.h"

#include "keys/curveBinding.h"

namespace kv {
namespace detail {

namespace {

/// How many records ahead of the write their containers are brought near.
constexpr std::size_t kAhead = 12;

} // namespace

void TickRecords::bind(std::size_t index, std::uint64_t stamp, const Field& binding) {
    if (index == _records.size()) {
        _bindings.push_back(binding);
        _records.push_back({stamp, BoundWriter(binding), 0.0F});
        return;
    }
    _bindings[index] = binding; // where the names find room already
    _records[index] = {stamp, BoundWriter(binding), 0.0F};
}

void TickRecords::put(std::uint64_t stamp, const Field& binding, float value) {
    if (_count == _records.size() || _records[_count].stamp != stamp) bind(_count, stamp, binding);
    _records[_count].value = value;
    ++_count;
}

void TickRecords::resize(std::size_t count) {
    while (_count < count)
        put(0, Field(), 0.0F);
    _count = count;
}

void TickRecords::add(const CurveBatch::Entry* evaluated, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const kvAnimationCurve& curve = *evaluated[i].curve;
        put(CurveBinding::stampOf(curve), CurveBinding::of(curve), evaluated[i].value);
    }
}

void TickRecords::write() {
    for (std::size_t i = 0; i < _count; ++i) {
        const std::size_t ahead = i + kAhead;
        if (ahead < _count && !_records[ahead].writer.hasContainerOf(_records[ahead - 1].writer))
            _records[ahead].writer.prefetch();
        _records[i].writer.write(_bindings[i], _records[i].value);
    }
}

std::vector<TickRecords::Field> TickRecords::all() const {
    std::vector<Field> fields;
    fields.reserve(_count);
    for (std::size_t i = 0; i < _count; ++i) {
        fields.push_back(_bindings[i]);
        fields.back().value = _records[i].value;
    }
    return fields;
}

} // namespace detail
} // namespace kv
