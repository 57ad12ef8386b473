// How the numerical routines take points and vectors: arrays of n doubles, n being 2 or 3. What
// they compute is in src/geometry; here it gets their names, and a status in place of an answer
// that may be missing.
#pragma once

#include "geometry/matrix.h"

namespace dorvale {

/// A missing third coordinate counts as 0.
inline Vec3 load(int n, const double* v) { return {v[0], v[1], n > 2 ? v[2] : 0.0}; }

inline void store(int n, Vec3 v, double* out) {
    out[0] = v.x;
    out[1] = v.y;
    if (n > 2) {
        out[2] = v.z;
    }
}

/// Writes an answer, or nothing.
/// @return 0, or `none` where there is no answer
inline int store(const std::optional<double>& answer, int none, double* out) {
    if (answer) {
        *out = *answer;
    }
    return answer ? 0 : none;
}

} // namespace dorvale
