// The list of what the last tick wrote.

#include "playback/tickRecords.h"

#include "keys/curveBinding.h"

namespace kv {
namespace detail {

namespace {

/// How many runs ahead of the write their memory is asked for.
constexpr std::size_t kRunsAhead = 5;

} // namespace

void TickRecords::bind(std::size_t index, std::uint64_t stamp, const Field& binding) {
    _runs.clear();
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
        put(evaluated[i].binding, CurveBinding::of(curve), evaluated[i].value);
    }
}

void TickRecords::write(std::size_t first, std::size_t end) {
    for (std::size_t i = first; i < end; ++i)
        _records[i].writer.write(_bindings[i], _records[i].value);
}

void TickRecords::findRuns() {
    _runs.clear();
    for (std::size_t i = 0; i < _count; ++i) {
        const std::uint32_t container = _records[i].writer.container();
        if (i == 0 || container != _records[i - 1].writer.container())
            _runs.push_back({i, WrittenMemory::of(container)});
        _runs.back().end = i + 1;
    }
}

void TickRecords::write() {
    const bool areKnown = !_runs.empty() && _runs.back().end == _count;
    if (!areKnown) {
        write(0, _count);
        findRuns(); // now that writing has made the attachments that it needs
        return;
    }
    std::size_t first = 0;
    for (std::size_t run = 0; run < _runs.size(); ++run) {
        if (run + kRunsAhead < _runs.size()) _runs[run + kRunsAhead].memory.prefetch();
        write(first, _runs[run].end);
        first = _runs[run].end;
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
