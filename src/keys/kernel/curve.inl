// Curves at a frame: where the frame lies, what is known of the segment there, its value.

KV_KERNEL_INLINE bool isHeld(const Segment& s) {
    return s.x0 == s.x1 && s.x2 == s.x3 && s.y0 == s.y1 && s.y2 == s.y3;
}

// Each of the next three is a function by itself, so that the compiler keeps its numbers in
// registers and not those of the others in memory.

KV_KERNEL_SEPARATE SegmentConstants computedConstants(const Segment& segment,
                                                      const SegmentMemory& memory) {
    const SegmentConstants constants = segmentConstants<true>(segment);
    memory.remember(segment, constants);
    return constants;
}

/// The value in the segment that ends at `after`, by exact constants, which are remembered: the
/// frames around this one will need them, too.
KV_KERNEL_SEPARATE float valueByConstants(const kvControlPointManager& list, std::size_t after,
                                          float frame) {
    const std::vector<kvControlPoint>& keys = list.getCPs();
    const Segment segment = segmentBetween(keys[after - 1], keys[after]);
    const SegmentMemory memory = KeyListReader::memoryOf(list);
    SegmentConstants constants;
    if (!memory.recall(segment, constants)) constants = computedConstants(segment, memory);
    const FastValue fast = fastValue(segment, constants, static_cast<double>(frame));
    if (fast.certain) return fast.value;
    return evaluateSegmentLiterally(keys[after - 1], keys[after], frame);
}

/// The same in a segment that was not evaluated just before and may not be again: by constants that
/// are quicker to compute, where that does.
KV_KERNEL_SEPARATE float valueAtOnce(const kvControlPointManager& list, std::size_t after,
                                     float frame) {
    const std::vector<kvControlPoint>& keys = list.getCPs();
    const Segment segment = segmentBetween(keys[after - 1], keys[after]);
    const FastValue fast =
        fastValue(segment, segmentConstants<false>(segment), static_cast<double>(frame));
    return fast.certain ? fast.value : valueByConstants(list, after, frame);
}

/// See curveEvaluation.h.
inline float evaluateOne(const kvControlPointManager* curve, float frame) {
    if (curve == nullptr || curve->getCPs().size() < 2) return kNoCurveValue;
    const std::vector<kvControlPoint>& keys = curve->getCPs();
    const std::size_t after = KeyListReader::firstAfter(*curve, static_cast<double>(frame),
                                                        KeyListReader::segmentEnd(*curve));
    if (after == 0) return static_cast<float>(keys.front().getPoint().y);
    if (after == keys.size()) return static_cast<float>(keys.back().getPoint().y);

    const bool isNew = KeyListReader::setSegmentEnd(*curve, after);
    const Segment segment = segmentBetween(keys[after - 1], keys[after]);
    if (isHeld(segment)) return static_cast<float>(segment.y0);
    return isNew ? valueAtOnce(*curve, after, frame) : valueByConstants(*curve, after, frame);
}
