// Printed by makeRootTables.py; change that, not this. What the numbers are for is told in
// kernel/root.inl.
#pragma once

// clang-format off
namespace kv::detail {

/// cos(2/3 acos z) on [0, 1] as a polynomial in 2z - 1, the constant term first. Differs from
/// the function by at most 3.57e-17.
constexpr double kThirdOfAngle[20] = {
    0.766044443118978,
    0.24740906632285303,
    -0.015509188436486424,
    0.002466352815087338,
    -0.0005041246911250438,
    0.00011642545293476212,
    -2.8919936440265828e-05,
    7.541078640701342e-06,
    -2.0358689700992568e-06,
    5.641509636123585e-07,
    -1.5954537531426307e-07,
    4.586042851669284e-08,
    -1.334519367092948e-08,
    3.929463288067197e-09,
    -1.1880162409356414e-09,
    3.575095124594894e-10,
    -9.128174258928075e-11,
    2.7036688125375587e-11,
    -1.6089233320740645e-11,
    5.082538322352577e-12,
};

/// m^(-1/3) on [1, 2] as a polynomial, and 2^(-n/3) as one through its values at n = 0, 1, 2. For
/// z = 2^n m their product y is close to z^(-1/3): |1 - z y^3| is at most
/// 2.07e-5.
constexpr double kInverseRoot[6] = {
    1.7776471684684734,
    -1.5540274076469756,
    1.2271496199437588,
    -0.5865141615438084,
    0.15224956436938672,
    -0.01651167908988412,
};
constexpr double kInverseRootOfOctave[3] = {
    1.0,
    -0.22757921050551883,
    0.021279736489618555,
};

/// What a third has more than the double 0.3333333333333333, times the logarithm of 2: a power
/// with that exponent is this part smaller than the cube root, times the binary logarithm.
constexpr double kLackOfThird = 1.2825799321861034e-17;

} // namespace kv::detail
// clang-format on
