#pragma once

#include "keys/curveBinding.h"
#include "keys/editCounter.h"
#include "keys/keyListReader.h"
#include "keys/segmentConstants.h"

#include <kvAnimationCurve.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kv::detail {

/// What a player took down of the curves that it evaluated last: their segments, one beside the
/// other in the order of the evaluation. The curves and keys of a large scene are spread over more
/// memory than the caches and the tables of pages hold, and mostly the next tick is still within
/// the same segments; then neither needs to be touched.
///
/// What was taken down is as good as the curve itself, because everything that may change it counts
/// in playedEdits: the list marks itself as played, and the next change of it, of its binding or of
/// one of its keys, and its end, are counted. Lists whose vector of keys was handed out for
/// changing are never taken down: what happens to a vector cannot be noticed.
///
/// Belongs to one player; several may play the same curves.
class PlayedSegments {
  public:
    struct Taken {
        const kvAnimationCurve* curve = nullptr; // may be gone
        std::uint64_t binding = 0;               // the stamp of its binding
        Segment segment{};
    };

    /// Begins at the first place again.
    void rewind() { _next = 0; }

    /// To be called before evaluating: forgets everything if a curve may have changed.
    void forgetIfEdited() {
        const std::uint64_t edit = playedEdits.load(std::memory_order_relaxed);
        if (_edit == edit) return;
        for (Taken& taken : _taken)
            taken.curve = nullptr;
        _edit = edit;
    }

    /// The place of the curve that is evaluated next. Each place lasts until rewind().
    std::size_t nextPlace() {
        if (_next == _taken.size()) _taken.emplace_back();
        return _next++;
    }

    const Taken& at(std::size_t place) const { return _taken[place]; }

    /// Whether this is the curve of the place and the frame is within the segment taken down.
    bool has(std::size_t place, const kvAnimationCurve& curve, double frame) const {
        const Taken& taken = _taken[place];
        return taken.curve == &curve && taken.segment.x0 <= frame && frame < taken.segment.x3;
    }

    /// Takes down the segment that ends at `after`, the first key behind the frame, if there is one
    /// and that can be done.
    void take(std::size_t place, const kvAnimationCurve& curve, std::size_t after) {
        const std::vector<kvControlPoint>& keys = curve.getCPs();
        if (after == 0 || after >= keys.size() || !KeyListReader::isSearchable(curve) ||
            !KeyListReader::markPlayed(curve))
            return;
        _taken[place] = {&curve, CurveBinding::stampOf(curve),
                         segmentBetween(keys[after - 1], keys[after])};
    }

  private:
    std::vector<Taken> _taken;
    std::size_t _next = 0;
    std::uint64_t _edit = 0;
};

} // namespace kv::detail
