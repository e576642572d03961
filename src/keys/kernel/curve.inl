// Curves at a frame: where the frame lies, what is known of the segment there, its value.

KV_KERNEL_INLINE bool isHeld(const Segment& s) {
#if KV_KERNEL_LANES > 1
    const auto same =
        (Pair{s.x0, s.y0} == Pair{s.x1, s.y1}) & (Pair{s.x2, s.y2} == Pair{s.x3, s.y3});
    return (same[0] & same[1]) != 0;
#else
    return s.x0 == s.x1 && s.x2 == s.x3 && s.y0 == s.y1 && s.y2 == s.y3;
#endif
}

/// Where a frame lies.
struct Place {
    const kvControlPointManager& list;
    std::size_t after; ///< the key at which its segment ends
};

KV_KERNEL_INLINE Segment segmentAt(const Place& at) {
    const std::vector<kvControlPoint>& keys = at.list.getCPs();
    return segmentBetween(keys[at.after - 1], keys[at.after]);
}

// Each of the next three is a function by itself, so that the compiler keeps the numbers of the
// usual way in registers and not those of the others in memory.

KV_KERNEL_SEPARATE float literalValue(Place at, float frame) {
    const std::vector<kvControlPoint>& keys = at.list.getCPs();
    return evaluateSegmentLiterally(keys[at.after - 1], keys[at.after], frame);
}

/// By exact constants, which are remembered: the frames around this one will need them, too.
KV_KERNEL_SEPARATE float valueByNewConstants(Place at, float frame) {
    const Segment segment = segmentAt(at);
    const Coefficients<double> a = coefficients(segment);
    const SegmentConstants constants = segmentConstants<true>(a);
    KeyListReader::memoryOf(at.list).remember(a, constants);
    const FastValue fast = fastValue(segment, constants, static_cast<double>(frame));
    return fast.certain ? fast.value : literalValue(at, frame);
}

/// In a segment that was not evaluated just before, nor any with the same cubic, and may not be
/// again: by constants that are quicker to compute, where that does.
KV_KERNEL_SEPARATE float valueAtOnce(Place at, float frame) {
    const Segment segment = segmentAt(at);
    const FastValue fast = fastValue(segment, segmentConstants<false>(coefficients(segment)),
                                     static_cast<double>(frame));
    return fast.certain ? fast.value : valueByNewConstants(at, frame);
}

/// See curveEvaluation.h.
inline float evaluateOne(const kvControlPointManager* curve, float frame) {
    if (curve == nullptr || curve->getCPs().size() < 2) return kNoCurveValue;
    const std::vector<kvControlPoint>& keys = curve->getCPs();
    const std::size_t after = KeyListReader::firstAfter(*curve, static_cast<double>(frame),
                                                        KeyListReader::segmentEnd(*curve));
    if (after == 0) return static_cast<float>(keys.front().getPoint().y);
    if (after == keys.size()) return static_cast<float>(keys.back().getPoint().y);

    const Place at{*curve, after};
    const bool isNew = KeyListReader::setSegmentEnd(*curve, after);
    const Segment segment = segmentAt(at);
    if (isHeld(segment)) return static_cast<float>(segment.y0);
    const Coefficients<double> a = coefficients(segment);
    const SegmentMemory memory = KeyListReader::memoryOf(*curve);
    SegmentConstants constants;
    if (memory.recall(a, constants)) {
        const FastValue fast = fastValue(segment, constants, static_cast<double>(frame));
        return fast.certain ? fast.value : literalValue(at, frame);
    }
    if (memory.isAskedAgain(a) || !isNew) return valueByNewConstants(at, frame);
    return valueAtOnce(at, frame);
}
