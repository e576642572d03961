// The steps of an evaluation as plain functions, for any compiled form of the kernel; see
// kernels.h.

inline SegmentConstants constantsOf(const Segment& s, bool exact) {
    const Coefficients<double> a = coefficients(s);
    return exact ? segmentConstants<true>(a) : segmentConstants<false>(a);
}

inline BoundedNumber rootOf(const Segment& s, bool exact, double frame) {
    const BoundedRoot<double> root = boundedRoot(s, constantsOf(s, exact), frame);
    return {root.t, root.error};
}

inline BoundedNumber valueOf(const Segment& s, BoundedNumber root) {
    const BoundedRoot<double> t = {root.value, root.error};
    const BoundedValue<double> value = boundedValue(s.y0, s.y1, s.y2, s.y3, t);
    return {value.y, value.error};
}

inline bool isCertain(const Segment& s, bool exact, double frame) {
    return fastValue(s, constantsOf(s, exact), frame).certain;
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
