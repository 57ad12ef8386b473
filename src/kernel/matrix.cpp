#include "kernel/matrix.h"

#include <algorithm>
#include <cmath>
#include <utility>

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

/// A matrix beside the identity: elimination turns the left half into the identity and the right
/// half into the inverse.
using Augmented = std::array<std::array<double, 8>, 4>;

Augmented besideIdentity(const double (*m)[4]) {
    Augmented rows{};
    for (std::size_t i = 0; i < 4; ++i) {
        std::copy_n(m[i], 4, rows[i].begin());
        rows[i][4 + i] = 1.0;
    }
    return rows;
}

double largestOf(const double* row) {
    double largest = 0.0;
    for (int j = 0; j < 4; ++j) {
        largest = std::max(largest, std::abs(row[j]));
    }
    return largest;
}

/// Gauss-Jordan elimination with scaled partial pivoting: a pivot counts in proportion to the
/// largest element that its row started with, so that a large translation or a small scale does not
/// make a matrix singular. False for a singular one.
bool eliminate(Augmented& rows, std::array<double, 4> rowScale) {
    constexpr double kNoPivot = 1e-14;
    for (std::size_t column = 0; column < 4; ++column) {
        const auto weight = [&](std::size_t row) {
            return std::abs(rows[row][column]) / rowScale[row];
        };
        std::size_t pivot = column;
        for (std::size_t row = column + 1; row < 4; ++row) {
            if (weight(row) > weight(pivot)) {
                pivot = row;
            }
        }
        if (!(weight(pivot) > kNoPivot)) {
            return false;
        }
        std::swap(rows[pivot], rows[column]);
        std::swap(rowScale[pivot], rowScale[column]);
        const double divisor = rows[column][column];
        for (double& element : rows[column]) {
            element /= divisor;
        }
        for (std::size_t row = 0; row < 4; ++row) {
            const double factor = rows[row][column];
            for (std::size_t j = 0; row != column && j < 8; ++j) {
                rows[row][j] -= factor * rows[column][j];
            }
        }
    }
    return true;
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
    Augmented rows = besideIdentity(m);
    if (!eliminate(rows, {largestOf(m[0]), largestOf(m[1]), largestOf(m[2]), largestOf(m[3])})) {
        return 1;
    }
    for (std::size_t i = 0; i < 4; ++i) {
        std::copy_n(rows[i].begin() + 4, 4, inverse[i]);
    }
    return 0;
}

} // namespace dorvale
