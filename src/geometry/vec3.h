// Points and vectors by value. Where there is no answer, as for the direction of a vector without a
// length, a function says so by std::optional.
#pragma once

#include <cmath>
#include <numbers>
#include <optional>

#include "model/records.h"

namespace dorvale {

/// What counts as the same place (in model units) and as the same direction (in radians).
struct Tolerances {
    double distance;
    double angle;
};

inline constexpr Tolerances kTolerances{0.01, 0.00026};

/// A vector no longer than this has no direction.
inline constexpr double kZeroLength = 1e-10;

/// A point or vector, in model or plane coordinates.
struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// The answer; zeros where there is none.
template <typename T> T orZero(const std::optional<T>& answer) { return answer.value_or(T{}); }

inline Vec3 fromArray(const double* p) { return {p[0], p[1], p[2]}; }
inline void writeTo(double* p, Vec3 v) {
    p[0] = v.x;
    p[1] = v.y;
    p[2] = v.z;
}

inline Vec3 widen(const ANK_PNT32& p) { return {p.x, p.y, p.z}; }
inline Vec3 widen(const ANK_DIR32& d) { return {d.x, d.y, d.z}; }
inline ANK_PNT32 toPoint32(Vec3 v) {
    return point32(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z));
}
inline ANK_DIR32 toDirection32(Vec3 v) {
    return direction32(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z));
}

inline Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3 operator-(Vec3 v) { return {-v.x, -v.y, -v.z}; }
inline Vec3 operator*(Vec3 v, double factor) { return {v.x * factor, v.y * factor, v.z * factor}; }
inline Vec3 operator/(Vec3 v, double divisor) {
    return {v.x / divisor, v.y / divisor, v.z / divisor};
}

/// The same point or vector with its z dropped.
inline Vec3 flat(Vec3 v) { return {v.x, v.y, 0.0}; }
/// A quarter turn counter-clockwise in the plane.
inline Vec3 quarterTurn(Vec3 v) { return {-v.y, v.x, 0.0}; }
inline Vec3 midpoint(Vec3 a, Vec3 b) { return (a + b) * 0.5; }
inline Vec3 moved(Vec3 from, Vec3 direction, double by) { return from + direction * by; }

inline double dot(Vec3 a, Vec3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec3 cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(Vec3 v) { return std::sqrt(dot(v, v)); }
inline double distance(Vec3 p, Vec3 q) { return length(p - q); }

/// False also for a vector that is not finite.
inline bool hasDirection(Vec3 v) {
    const double squared = dot(v, v);
    return squared > kZeroLength * kZeroLength && std::isfinite(squared);
}

inline std::optional<Vec3> unit(Vec3 v) {
    if (!hasDirection(v)) {
        return std::nullopt;
    }
    // Most directions of a part have their length; a root and three divisions would give them back.
    return dot(v, v) == 1.0 ? v : v / length(v);
}

/// The unit vector square to both, unless they are parallel.
inline std::optional<Vec3> unitNormal(Vec3 a, Vec3 b) { return unit(cross(a, b)); }

/// Unit normal of the plane through three points, unless they lie on one line.
inline std::optional<Vec3> normalOf(Vec3 p0, Vec3 p1, Vec3 p2) {
    return unitNormal(orZero(unit(p1 - p0)), orZero(unit(p2 - p0)));
}

/// Whether the angle between two legs, given by their squares, is larger than another angle.
inline bool angleExceeds(double oppositeSquared, double adjacentSquared, double angle) {
    // Up to 1 radian tan(angle) < 2 * angle, so that most cases need no arc tangent.
    return (angle < 1.0 && oppositeSquared > 4.0 * angle * angle * adjacentSquared) ||
           std::atan2(std::sqrt(oppositeSquared), std::sqrt(adjacentSquared)) > angle;
}

/// Neither parallel nor anti-parallel within an angle in radians; false where either has no length.
inline bool independent(Vec3 a, Vec3 b, double angularTolerance) {
    const Vec3 square = cross(a, b);
    const double shared = dot(a, b);
    return hasDirection(a) && hasDirection(b) &&
           angleExceeds(dot(square, square), shared * shared, angularTolerance);
}

/// The unsigned angle between two vectors, 0 to pi. Exactly 0 for equal directions, and as accurate
/// near 0 and pi as in between.
inline std::optional<double> angleBetween(Vec3 a, Vec3 b) {
    if (!hasDirection(a) || !hasDirection(b)) {
        return std::nullopt;
    }
    return std::atan2(length(cross(a, b)), dot(a, b));
}

/// The angle from a to b counter-clockwise about the normal, 0 up to but without 2 pi.
inline std::optional<double> angleAbout(Vec3 normal, Vec3 a, Vec3 b) {
    const std::optional<double> between = angleBetween(a, b);
    if (!between) {
        return std::nullopt;
    }
    constexpr double turn = 2.0 * std::numbers::pi;
    const double turned = dot(normal, cross(a, b)) < 0.0 ? turn - *between : *between;
    return turned < turn ? turned : 0.0;
}

} // namespace dorvale
