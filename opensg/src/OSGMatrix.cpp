// The parts of matrix arithmetic that need more than a line: taking a transformation apart into
// rotation and scale, and the inverse. Done in double precision, so that the single-precision
// results carry no error of their own.

#include <OpenSG/OSGMatrix.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace osg {

namespace detail {

namespace {

typedef Real64 Matrix3[9]; // row by row

/// How far from a right angle (as a cosine) two columns may be and still count as orthogonal.
/// Well above what rounding to single precision does to them, far below what can be seen.
const Real64 kRightAngleTolerance = 1e-6;

/// A column this much shorter than the longest has no direction of its own left.
const Real64 kFlatTolerance = 1e-12;

void setIdentity(Matrix3& m) {
    for (std::size_t i = 0; i < 9; ++i)
        m[i] = i % 4 == 0 ? 1. : 0.;
}

Real64 columnDot(const Matrix3& m, std::size_t a, std::size_t b) {
    return m[a] * m[b] + m[3 + a] * m[3 + b] + m[6 + a] * m[6 + b];
}

Real64 determinant(const Matrix3& m) {
    return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) +
           m[2] * (m[3] * m[7] - m[4] * m[6]);
}

/// result = a * b
void multiply(const Matrix3& a, const Matrix3& b, Matrix3& result) {
    for (std::size_t r = 0; r < 3; ++r)
        for (std::size_t c = 0; c < 3; ++c)
            result[3 * r + c] = a[3 * r] * b[c] + a[3 * r + 1] * b[3 + c] + a[3 * r + 2] * b[6 + c];
}

void multiplyByTransposed(const Matrix3& a, const Matrix3& b, Matrix3& result) {
    for (std::size_t r = 0; r < 3; ++r)
        for (std::size_t c = 0; c < 3; ++c)
            result[3 * r + c] =
                a[3 * r] * b[3 * c] + a[3 * r + 1] * b[3 * c + 1] + a[3 * r + 2] * b[3 * c + 2];
}

/// Column `target` becomes a unit vector at right angles to the other two unit columns, so that
/// the three are a rotation.
void crossColumn(Matrix3& m, std::size_t target) {
    const std::size_t a = (target + 1) % 3;
    const std::size_t b = (target + 2) % 3;
    m[target] = m[3 + a] * m[6 + b] - m[6 + a] * m[3 + b];
    m[3 + target] = m[6 + a] * m[b] - m[a] * m[6 + b];
    m[6 + target] = m[a] * m[3 + b] - m[3 + a] * m[b];
}

/// Column `target` becomes some unit vector at right angles to the unit column `given`.
void anyPerpendicularColumn(Matrix3& m, std::size_t target, std::size_t given) {
    // The axis that is least along the given column keeps the result far from 0.
    std::size_t axis = 0;
    for (std::size_t r = 1; r < 3; ++r) {
        if (std::abs(m[3 * r + given]) < std::abs(m[3 * axis + given])) axis = r;
    }
    const Real64 along = m[3 * axis + given];
    const Real64 size = std::sqrt((std::max)(0., 1 - along * along));
    for (std::size_t r = 0; r < 3; ++r)
        m[3 * r + target] = ((r == axis ? 1. : 0.) - along * m[3 * r + given]) / size;
}

/// The columns of `m` are at right angles to each other. Divides each by its length; those without
/// length get a direction that makes the whole a rotation, if at all possible.
void normalizeColumns(Matrix3& m, Real64 (&lengths)[3]) {
    Real64 longest = 0;
    for (std::size_t c = 0; c < 3; ++c) {
        lengths[c] = std::sqrt(columnDot(m, c, c));
        longest = (std::max)(longest, lengths[c]);
    }
    std::size_t flat[3] = {};
    std::size_t flatCount = 0;
    for (std::size_t c = 0; c < 3; ++c) {
        if (lengths[c] <= longest * kFlatTolerance) {
            flat[flatCount++] = c;
        } else {
            for (std::size_t r = 0; r < 3; ++r)
                m[3 * r + c] /= lengths[c];
        }
    }
    if (flatCount == 3) {
        setIdentity(m);
    } else if (flatCount == 2) {
        anyPerpendicularColumn(m, flat[0], 3 - flat[0] - flat[1]);
        crossColumn(m, flat[1]);
    } else if (flatCount == 1) {
        crossColumn(m, flat[0]);
    }
}

bool hasOrthogonalColumns(const Matrix3& m) {
    for (std::size_t a = 0; a < 3; ++a) {
        const std::size_t b = (a + 1) % 3;
        const Real64 lengths = std::sqrt(columnDot(m, a, a) * columnDot(m, b, b));
        if (!(std::abs(columnDot(m, a, b)) <= lengths * kRightAngleTolerance)) return false;
    }
    return true;
}

/// The eigenvectors of a symmetric matrix as the columns of a rotation, by Jacobi's method. The
/// matrix is diagonal afterwards.
void diagonalize(Matrix3& symmetric, Matrix3& axes) {
    setIdentity(axes);
    // Converges quadratically: a handful of sweeps does; the bound is for input that is not finite.
    for (std::size_t sweep = 0; sweep < 32; ++sweep) {
        const Real64 off = std::abs(symmetric[1]) + std::abs(symmetric[2]) + std::abs(symmetric[5]);
        if (!(off > 0)) return;
        for (std::size_t p = 0; p < 2; ++p) {
            for (std::size_t q = p + 1; q < 3; ++q) {
                const Real64 entry = symmetric[3 * p + q];
                if (entry == 0) continue;
                const Real64 theta = (symmetric[4 * q] - symmetric[4 * p]) / (2 * entry);
                const Real64 t =
                    (theta < 0 ? -1 : 1) / (std::abs(theta) + std::sqrt(theta * theta + 1));
                const Real64 c = 1 / std::sqrt(t * t + 1);
                const Real64 s = t * c;
                Matrix3 turn;
                setIdentity(turn);
                turn[4 * p] = turn[4 * q] = c;
                turn[3 * p + q] = s;
                turn[3 * q + p] = -s;
                // symmetric = transposed(turn) * symmetric * turn, axes = axes * turn
                Matrix3 half;
                multiply(symmetric, turn, half);
                for (std::size_t r = 0; r < 3; ++r)
                    for (std::size_t col = 0; col < 3; ++col)
                        symmetric[3 * r + col] = turn[r] * half[col] + turn[3 + r] * half[3 + col] +
                                                 turn[6 + r] * half[6 + col];
                symmetric[3 * p + q] = symmetric[3 * q + p] = 0;
                Matrix3 turned;
                multiply(axes, turn, turned);
                std::copy(turned, turned + 9, axes);
            }
        }
    }
}

} // namespace

FactoredMatrix factorMatrix(const Real64 (&matrix)[9]) {
    FactoredMatrix result;
    Matrix3 m;
    std::copy(matrix, matrix + 9, m);
    // Inside out: the rotation is that of the matrix turned right side out again.
    const bool mirrors = determinant(m) < 0;
    if (mirrors) std::transform(m, m + 9, m, [](Real64 value) { return -value; });

    if (hasOrthogonalColumns(m)) {
        std::copy(m, m + 9, result.rotation);
        normalizeColumns(result.rotation, result.scale);
        setIdentity(result.stretchAxes);
    } else {
        // transposed(m) * m has the stretch axes as eigenvectors; m takes them to orthogonal
        // images, whose lengths are the scales.
        Matrix3 squared;
        for (std::size_t r = 0; r < 3; ++r)
            for (std::size_t c = 0; c < 3; ++c)
                squared[3 * r + c] = columnDot(m, r, c);
        diagonalize(squared, result.stretchAxes);
        Matrix3 images;
        multiply(m, result.stretchAxes, images);
        normalizeColumns(images, result.scale);
        multiplyByTransposed(images, result.stretchAxes, result.rotation);
    }
    if (mirrors) {
        for (Real64& scale : result.scale)
            scale = -scale;
    }
    return result;
}

void rotationToQuaternion(const Real64 (&rotation)[9], Real64 (&quaternion)[4]) {
    const Real64 trace = rotation[0] + rotation[4] + rotation[8];
    std::size_t i = 0;
    if (rotation[4] > rotation[0]) i = 1;
    if (rotation[8] > rotation[4 * i]) i = 2;
    // The largest component is computed first, so that nothing small is divided by.
    if (trace >= rotation[4 * i]) {
        const Real64 root = std::sqrt(trace + 1);
        const Real64 factor = 0.5 / root;
        quaternion[0] = (rotation[7] - rotation[5]) * factor;
        quaternion[1] = (rotation[2] - rotation[6]) * factor;
        quaternion[2] = (rotation[3] - rotation[1]) * factor;
        quaternion[3] = root / 2;
        return;
    }
    const std::size_t j = (i + 1) % 3;
    const std::size_t k = (i + 2) % 3;
    const Real64 root = std::sqrt(rotation[4 * i] - rotation[4 * j] - rotation[4 * k] + 1);
    const Real64 factor = 0.5 / root;
    quaternion[i] = root / 2;
    quaternion[j] = (rotation[3 * j + i] + rotation[3 * i + j]) * factor;
    quaternion[k] = (rotation[3 * k + i] + rotation[3 * i + k]) * factor;
    quaternion[3] = (rotation[3 * k + j] - rotation[3 * j + k]) * factor;
    if (quaternion[3] < 0) {
        for (std::size_t c = 0; c < 4; ++c)
            quaternion[c] = -quaternion[c];
    }
}

bool invertMatrix(const Real64 (&matrix)[16], Real64 (&inverse)[16]) {
    Real64 left[16];
    Real64 right[16];
    std::copy(matrix, matrix + 16, left);
    for (std::size_t i = 0; i < 16; ++i)
        right[i] = i % 5 == 0 ? 1. : 0.;
    for (std::size_t column = 0; column < 4; ++column) {
        std::size_t pivot = column;
        for (std::size_t row = column + 1; row < 4; ++row) {
            if (std::abs(left[4 * row + column]) > std::abs(left[4 * pivot + column])) pivot = row;
        }
        const Real64 divisor = left[4 * pivot + column];
        if (!(std::abs(divisor) > 0) || !std::isfinite(divisor)) return false;
        for (std::size_t i = 0; i < 4; ++i) {
            std::swap(left[4 * pivot + i], left[4 * column + i]);
            std::swap(right[4 * pivot + i], right[4 * column + i]);
            left[4 * column + i] /= divisor;
            right[4 * column + i] /= divisor;
        }
        for (std::size_t row = 0; row < 4; ++row) {
            const Real64 factor = left[4 * row + column];
            if (row == column || factor == 0) continue;
            for (std::size_t i = 0; i < 4; ++i) {
                left[4 * row + i] -= factor * left[4 * column + i];
                right[4 * row + i] -= factor * right[4 * column + i];
            }
        }
    }
    std::copy(right, right + 16, inverse);
    return true;
}

} // namespace detail

} // namespace osg
