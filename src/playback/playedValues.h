#pragma once

#include "playback/tickRecords.h"

#include <kvAnimationUtils2.h>

#include <memory>
#include <vector>

namespace kv {
namespace detail {

class AccumulatedValues;

/// The records of the last evaluation: a plain list after block, clip and local playback, an
/// accumulation during global playback.
///
/// What is being written survives being replaced. A host that calls back into the transport from
/// within a write is on its own as far as results go, but reads no freed memory.
class PlayedValues {
  public:
    using Field = kvAnimationUtils2::AnimationField;

    /// Without records, and without running any code: the transport's one exists for a host's
    /// global objects whatever the order in which globals are constructed.
    constexpr PlayedValues() noexcept = default;
    ~PlayedValues();

    /// Forgets all records and returns the empty list that takes the new ones. Its storage is that
    /// of the records before, so a warm tick allocates nothing.
    TickRecords& replace();

    /// Begins an evaluation whose records come in addition to those that are there: they are given
    /// to what this returns, before anything else is called.
    FieldSink& accumulate();

    /// Writes the records into the scene: a plain list in order, an accumulation by as few writes
    /// as lead to the same scene.
    void write();

    /// All records in order, of an accumulation repeats included.
    std::vector<Field> all() const;

  private:
    std::shared_ptr<TickRecords> _plain;             // null until something was evaluated
    std::shared_ptr<AccumulatedValues> _accumulated; // null while the list is plain
};

} // namespace detail
} // namespace kv
