// Homogeneous transforms. Matrices are 4 x 4, row by row, for row vectors: p' = [x y z 1] * M, the
// translation in the last row.
#pragma once

#include "kernel/arrays.h"

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
        const Frame frame(fromArray(origin), fromArray(zAxis), fromArray(xAxis));
        writeTo(toLocal[0], frame.localMatrix());
        writeTo(toModel[0], frame.modelMatrix());
        return 0;
    }

private:
    static int transform(int dimIn, int count, int dimOut, const double* in, const double (*m)[4],
                         double w, double* out) {
        const Matrix matrix = matrixFrom(m[0]);
        for (; count > 0; --count, in += dimIn, out += dimOut) {
            store(dimOut, transformed(load(dimIn, in), matrix, w), out);
        }
        return 0;
    }
};

class CMathMatrix {
public:
    /// Inverse; non-zero, with nothing written, for a singular matrix. May work in place.
    static int zqmx13(const double (*m)[4], double (*inverse)[4]) {
        const std::optional<Matrix> inverted = dorvale::inverse(matrixFrom(m[0]));
        if (inverted) {
            writeTo(inverse[0], *inverted);
        }
        return inverted ? 0 : 1;
    }
};

} // namespace dorvale
