#include "kernel/matrix.h"

#include <algorithm>
#include <cmath>

#include "kernel/triple.h"

namespace dorvale {

namespace {

/// Transforms `count` points; w is 1 for points and 0 for directions.
void transform(int dimIn, int count, int dimOut, const double* in, const double (*m)[4], double w,
               double* out) {
    for (int i = 0; i < count; ++i) {
        const Triple p = load(dimIn, in + static_cast<std::ptrdiff_t>(i) * dimIn);
        Triple image{};
        for (std::size_t j = 0; j < 3; ++j) {
            image[j] = p[0] * m[0][j] + p[1] * m[1][j] + p[2] * m[2][j] + w * m[3][j];
        }
        store(dimOut, image, out + static_cast<std::ptrdiff_t>(i) * dimOut);
    }
}

/// The 2 x 2 determinants of two rows, by columns: 01, 02, 03, 12, 13, 23.
using Minors = std::array<double, 6>;

Minors minorsOf(const double* upper, const double* lower) {
    const auto minor = [&](int i, int j) { return upper[i] * lower[j] - upper[j] * lower[i]; };
    return {minor(0, 1), minor(0, 2), minor(0, 3), minor(1, 2), minor(1, 3), minor(2, 3)};
}

/// Laplace's expansion by the upper and the lower two rows.
double determinant(const Minors& s, const Minors& c) {
    return s[0] * c[5] - s[1] * c[4] + s[2] * c[3] + s[3] * c[2] - s[4] * c[1] + s[5] * c[0];
}

double largestOf(const double* row) {
    return std::max({std::abs(row[0]), std::abs(row[1]), std::abs(row[2]), std::abs(row[3])});
}

/// One row of the adjugate's upper or lower half: the cofactors that a row of the other half makes
/// with the minors of the opposite two rows.
std::array<double, 4> cofactors(const double* row, const Minors& m) {
    return {row[1] * m[5] - row[2] * m[4] + row[3] * m[3],
            -row[0] * m[5] + row[2] * m[2] - row[3] * m[1],
            row[0] * m[4] - row[1] * m[2] + row[3] * m[0],
            -row[0] * m[3] + row[1] * m[1] - row[2] * m[0]};
}

} // namespace

int CMathTransform::zfpt00(int dimIn, int count, int dimOut, const double* in, const double (*m)[4],
                           double* out) {
    transform(dimIn, count, dimOut, in, m, 1.0, out);
    return 0;
}

int CMathTransform::zfvt00(int dimIn, int count, int dimOut, const double* in, const double (*m)[4],
                           double* out) {
    transform(dimIn, count, dimOut, in, m, 0.0, out);
    return 0;
}

int CMathTransform::zfmx03(const double* origin, const double* zAxis, const double* xAxis,
                           double (*toLocal)[4], double (*toModel)[4]) {
    const Triple o = load(3, origin);
    const Triple z = load(3, zAxis);
    const Triple x = load(3, xAxis);
    const std::array<Triple, 3> axes{x, crossOf(z, x), z};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            toModel[i][j] = axes[i][j];
            toLocal[j][i] = axes[i][j];
        }
        toModel[3][i] = o[i];
        toLocal[3][i] = -dotOf(o, axes[i]);
        toModel[i][3] = 0.0;
        toLocal[i][3] = 0.0;
    }
    toModel[3][3] = 1.0;
    toLocal[3][3] = 1.0;
    return 0;
}

int CMathMatrix::zqmx13(const double (*m)[4], double (*inverse)[4]) {
    const Minors upper = minorsOf(m[0], m[1]);
    const Minors lower = minorsOf(m[2], m[3]);
    const double det = determinant(upper, lower);
    // In proportion to the rows, so that a small scale or a large translation makes no matrix
    // singular.
    constexpr double kSingular = 1e-14;
    const double scale = largestOf(m[0]) * largestOf(m[1]) * largestOf(m[2]) * largestOf(m[3]);
    if (!(std::abs(det) > kSingular * scale)) {
        return 1;
    }
    // Column j of the inverse is row j's cofactors over the determinant, with alternating signs.
    const std::array<std::array<double, 4>, 4> columns{
        cofactors(m[1], lower), cofactors(m[0], lower), cofactors(m[3], upper),
        cofactors(m[2], upper)};
    const double factor = 1.0 / det;
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
            inverse[i][j] = columns[j][i] * (j % 2 == 0 ? factor : -factor);
        }
    }
    return 0;
}

} // namespace dorvale
