// Numbers as the evaluation computes with them: one double, two side by side (Pair), or as many as
// the instruction set has room for (Number, KV_KERNEL_LANES of them). The operators are the same
// for all of them and work on each lane by itself; a comparison makes a mask that `?:`, & and |
// take.
//
// See evaluationKernel.h for where this is included.

#if KV_KERNEL_LANES == 1
using Number = double;
#else
typedef double Pair __attribute__((vector_size(16)));
typedef std::uint64_t PairOfWords __attribute__((vector_size(16)));
typedef double Number __attribute__((vector_size(8 * KV_KERNEL_LANES)));
typedef std::uint64_t NumberOfWords __attribute__((vector_size(8 * KV_KERNEL_LANES)));
using NumberMask = decltype(Number{} < Number{});
#endif

template <class Value>
struct BitsOf;
template <>
struct BitsOf<double> {
    using Type = std::uint64_t;
};
#if KV_KERNEL_LANES > 1
template <>
struct BitsOf<Pair> {
    using Type = PairOfWords;
};
#endif
#if KV_KERNEL_LANES > 2
template <>
struct BitsOf<Number> {
    using Type = NumberOfWords;
};
#endif

template <class Value>
KV_KERNEL_INLINE typename BitsOf<Value>::Type bitsOf(const Value& value) {
    typename BitsOf<Value>::Type bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

template <class Value>
KV_KERNEL_INLINE Value fromBits(const typename BitsOf<Value>::Type& bits) {
    Value value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

template <class Value>
KV_KERNEL_INLINE Value absolute(const Value& value) {
    return fromBits<Value>(bitsOf(value) & 0x7FFFFFFFFFFFFFFFU);
}

KV_KERNEL_INLINE double absolute(double value) {
    return std::fabs(value);
}

KV_KERNEL_INLINE double squareRoot(double value) {
    return std::sqrt(value);
}

#if KV_KERNEL_LANES > 1
KV_KERNEL_INLINE Pair squareRoot(const Pair& value) {
#if defined(__SSE2__)
    return static_cast<Pair>(_mm_sqrt_pd(static_cast<__m128d>(value)));
#else
    return Pair{std::sqrt(value[0]), std::sqrt(value[1])};
#endif
}
#endif

#if KV_KERNEL_LANES == 4
KV_KERNEL_INLINE Number squareRoot(const Number& value) {
    return static_cast<Number>(_mm256_sqrt_pd(static_cast<__m256d>(value)));
}
#endif

/// a * b + c for numbers that need not have the literal bits: where the processor can do it in one
/// step it is rounded once instead of twice, so that bounds for two roundings hold.
KV_KERNEL_INLINE double multiplyAdd(double a, double b, double c) {
#if defined(KV_KERNEL_FUSES)
    return __builtin_fma(a, b, c);
#else
    return a * b + c;
#endif
}

#if KV_KERNEL_LANES > 1
KV_KERNEL_INLINE Pair multiplyAdd(const Pair& a, const Pair& b, const Pair& c) {
#if defined(KV_KERNEL_FUSES)
    return static_cast<Pair>(
        _mm_fmadd_pd(static_cast<__m128d>(a), static_cast<__m128d>(b), static_cast<__m128d>(c)));
#else
    return a * b + c;
#endif
}
#endif

#if KV_KERNEL_LANES == 4
KV_KERNEL_INLINE Number multiplyAdd(const Number& a, const Number& b, const Number& c) {
#if defined(KV_KERNEL_FUSES)
    return static_cast<Number>(
        _mm256_fmadd_pd(static_cast<__m256d>(a), static_cast<__m256d>(b), static_cast<__m256d>(c)));
#else
    return a * b + c;
#endif
}
#endif

/// The same with a constant for one or two of the three.
template <class Value>
KV_KERNEL_INLINE Value multiplyAdd(const Value& a, double b, double c) {
    return multiplyAdd(a, Value{} + b, Value{} + c);
}
template <class Value>
KV_KERNEL_INLINE Value multiplyAdd(const Value& a, double b, const Value& c) {
    return multiplyAdd(a, Value{} + b, c);
}
template <class Value>
KV_KERNEL_INLINE Value multiplyAdd(const Value& a, const Value& b, double c) {
    return multiplyAdd(a, b, Value{} + c);
}

KV_KERNEL_INLINE bool isAnyTrue(bool mask) {
    return mask;
}

#if KV_KERNEL_LANES > 1
KV_KERNEL_INLINE bool isAnyTrue(const NumberMask& mask) {
#if KV_KERNEL_LANES == 4
    return (mask[0] | mask[1] | mask[2] | mask[3]) != 0;
#else
    return (mask[0] | mask[1]) != 0;
#endif
}
#endif

KV_KERNEL_INLINE bool areAllZero(const BitsOf<Number>::Type& bits) {
#if KV_KERNEL_LANES == 4
    return (bits[0] | bits[1] | bits[2] | bits[3]) == 0;
#elif KV_KERNEL_LANES == 2
    return (bits[0] | bits[1]) == 0;
#else
    return bits == 0;
#endif
}
