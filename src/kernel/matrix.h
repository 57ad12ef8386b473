// Homogeneous transforms. Matrices are 4 x 4, row by row, for row vectors: p' = [x y z 1] * M, the
// translation in the last row.
#pragma once

namespace dorvale {

class CMathTransform {
public:
    /// Transforms `count` points of dimIn coordinates into points of dimOut; `out` may be `in`.
    static int zfpt00(int dimIn, int count, int dimOut, const double* in, const double (*m)[4],
                      double* out);
    /// The same for directions: without the translation.
    static int zfvt00(int dimIn, int count, int dimOut, const double* in, const double (*m)[4],
                      double* out);
    /// The frame with an origin, a unit Z axis and a unit X axis (Y = Z x X): the matrix that
    /// carries model coordinates into it and the one that carries them back.
    static int zfmx03(const double* origin, const double* zAxis, const double* xAxis,
                      double (*toLocal)[4], double (*toModel)[4]);
};

class CMathMatrix {
public:
    /// Inverse; non-zero, with nothing written, for a singular matrix. May work in place.
    static int zqmx13(const double (*m)[4], double (*inverse)[4]);
};

} // namespace dorvale
