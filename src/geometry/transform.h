// Homogeneous transforms by value.
#pragma once

#include <cstring>

#include "geometry/vec3.h"
#include "kernel/matrix.h"

namespace dorvale {

/// 4 x 4, row by row, for row vectors; the translation in the last row.
struct Matrix {
    double m[4][4] = {};
};

inline Matrix matrixFrom(const double* elements) {
    Matrix matrix;
    std::memcpy(matrix.m, elements, sizeof(matrix.m));
    return matrix;
}

inline void writeTo(double* elements, const Matrix& matrix) {
    std::memcpy(elements, matrix.m, sizeof(matrix.m));
}

inline Vec3 transformed(Vec3 point, const Matrix& matrix) {
    Coordinates out{};
    CMathTransform::zfpt00(3, 1, 3, toArray(point).data(), matrix.m, out.data());
    return fromArray(out);
}

inline Vec3 transformedDirection(Vec3 direction, const Matrix& matrix) {
    Coordinates out{};
    CMathTransform::zfvt00(3, 1, 3, toArray(direction).data(), matrix.m, out.data());
    return fromArray(out);
}

/// Zeros for a singular matrix.
inline Matrix inverseOf(const Matrix& matrix) {
    Matrix inverse;
    CMathMatrix::zqmx13(matrix.m, inverse.m);
    return inverse;
}

} // namespace dorvale
