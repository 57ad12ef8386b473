// Points and vectors inside the kernel: three doubles by value, read from and written to arrays of
// two or three.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace dorvale {

/// A vector no longer than this has no direction.
inline constexpr double kZeroLength = 1e-10;

using Triple = std::array<double, 3>;

/// A missing third coordinate counts as 0.
inline Triple load(int n, const double* v) { return {v[0], v[1], n > 2 ? v[2] : 0.0}; }

inline void store(int n, const Triple& v, double* out) {
    out[0] = v[0];
    out[1] = v[1];
    if (n > 2) {
        out[2] = v[2];
    }
}

inline double dotOf(const Triple& a, const Triple& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline Triple crossOf(const Triple& a, const Triple& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline Triple difference(const Triple& a, const Triple& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

/// from + factor * v
inline Triple along(const Triple& from, const Triple& v, double factor) {
    return {from[0] + factor * v[0], from[1] + factor * v[1], from[2] + factor * v[2]};
}

inline Triple scaled(const Triple& v, double factor) {
    return {v[0] * factor, v[1] * factor, v[2] * factor};
}

inline double lengthOf(const Triple& v) { return std::sqrt(dotOf(v, v)); }

/// False also for a vector that is not finite.
inline bool hasDirection(const Triple& v) {
    const double squared = dotOf(v, v);
    return squared > kZeroLength * kZeroLength && std::isfinite(squared);
}

/// The point of a segment that is nearest to p.
inline Triple nearestOnSegment(const Triple& p, const Triple& start, const Triple& end) {
    const Triple v = difference(end, start);
    const double squared = dotOf(v, v);
    const double share = squared > 0.0 ? dotOf(difference(p, start), v) / squared : 0.0;
    return along(start, v, std::clamp(share, 0.0, 1.0));
}

/// Whether the angle between two legs, given by their squares, is larger than another angle.
inline bool angleExceeds(double oppositeSquared, double adjacentSquared, double angle) {
    // Up to 1 radian tan(angle) < 2 * angle, so that most cases need no arc tangent.
    return (angle < 1.0 && oppositeSquared > 4.0 * angle * angle * adjacentSquared) ||
           std::atan2(std::sqrt(oppositeSquared), std::sqrt(adjacentSquared)) > angle;
}

/// Whether the lines along two vectors enclose more than an angle.
inline bool divergeBeyond(const Triple& a, const Triple& b, double angle) {
    const Triple square = crossOf(a, b);
    const double shared = dotOf(a, b);
    return angleExceeds(dotOf(square, square), shared * shared, angle);
}

/// The unsigned angle between two vectors, 0 to pi. Exactly 0 for equal directions, and as accurate
/// near 0 and pi as in between.
inline double angleBetween(const Triple& a, const Triple& b) {
    return std::atan2(lengthOf(crossOf(a, b)), dotOf(a, b));
}

} // namespace dorvale
