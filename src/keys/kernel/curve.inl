// Curves at a frame: where the frame lies, what is known of the segment there, its value.

KV_KERNEL_INLINE bool isHeld(const Segment& s) {
    return s.x0 == s.x1 && s.x2 == s.x3 && s.y0 == s.y1 && s.y2 == s.y3;
}

/// The constants that a segment is first tried with.
///
/// A segment that is evaluated twice in a row will be evaluated more often: its constants are worth
/// computing exactly, and worth being remembered.
KV_KERNEL_INLINE void findConstants(const Segment& segment, bool isNew, const SegmentMemory& memory,
                                    SegmentConstants& constants) {
    if (isNew) {
        constants = segmentConstants<false>(segment);
    } else if (!memory.recall(segment, constants)) {
        constants = segmentConstants<true>(segment);
        memory.remember(segment, constants);
    }
}

/// The value of a segment that is not held, if need be with the closer bounds of exact constants,
/// at last by the literal evaluator.
KV_KERNEL_INLINE float certainValue(const kvControlPoint& a, const kvControlPoint& b,
                                    const Segment& segment, SegmentConstants& constants,
                                    const SegmentMemory& memory, float frame) {
    const double at = static_cast<double>(frame);
    for (;;) {
        const FastValue fast = fastValue(segment, constants, at);
        if (fast.certain) return fast.value;
        if (constants.isExact()) return evaluateSegmentLiterally(a, b, frame);
        // The frames around this one will need these constants, too.
        constants = segmentConstants<true>(segment);
        memory.remember(segment, constants);
    }
}

/// See curveEvaluation.h.
inline float evaluateOne(const kvControlPointManager* curve, float frame) {
    if (curve == nullptr || curve->getCPs().size() < 2) return kNoCurveValue;
    const std::vector<kvControlPoint>& keys = curve->getCPs();
    const std::size_t after = KeyListReader::firstAfter(*curve, static_cast<double>(frame),
                                                        KeyListReader::segmentEnd(*curve));
    if (after == 0) return static_cast<float>(keys.front().getPoint().y);
    if (after == keys.size()) return static_cast<float>(keys.back().getPoint().y);

    const Segment segment = segmentBetween(keys[after - 1], keys[after]);
    const bool isNew = KeyListReader::setSegmentEnd(*curve, after);
    if (isHeld(segment)) return static_cast<float>(segment.y0);
    const SegmentMemory memory = KeyListReader::memoryOf(*curve);
    SegmentConstants constants;
    findConstants(segment, isNew, memory, constants);
    return certainValue(keys[after - 1], keys[after], segment, constants, memory, frame);
}
