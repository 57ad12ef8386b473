#include "geometry/matrix.h"

#include <algorithm>
#include <array>

namespace dorvale {

namespace {

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

std::optional<Matrix> inverse(const Matrix& matrix) {
    const auto& m = matrix.m;
    const Minors upper = minorsOf(m[0], m[1]);
    const Minors lower = minorsOf(m[2], m[3]);
    const double det = determinant(upper, lower);
    // In proportion to the rows, so that a small scale or a large translation makes no matrix
    // singular.
    constexpr double kSingular = 1e-14;
    const double scale = largestOf(m[0]) * largestOf(m[1]) * largestOf(m[2]) * largestOf(m[3]);
    if (!(std::abs(det) > kSingular * scale)) {
        return std::nullopt;
    }
    const double factor = 1.0 / det;
    std::optional<Matrix> result(std::in_place);
    setColumn(result->m, 0, m[1], lower, factor);
    setColumn(result->m, 1, m[0], lower, -factor);
    setColumn(result->m, 2, m[3], upper, factor);
    setColumn(result->m, 3, m[2], upper, -factor);
    return result;
}

} // namespace dorvale
