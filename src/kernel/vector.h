// Vector routines on arrays of n doubles, n being 2 or 3.
#pragma once

#include "kernel/arrays.h"

namespace dorvale {

/// Each routine returns 0, or a non-zero status for input that has no result (a vector without a
/// length, parallel vectors); it then writes nothing. Output may overlap input.
class CMathVector {
public:
    /// Dot product.
    static int zqvt02(int n, const double* a, const double* b, double* out) {
        *out = dot(load(n, a), load(n, b));
        return 0;
    }

    /// Cross product in 3D, not normalised.
    static int zqvt03(const double* a, const double* b, double* out) {
        writeTo(out, cross(fromArray(a), fromArray(b)));
        return 0;
    }

    /// Length and unit vector.
    static int zqvt04(int n, const double* v, double* length, double* out) {
        return normalise(n, load(n, v), length, out);
    }

    /// Unsigned angle, 0 to pi. The failing status is negative.
    static int zqvt05(int n, const double* a, const double* b, double* angle) {
        return store(angleBetween(load(n, a), load(n, b)), -1, angle);
    }

    /// Unit normal (a x b) / |a x b| in 3D; `length` receives |a x b|.
    static int zqvt08(const double* a, const double* b, double* length, double* out) {
        return normalise(3, cross(fromArray(a), fromArray(b)), length, out);
    }

    /// Distance and unit direction from b to a.
    static int zqvt09(int n, const double* a, const double* b, double* length, double* out) {
        return normalise(n, load(n, a) - load(n, b), length, out);
    }

    /// The angle from a to b counter-clockwise about the normal, 0 up to but without 2 pi.
    static int zqvt13(const double* a, const double* b, const double* normal, double* angle) {
        return store(angleAbout(fromArray(normal), fromArray(a), fromArray(b)), -1, angle);
    }

    /// 1 when a and b are neither parallel nor anti-parallel within tol radians; 0 otherwise, also
    /// where either has no length.
    static int zkvt00(int n, const double* a, const double* b, double tol) {
        return independent(load(n, a), load(n, b), tol) ? 1 : 0;
    }

private:
    /// Length and unit vector of v, both written together or not at all.
    static int normalise(int n, Vec3 v, double* length, double* out) {
        const std::optional<Vec3> direction = unit(v);
        if (!direction) {
            return 1;
        }
        *length = dorvale::length(v);
        store(n, *direction, out);
        return 0;
    }
};

} // namespace dorvale
