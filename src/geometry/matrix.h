// Homogeneous transforms by value.
#pragma once

#include <cstring>

#include "geometry/vec3.h"

namespace dorvale {

/// 4 x 4, row by row, for row vectors: p' = [x y z 1] * M; the translation in the last row.
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

/// @param w 1 for a point, 0 for a direction
inline Vec3 transformed(Vec3 v, const Matrix& matrix, double w = 1.0) {
    const auto image = [&, m = matrix.m](int j) {
        return v.x * m[0][j] + v.y * m[1][j] + v.z * m[2][j] + w * m[3][j];
    };
    return {image(0), image(1), image(2)};
}

/// The same without the translation.
inline Vec3 transformedDirection(Vec3 direction, const Matrix& matrix) {
    return transformed(direction, matrix, 0.0);
}

/// None for a singular matrix.
std::optional<Matrix> inverse(const Matrix& matrix);

/// Into a frame and out of it again.
struct FrameMatrices {
    Matrix toLocal;
    Matrix toModel;
};

/// The frame with an origin, a unit Z axis and a unit X axis; Y = Z x X.
inline FrameMatrices frameMatrices(Vec3 origin, Vec3 z, Vec3 x) {
    const Vec3 y = cross(z, x);
    return {{{{x.x, y.x, z.x, 0.0},
              {x.y, y.y, z.y, 0.0},
              {x.z, y.z, z.z, 0.0},
              {-dot(origin, x), -dot(origin, y), -dot(origin, z), 1.0}}},
            {{{x.x, x.y, x.z, 0.0},
              {y.x, y.y, y.z, 0.0},
              {z.x, z.y, z.z, 0.0},
              {origin.x, origin.y, origin.z, 1.0}}}};
}

} // namespace dorvale
