#!/usr/bin/env python3
"""Prints rootTables.h, the numbers that kernel/root.inl computes with, or checks that a file is what
would be printed:

    python3 makeRootTables.py > rootTables.h
    python3 makeRootTables.py --check rootTables.h

Every number is computed with 80 decimal digits and rounded to a double once, so that the output
is the same everywhere. The errors told in the comments are measured on the rounded numbers.
"""
import sys
from decimal import Decimal, getcontext
from fractions import Fraction
from math import comb

getcontext().prec = 80

DEGREE = 19


def decimal(fraction):
    return Decimal(fraction.numerator) / Decimal(fraction.denominator)


# --- cos(2/3 acos z), z in [0, 1], as a polynomial in w = 2z - 1 -----------------------------------


def taylor(terms):
    """Coefficients of g(w) = cos(2/3 acos((1 + w) / 2)) about w = 0, from its differential equation
    (3 - 2w - w^2) g'' - (1 + w) g' + 4/9 g = 0. The singularity nearest to 0 is w = -3, so that
    every term gains half a digit."""
    cos40 = Decimal("0.766")
    for _ in range(10):  # Newton: 4 c^3 - 3 c = cos 120 degrees
        cos40 -= (4 * cos40**3 - 3 * cos40 + Decimal("0.5")) / (12 * cos40**2 - 3)
    sin40 = (1 - cos40**2).sqrt()
    sin60 = Decimal("0.75").sqrt()
    a = [cos40, sin40 / sin60 / 3]
    for k in range(terms - 2):
        a.append(
            ((k + 1) * (2 * k + 1) * a[k + 1] + (k * k - Decimal(4) / 9) * a[k])
            / (3 * (k + 1) * (k + 2))
        )
    return a


def economised(a, degree):
    """The polynomial `a` in Chebyshev form, cut off behind `degree`, as a polynomial again. Cutting
    off a Chebyshev series is as good as the best approximation but for a few per cent."""
    chebyshev = [Decimal(0)] * len(a)
    for n, value in enumerate(a):
        for k in range(n // 2 + 1):
            m = n - 2 * k
            weight = Fraction(comb(n, k), 2**n) * (1 if m == 0 else 2)
            chebyshev[m] += value * decimal(weight)
    result = [Decimal(0)] * (degree + 1)
    previous, current = [1], [0, 1]  # T0, T1
    for m in range(degree + 1):
        for power, weight in enumerate(previous):
            result[power] += chebyshev[m] * weight
        following = [0] + [2 * c for c in current]
        for power, weight in enumerate(previous):
            following[power] -= weight
        previous, current = current, following
    return result


def polynomial(coefficients, x):
    value = Decimal(0)
    for c in reversed(coefficients):
        value = value * x + c
    return value


series = taylor(160)
third = [float(c) for c in economised(series, DEGREE)]
exact = [Decimal(c) for c in third]
points = [Decimal(i) / 500 for i in range(-500, 501)]
third_error = max(abs(polynomial(exact, w) - polynomial(series, w)) for w in points)

# --- z^(-1/3) over three octaves: a polynomial over the first, times a power of 2 ------------------


def cube_root(x):
    """By Newton's method, from a start that is good to about 15 digits."""
    y = Decimal(float(x) ** (1 / 3))
    for _ in range(4):
        y -= (y**3 - x) / (3 * y**2)
    return y


def through(points):
    """The polynomial through some points, by divided differences; the constant term first."""
    nodes = [x for x, _ in points]
    table = [y for _, y in points]
    for level in range(1, len(points)):
        for i in range(len(points) - 1, level - 1, -1):
            table[i] = (table[i] - table[i - 1]) / (nodes[i] - nodes[i - level])
    result = [Decimal(0)] * len(points)
    for node, weight in zip(reversed(nodes), reversed(table)):
        shifted = [Decimal(0)] + result[:-1]
        result = [below - node * c for below, c in zip(shifted, result)]
        result[0] += weight
    return result


# The Chebyshev nodes of degree 6 in [1, 2]; nothing depends on their last digits.
half_cosines = [Decimal(c) for c in ("0.482962913", "0.3535533905", "0.1294095225")]
cosines = [-c for c in half_cosines] + half_cosines[::-1]
nodes = [Decimal("1.5") + c for c in cosines]
first_octave = [float(c) for c in through([(x, 1 / cube_root(x)) for x in nodes])]
octaves = [float(c) for c in through([(Decimal(o), 1 / cube_root(Decimal(2) ** o)) for o in range(3)])]

worst = Decimal(0)
for octave in range(3):
    power = polynomial([Decimal(c) for c in octaves], Decimal(octave))
    for j in range(1001):
        m = 1 + Decimal(j) / 1000
        y = polynomial([Decimal(c) for c in first_octave], m) * power
        worst = max(worst, abs(1 - m * Decimal(2) ** octave * y**3))

# -----------------------------------------------------------------------------------------------------

short_third = Fraction(0.3333333333333333)
lack = decimal(Fraction(1, 3) - short_third)
exponent_term = float(lack * Decimal(2).ln())

text = []


def emit(line=""):
    text.append(line + "\n")


emit("// Printed by makeRootTables.py; change that, not this. What the numbers are for is told in")
emit("// kernel/root.inl.")
emit("#pragma once")
emit()
emit("// clang-format off")
emit("namespace kv::detail {")
emit()
emit("/// cos(2/3 acos z) on [0, 1] as a polynomial in 2z - 1, the constant term first. Differs from")
emit(f"/// the function by at most {third_error:.2e}.")
emit(f"constexpr double kThirdOfAngle[{DEGREE + 1}] = {{")
for c in third:
    emit(f"    {c!r},")
emit("};")
emit()
emit("/// m^(-1/3) on [1, 2] as a polynomial, and 2^(-n/3) as one through its values at n = 0, 1, 2. For")
emit("/// z = 2^n m their product y is close to z^(-1/3): |1 - z y^3| is at most")
emit(f"/// {worst:.2e}.")
emit(f"constexpr double kInverseRoot[{len(first_octave)}] = {{")
for c in first_octave:
    emit(f"    {c!r},")
emit("};")
emit(f"constexpr double kInverseRootOfOctave[{len(octaves)}] = {{")
for c in octaves:
    emit(f"    {c!r},")
emit("};")
emit()
emit("/// What a third has more than the double 0.3333333333333333, times the logarithm of 2: a power")
emit("/// with that exponent is this part smaller than the cube root, times the binary logarithm.")
emit(f"constexpr double kLackOfThird = {exponent_term!r};")
emit()
emit("} // namespace kv::detail")
emit("// clang-format on")

if len(sys.argv) == 3 and sys.argv[1] == "--check":
    with open(sys.argv[2], encoding="ascii") as file:
        if file.read() != "".join(text):
            sys.exit(f"{sys.argv[2]} is not what makeRootTables.py prints")
else:
    sys.stdout.write("".join(text))
