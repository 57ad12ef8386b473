// Homogeneous transforms. Matrices are 4 x 4, row by row, for row vectors: p' = [x y z 1] * M, the
// translation in the last row.
#pragma once

#include "kernel/triple.h"

namespace dorvale {

class CMathTransform {
public:
    /// Transforms `count` points of dimIn coordinates into points of dimOut; `out` may be `in`.
    static int zfpt00(int dimIn, int count, int dimOut, const double* in, const double (*m)[4],
                      double* out) {
        return transform(dimIn, count, dimOut, in, m, 1.0, out);
    }

    /// The same for directions: without the translation.
    static int zfvt00(int dimIn, int count, int dimOut, const double* in, const double (*m)[4],
                      double* out) {
        return transform(dimIn, count, dimOut, in, m, 0.0, out);
    }

    /// The frame with an origin, a unit Z axis and a unit X axis (Y = Z x X): the matrix that
    /// carries model coordinates into it and the one that carries them back.
    static int zfmx03(const double* origin, const double* zAxis, const double* xAxis,
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

private:
    /// Transforms `count` points; w is 1 for points and 0 for directions.
    static int transform(int dimIn, int count, int dimOut, const double* in, const double (*m)[4],
                         double w, double* out) {
        for (int i = 0; i < count; ++i) {
            const Triple p = load(dimIn, in + static_cast<std::ptrdiff_t>(i) * dimIn);
            const auto image = [&](int j) {
                return p[0] * m[0][j] + p[1] * m[1][j] + p[2] * m[2][j] + w * m[3][j];
            };
            store(dimOut, {image(0), image(1), image(2)},
                  out + static_cast<std::ptrdiff_t>(i) * dimOut);
        }
        return 0;
    }

    static void setRow(double* row, const Triple& v, double w) {
        store(3, v, row);
        row[3] = w;
    }
};

class CMathMatrix {
public:
    /// Inverse; non-zero, with nothing written, for a singular matrix. May work in place.
    static int zqmx13(const double (*m)[4], double (*inverse)[4]);
};

} // namespace dorvale
