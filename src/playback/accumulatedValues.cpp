// The memory of global playback: what every tick since its start has written, and the few writes
// that have the same effect.

#include "playback/accumulatedValues.h"

#include "keys/curveBinding.h"
#include "playback/tickRecords.h"

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGFieldContainerFactory.h>

#include <OSGCameraSetting.h>

#include <cmath>
#include <functional>
#include <string>

namespace kv {
namespace detail {

namespace {

constexpr std::size_t kChunk = 4096;

// In place of the stamp of a binding that no curve has: nothing but its content tells it.
constexpr std::uint64_t kNoStamp = ~std::uint64_t{0};

bool sameBinding(const AccumulatedValues::Field& a, const AccumulatedValues::Field& b) {
    return a.fcId == b.fcId && a.valuePosition == b.valuePosition && a.fieldName == b.fieldName &&
           a.globalFieldName == b.globalFieldName;
}

bool sameButForTheValue(const AccumulatedValues::Field& a, const AccumulatedValues::Field& b) {
    return sameBinding(a, b) && a.node == b.node && a.coreTypeId == b.coreTypeId &&
           a.componentCount == b.componentCount && a.dirty == b.dirty && a.metaInfo == b.metaInfo;
}

std::size_t bindingHash(const AccumulatedValues::Field& field) {
    const std::hash<std::string> text;
    std::size_t hash = field.fcId;
    hash = hash * 31 + field.valuePosition;
    hash = hash * 31 + text(field.fieldName);
    return hash * 31 + text(field.globalFieldName);
}

bool isOnCameraSetting(const AccumulatedValues::Field& field) {
    if (field.fcId == 0) return false;
    const osg::FieldContainerPtr container =
        osg::FieldContainerFactory::the()->getContainer(field.fcId);
    return container != osg::NullFC &&
           container->getType().isDerivedFrom(osg::CameraSetting::getClassType());
}

} // namespace

const AccumulatedValues::Record& AccumulatedValues::record(std::size_t index) const {
    return _chunks[index / kChunk][index % kChunk];
}

void AccumulatedValues::beginEvaluation() {
    _previousBegin = _currentBegin;
    _currentBegin = _count;
    _played.rewind();
}

void AccumulatedValues::add(const CurveBatch::Entry* evaluated, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const kvAnimationCurve& curve = *evaluated[i].curve;
        append(evaluated[i].binding, CurveBinding::of(curve), evaluated[i].value);
    }
}

void AccumulatedValues::add(const std::vector<Field>& evaluation) {
    beginEvaluation();
    for (const Field& field : evaluation)
        append(kNoStamp, field, field.value);
}

void AccumulatedValues::add(const TickRecords& evaluation) {
    beginEvaluation();
    for (std::size_t i = 0; i < evaluation.size(); ++i)
        append(evaluation.stamp(i), evaluation.binding(i), evaluation.value(i));
}

void AccumulatedValues::append(std::uint64_t stamp, const Field& field, float value) {
    const bool isNaN = std::isnan(value);
    std::uint32_t index = templateOf(stamp, field, isNaN);
    if (index == kNone) index = addTemplate(stamp, field, isNaN);

    if (_count % kChunk == 0) {
        _chunks.emplace_back();
        _chunks.back().reserve(kChunk);
    }
    _chunks.back().push_back(Record{index, value});

    const std::uint32_t bindingIndex = _templates[index].binding;
    unlink(bindingIndex);
    linkAsNewest(bindingIndex);
    Binding& binding = _bindings[bindingIndex];
    binding.lastTemplate = index;
    binding.lastValue = value;
    binding.lastRecord = _count;
    if (!binding.ofNaNs && binding.other != kNone) unlink(binding.other);
    ++_count;
}

std::uint32_t AccumulatedValues::templateOf(std::uint64_t stamp, const Field& field, bool isNaN) {
    // One tick is like the one before: the record at the same place is nearly always the right one.
    const std::size_t guess = _previousBegin + (_count - _currentBegin);
    if (guess < _currentBegin) {
        const std::uint32_t index = record(guess).templateIndex;
        const Template& last = _templates[index];
        const bool isSame =
            stamp == kNoStamp ? sameButForTheValue(last.field, field) : last.stamp == stamp;
        if (isSame && _bindings[last.binding].ofNaNs == isNaN) return index;
    }
    const std::uint32_t index = findTemplate(field, isNaN);
    if (index != kNone) _templates[index].stamp = stamp;
    return index;
}

std::uint32_t AccumulatedValues::findTemplate(const Field& field, bool isNaN) const {
    const std::uint32_t binding = bindingOf(field, bindingHash(field), isNaN);
    if (binding == kNone) return kNone;
    for (std::uint32_t i = _bindings[binding].firstTemplate; i != kNone; i = _templates[i].next) {
        if (sameButForTheValue(_templates[i].field, field)) return i;
    }
    return kNone;
}

std::uint32_t AccumulatedValues::bindingOf(const Field& field, std::size_t hash,
                                           bool ofNaNs) const {
    const auto range = _bindingsByHash.equal_range(hash);
    for (auto it = range.first; it != range.second; ++it) {
        const Binding& binding = _bindings[it->second];
        if (binding.ofNaNs == ofNaNs &&
            sameBinding(_templates[binding.firstTemplate].field, field)) {
            return it->second;
        }
    }
    return kNone;
}

std::uint32_t AccumulatedValues::addBinding(const Field& field, bool isNaN, std::size_t hash,
                                            std::uint32_t firstTemplate) {
    const auto index = static_cast<std::uint32_t>(_bindings.size());
    Binding binding{};
    binding.firstTemplate = firstTemplate;
    binding.ofNaNs = isNaN;
    binding.other = bindingOf(field, hash, !isNaN);
    if (binding.other != kNone) _bindings[binding.other].other = index;
    _bindings.push_back(binding);
    _bindingsByHash.emplace(hash, index);
    return index;
}

std::uint32_t AccumulatedValues::addTemplate(std::uint64_t stamp, const Field& field, bool isNaN) {
    const std::size_t hash = bindingHash(field);
    const auto index = static_cast<std::uint32_t>(_templates.size());
    std::uint32_t binding = bindingOf(field, hash, isNaN);
    std::uint32_t next = kNone;
    if (binding == kNone) {
        binding = addBinding(field, isNaN, hash, index);
    } else {
        next = _bindings[binding].firstTemplate;
        _bindings[binding].firstTemplate = index;
    }
    _templates.push_back(Template{field, stamp, BoundWriter(field), binding, next});
    return index;
}

// Does nothing for one that has no record in force.
void AccumulatedValues::unlink(std::uint32_t binding) {
    Binding& b = _bindings[binding];
    if (b.lastRecord == kNoRecord) return;
    b.lastRecord = kNoRecord;
    (b.older == kNone ? _oldest : _bindings[b.older].newer) = b.newer;
    (b.newer == kNone ? _newest : _bindings[b.newer].older) = b.older;
}

void AccumulatedValues::linkAsNewest(std::uint32_t binding) {
    _bindings[binding].older = _newest;
    _bindings[binding].newer = kNone;
    (_newest == kNone ? _oldest : _bindings[_newest].newer) = binding;
    _newest = binding;
}

void AccumulatedValues::write(std::uint32_t templateIndex, float value) {
    Template& from = _templates[templateIndex];
    from.writer.write(from.field, value);
}

void AccumulatedValues::write() {
    for (std::uint32_t i = _oldest; i != kNone; i = _bindings[i].newer) {
        if (_bindings[i].lastRecord >= _currentBegin) break;
        write(_bindings[i].lastTemplate, _bindings[i].lastValue);
    }
    for (std::size_t i = _currentBegin; i < _count; ++i) {
        const Record& current = record(i);
        const Template& from = _templates[current.templateIndex];
        if (_bindings[from.binding].lastRecord == i || isOnCameraSetting(from.field)) {
            write(current.templateIndex, current.value);
        }
    }
}

std::vector<AccumulatedValues::Field> AccumulatedValues::all() const {
    std::vector<Field> fields;
    fields.reserve(_count);
    for (std::size_t i = 0; i < _count; ++i) {
        fields.push_back(_templates[record(i).templateIndex].field);
        fields.back().value = record(i).value;
    }
    return fields;
}

} // namespace detail
} // namespace kv
