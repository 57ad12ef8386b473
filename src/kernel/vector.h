// Vector routines on arrays of n doubles, n being 2 or 3.
#pragma once

#include <numbers>

#include "kernel/triple.h"

namespace dorvale {

/// Each routine returns 0, or a non-zero status for input that has no result (a vector without a
/// length, parallel vectors); it then writes nothing. Output may overlap input.
class CMathVector {
public:
    /// Dot product.
    static int zqvt02(int n, const double* a, const double* b, double* out) {
        *out = dotOf(load(n, a), load(n, b));
        return 0;
    }

    /// Cross product in 3D, not normalised.
    static int zqvt03(const double* a, const double* b, double* out) {
        store(3, crossOf(load(3, a), load(3, b)), out);
        return 0;
    }

    /// Length and unit vector.
    static int zqvt04(int n, const double* v, double* length, double* out) {
        return normalise(n, load(n, v), length, out);
    }

    /// Unsigned angle, 0 to pi. The failing status is negative.
    static int zqvt05(int n, const double* a, const double* b, double* angle) {
        const Triple from = load(n, a);
        const Triple to = load(n, b);
        if (!hasDirection(from) || !hasDirection(to)) {
            return -1;
        }
        *angle = angleBetween(from, to);
        return 0;
    }

    /// Unit normal (a x b) / |a x b| in 3D; `length` receives |a x b|.
    static int zqvt08(const double* a, const double* b, double* length, double* out) {
        return normalise(3, crossOf(load(3, a), load(3, b)), length, out);
    }

    /// Distance and unit direction from b to a.
    static int zqvt09(int n, const double* a, const double* b, double* length, double* out) {
        return normalise(n, difference(load(n, a), load(n, b)), length, out);
    }

    /// The angle from a to b counter-clockwise about the normal, 0 up to but without 2 pi.
    static int zqvt13(const double* a, const double* b, const double* normal, double* angle) {
        double unsignedAngle = 0.0;
        if (zqvt05(3, a, b, &unsignedAngle) != 0) {
            return -1;
        }
        constexpr double turn = 2.0 * std::numbers::pi;
        const bool clockwise = dotOf(load(3, normal), crossOf(load(3, a), load(3, b))) < 0.0;
        const double turned = clockwise ? turn - unsignedAngle : unsignedAngle;
        *angle = turned < turn ? turned : 0.0;
        return 0;
    }

    /// 1 when a and b are neither parallel nor anti-parallel within tol radians; 0 otherwise, also
    /// where either has no length.
    static int zkvt00(int n, const double* a, const double* b, double tol) {
        const Triple from = load(n, a);
        const Triple to = load(n, b);
        return hasDirection(from) && hasDirection(to) && divergeBeyond(from, to, tol) ? 1 : 0;
    }

private:
    /// Length and unit vector of v, both written together or not at all.
    static int normalise(int n, const Triple& v, double* length, double* out) {
        if (!hasDirection(v)) {
            return 1;
        }
        if (dotOf(v, v) == 1.0) {
            // As most directions of a part are; a root and three divisions would give them back.
            *length = 1.0;
            store(n, v, out);
            return 0;
        }
        const double norm = lengthOf(v);
        *length = norm;
        store(n, {v[0] / norm, v[1] / norm, v[2] / norm}, out);
        return 0;
    }
};

} // namespace dorvale
