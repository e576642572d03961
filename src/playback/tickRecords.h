#pragma once

#include "fields/boundWriter.h"
#include "fields/writtenMemory.h"
#include "keys/playedSegments.h"
#include "manager/frameEvaluation.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kv {
namespace detail {

/// The records of one evaluation. Kept from tick to tick, because one tick is like the one before:
/// a record at the place where it was needs nothing but its new value. The binding with its names,
/// ten times as large, is only touched when another one comes to the place.
class TickRecords final : public FieldSink {
  public:
    using Field = kvAnimationUtils2::AnimationField;

    void clear() {
        _count = 0;
        _played.rewind();
    }
    /// Makes it `count` records; those that are new bind to nothing.
    void resize(std::size_t count);
    void add(const CurveBatch::Entry* evaluated, std::size_t count) override;
    PlayedSegments* playedSegments() override { return &_played; }

    /// Writes them into the scene, in order. Not to be changed from within a write.
    void write();

    std::size_t size() const { return _count; }
    const Field& binding(std::size_t index) const { return _bindings[index]; }
    float value(std::size_t index) const { return _records[index].value; }
    std::uint64_t stamp(std::size_t index) const { return _records[index].stamp; }
    std::vector<Field> all() const;

  private:
    struct Record {
        std::uint64_t stamp; // of the binding, see CurveBinding
        BoundWriter writer;
        float value;
    };

    // Records of one container that follow one another.
    struct Run {
        std::size_t end;
        WrittenMemory memory;
    };

    void put(std::uint64_t stamp, const Field& binding, float value);
    void bind(std::size_t index, std::uint64_t stamp, const Field& binding);
    void write(std::size_t first, std::size_t end);
    void findRuns();

    // Both of one length, at least _count: what lies behind waits for its place to be taken again.
    std::vector<Record> _records;
    std::vector<Field> _bindings;
    std::size_t _count = 0;
    PlayedSegments _played;
    std::vector<Run> _runs; // none until a write of these bindings
};

} // namespace detail
} // namespace kv
