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

void setRow(double* row, const Triple& v, double w) {
    store(3, v, row);
    row[3] = w;
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
    return std::max(std::max(std::abs(row[0]), std::abs(row[1])),
                    std::max(std::abs(row[2]), std::abs(row[3])));
}

/// The cofactors that a row makes with the minors of the opposite two rows, as a column of the
/// inverse.
void setColumn(double (*inverse)[4], int column, const double* row, const Minors& m,
               double factor) {
    inverse[0][column] = (row[1] * m[5] - row[2] * m[4] + row[3] * m[3]) * factor;
    inverse[1][column] = (row[2] * m[2] - row[0] * m[5] - row[3] * m[1]) * factor;
    inverse[2][column] = (row[0] * m[4] - row[1] * m[2] + row[3] * m[0]) * factor;
    inverse[3][column] = (row[1] * m[1] - row[0] * m[3] - row[2] * m[0]) * factor;
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
    const Triple x = load(3, xAxis);
    const Triple z = load(3, zAxis);
    const Triple y = crossOf(z, x);
    setRow(toModel[0], x, 0.0);
    setRow(toModel[1], y, 0.0);
    setRow(toModel[2], z, 0.0);
    setRow(toModel[3], o, 1.0);
    setRow(toLocal[0], {x[0], y[0], z[0]}, 0.0);
    setRow(toLocal[1], {x[1], y[1], z[1]}, 0.0);
    setRow(toLocal[2], {x[2], y[2], z[2]}, 0.0);
    setRow(toLocal[3], {-dotOf(o, x), -dotOf(o, y), -dotOf(o, z)}, 1.0);
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
    const double factor = 1.0 / det;
    double result[4][4];
    setColumn(result, 0, m[1], lower, factor);
    setColumn(result, 1, m[0], lower, -factor);
    setColumn(result, 2, m[3], upper, factor);
    setColumn(result, 3, m[2], upper, -factor);
    for (int i = 0; i < 4; ++i) {
        std::copy_n(result[i], 4, inverse[i]);
    }
    return 0;
}

} // namespace dorvale
