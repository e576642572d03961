// The value of a curve at a frame, quickly: the interval and the segment's constants are taken from
// what the curve remembers, the root is found without the C library, and whenever the result is not
// certain to have the literal evaluator's bits, the literal evaluator is asked.
#include "keys/curveEvaluation.h"

#include "keys/constants.h"
#include "keys/fastSegment.h"
#include "keys/keyListReader.h"
#include "keys/literalEvaluation.h"
#include "keys/segmentMemory.h"

namespace kv::detail {

namespace {

bool isHeld(const Segment& s) {
    return s.x0 == s.x1 && s.x2 == s.x3 && s.y0 == s.y1 && s.y2 == s.y3;
}

} // namespace

float evaluateCurve(const kvControlPointManager* curve, float frame) {
    if (curve == nullptr || curve->getCPs().size() < 2) return kNoCurveValue;
    const std::vector<kvControlPoint>& keys = curve->getCPs();
    const double at = static_cast<double>(frame);
    SegmentMemory* const memory = KeyListReader::memoryOf(*curve);
    const std::size_t after =
        KeyListReader::firstAfter(*curve, at, memory == nullptr ? 0 : memory->end());
    if (after == 0) return static_cast<float>(keys.front().getPoint().y);
    if (after == keys.size()) return static_cast<float>(keys.back().getPoint().y);

    const Segment segment = segmentBetween(keys[after - 1], keys[after]);
    const bool isNew = memory == nullptr || memory->setEnd(after);
    if (isHeld(segment)) return static_cast<float>(segment.y0);
    // A segment that is evaluated twice in a row will be evaluated more often: its constants are
    // worth computing exactly, and worth being remembered.
    SegmentConstants constants{};
    if (isNew) {
        constants = segmentConstants<false>(segment);
    } else if (!memory->recall(segment, constants)) {
        constants = segmentConstants<true>(segment);
        memory->remember(segment, constants);
    }
    for (;;) {
        const FastValue fast = fastValue(segment, constants, at);
        if (fast.certain) return fast.value;
        if (constants.isExact()) break;
        // Closer bounds may do. The frames around this one will need these constants, too.
        constants = segmentConstants<true>(segment);
        if (memory != nullptr) memory->remember(segment, constants);
    }
    return evaluateSegmentLiterally(keys[after - 1], keys[after], frame);
}

} // namespace kv::detail
