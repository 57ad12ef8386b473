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

/// @param w 1 for a point, 0 for a direction, to which the translation does not apply
inline Vec3 transformed(Vec3 v, const Matrix& matrix, double w = 1.0) {
    const auto image = [&, m = matrix.m](int j) {
        return v.x * m[0][j] + v.y * m[1][j] + v.z * m[2][j] + w * m[3][j];
    };
    return {image(0), image(1), image(2)};
}

/// None for a singular matrix.
std::optional<Matrix> inverse(const Matrix& matrix);

/// A right-handed frame by its origin and unit axes.
struct Frame {
    Vec3 origin;
    Vec3 x;
    Vec3 y;
    Vec3 z;
    /// The model's origin in the frame.
    Vec3 shift;

    Frame(const Vec3& at, const Vec3& zAxis, const Vec3& xAxis)
        : origin(at), x(xAxis), y(cross(zAxis, xAxis)),
          z(zAxis), shift{-dot(at, x), -dot(at, y), -dot(at, z)} {}

    Vec3 toLocal(Vec3 p) const { return Vec3{dot(p, x), dot(p, y), dot(p, z)} + shift; }
    Vec3 toModel(Vec3 p) const { return x * p.x + y * p.y + z * p.z + origin; }

    Matrix localMatrix() const {
        return {{{x.x, y.x, z.x, 0.0},
                 {x.y, y.y, z.y, 0.0},
                 {x.z, y.z, z.z, 0.0},
                 {shift.x, shift.y, shift.z, 1.0}}};
    }
    Matrix modelMatrix() const {
        return {{{x.x, x.y, x.z, 0.0},
                 {y.x, y.y, y.z, 0.0},
                 {z.x, z.y, z.z, 0.0},
                 {origin.x, origin.y, origin.z, 1.0}}};
    }
};

} // namespace dorvale
