/// @file
/// Points and directions of the model, and points on paper.
#pragma once

#include <array>
#include <cmath>

#include <dorvale/datamanager.h>

namespace host {

/// x, y, z; what the library takes as 3 `double`.
using Vec3 = std::array<double, 3>;
/// 16 numbers, row by row, for row vectors: the translation stands in elements 12 to 14.
using Matrix = std::array<double, 16>;

inline Vec3 vectorOf(const ANK_PNT32& p) { return {p.x, p.y, p.z}; }
inline Vec3 vectorOf(const ANK_DIR32& d) { return {d.x, d.y, d.z}; }

/// A point on paper: x to the right, y upwards.
struct Vec2 {
    double x = 0;
    double y = 0;
};

inline Vec2 operator+(Vec2 a, Vec2 b) { return {a.x + b.x, a.y + b.y}; }
inline Vec2 operator-(Vec2 a, Vec2 b) { return {a.x - b.x, a.y - b.y}; }
inline Vec2 operator*(double s, Vec2 a) { return {s * a.x, s * a.y}; }
inline double length(Vec2 a) { return std::hypot(a.x, a.y); }
inline double dot(Vec2 a, Vec2 b) { return a.x * b.x + a.y * b.y; }
/// Positive where `b` lies counter-clockwise of `a`.
inline double cross(Vec2 a, Vec2 b) { return a.x * b.y - a.y * b.x; }
inline Vec2 leftOf(Vec2 a) { return {-a.y, a.x}; }

inline Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Vec3 operator*(double s, const Vec3& a) { return {s * a[0], s * a[1], s * a[2]}; }
inline double dot(const Vec3& a, const Vec3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double length(const Vec3& a) { return std::sqrt(dot(a, a)); }
/// Zero stays zero.
inline Vec3 unit(const Vec3& a) {
    const double size = length(a);
    return size > 0 ? (1 / size) * a : a;
}

constexpr double kFullTurn = 6.283185307179586;

/// The angle from `x` counter-clockwise to `p`, for `x` and `y` square to each other and of one
/// length: above 0, a full turn where `p` points along `x`.
inline double sweepTo(const Vec3& p, const Vec3& x, const Vec3& y) {
    constexpr double kSmallest = 1e-9;
    const double angle = std::atan2(dot(p, y), dot(p, x));
    return angle > kSmallest ? angle : angle + kFullTurn;
}

} // namespace host
