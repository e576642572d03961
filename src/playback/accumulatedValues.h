#pragma once

#include "fields/boundWriter.h"
#include "keys/playedSegments.h"
#include "manager/frameEvaluation.h"

#include <kvAnimationUtils2.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace kv {
namespace detail {

class TickRecords;

/// Every record of every tick of a global playback, stored compactly.
///
/// Global playback keeps all its records and counts on all of them being written again, in order,
/// on every tick. Two facts make that affordable. Records repeat: hardly any differ in more than
/// the value, so each is stored as a number and a value, eight bytes. And writes overwrite: of all
/// records of one binding only the last is visible in the end, so the bindings are chained in the
/// order of their last occurrence, and one write each, in that order, leaves the scene as all
/// writes would.
///
/// Not-a-number is the exception: integers do not take it, and then the number before it stays in
/// force. Until a number follows, both are written. Numbers and not-a-numbers of one binding
/// therefore have an entry each.
///
/// A write must set what its record names and nothing else, whatever was there. That holds for all
/// but three kinds of records, which kvAnimationController2::animationLoop tells of.
class AccumulatedValues final : public FieldSink {
  public:
    using Field = kvAnimationUtils2::AnimationField;

    /// What is added from here on are the current records, until the next call.
    void beginEvaluation();
    void add(const CurveBatch::Entry* evaluated, std::size_t count) override;
    PlayedSegments* playedSegments() override { return &_played; }

    /// An evaluation of its own, of records that were made elsewhere.
    void add(const std::vector<Field>& evaluation);
    void add(const TickRecords& evaluation);

    /// Writes the last record of every binding, in the order of their last occurrence. Of what is
    /// bound to a camera setting every current record is written: each may move the host's camera,
    /// which shows more than where the field ends up.
    void write();

    /// All records in order, repeats included.
    std::vector<Field> all() const;

  private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFU;
    static constexpr std::size_t kNoRecord = static_cast<std::size_t>(-1);

    // A record without its value.
    struct Template {
        Field field;
        std::uint64_t stamp; // of the binding that came last, see CurveBinding
        BoundWriter writer;
        std::uint32_t binding; // what it writes to
        std::uint32_t next;    // the next template of the same binding
    };

    // One number in the scene: container, names and position; with the numbers that were written
    // to it or with the not-a-numbers.
    struct Binding {
        std::uint32_t firstTemplate;
        bool ofNaNs;
        std::uint32_t lastTemplate = kNone; // that of the last record
        float lastValue = 0.0F;
        std::size_t lastRecord = kNoRecord; // index of the last record that is still in force
        std::uint32_t older = kNone, newer = kNone; // neighbours in the order of the last records
        std::uint32_t other = kNone;                // the entry of the other kind of values
    };

    struct Record {
        std::uint32_t templateIndex;
        float value;
    };

    void append(std::uint64_t stamp, const Field& field, float value);
    std::uint32_t templateOf(std::uint64_t stamp, const Field& field, bool isNaN);
    std::uint32_t findTemplate(const Field& field, bool isNaN) const;
    std::uint32_t addTemplate(std::uint64_t stamp, const Field& field, bool isNaN);
    std::uint32_t bindingOf(const Field& field, std::size_t hash, bool ofNaNs) const;
    std::uint32_t addBinding(const Field& field, bool isNaN, std::size_t hash,
                             std::uint32_t firstTemplate);
    void unlink(std::uint32_t binding);
    void linkAsNewest(std::uint32_t binding);
    void write(std::uint32_t templateIndex, float value);
    const Record& record(std::size_t index) const;

    PlayedSegments _played;
    std::vector<Template> _templates;
    std::vector<Binding> _bindings;
    std::unordered_multimap<std::size_t, std::uint32_t> _bindingsByHash;
    // Chunks of equal size: growing moves no record, so no tick pays for the ticks before it.
    std::vector<std::vector<Record>> _chunks;
    std::size_t _count = 0;
    std::size_t _currentBegin = 0;  // first record of the newest evaluation
    std::size_t _previousBegin = 0; // first record of the one before: a good guess at the newest
    std::uint32_t _oldest = kNone, _newest = kNone;
};

} // namespace detail
} // namespace kv
