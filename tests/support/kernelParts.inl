// The steps of an evaluation as plain functions, for any compiled form of the kernel; see
// kernels.h.

inline BoundedNumber rootOf(const Segment& s, bool exact, double frame) {
    const Coefficients<double> a = coefficients(s);
    const SegmentConstants c = exact ? segmentConstants<true>(a) : segmentConstants<false>(a);
    const BoundedRoot<double> root = boundedRoot(s, c, frame);
    return {root.t, root.error};
}

inline BoundedNumber valueOf(const Segment& s, BoundedNumber root) {
    const BoundedRoot<double> t = {root.value, root.error};
    const BoundedValue<double> value = boundedValue(s.y0, s.y1, s.y2, s.y3, t);
    return {value.y, value.error};
}

inline bool isCertain(const Segment& s, bool exact, double frame) {
    const Coefficients<double> a = coefficients(s);
    const SegmentConstants c = exact ? segmentConstants<true>(a) : segmentConstants<false>(a);
    return fastValue(s, c, frame).certain;
}

inline double cubeRootOf(double z) {
    return cubeRoot(z).root;
}

inline double inverseSquareOf(double z) {
    return cubeRoot(z).inverseSquare;
}

inline double cosineOfTwoThirds(double z) {
    return cosOfTwoThirds(z);
}

constexpr KernelParts kParts = {&rootOf,     &valueOf,         &isCertain,
                                &cubeRootOf, &inverseSquareOf, &cosineOfTwoThirds};
