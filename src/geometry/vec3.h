// Points and vectors by value, and the kernel's routines on them. Where a routine has no result (a
// vector without a length, say), the outcome here is a defined one: zero, unless the comment says
// otherwise.
#pragma once

#include <array>
#include <optional>

#include "kernel/geolib.h"
#include "kernel/vector.h"
#include "model/records.h"

namespace dorvale {

/// What counts as the same place (in model units) and as the same direction (in radians).
struct Tolerances {
    double distance;
    double angle;
};

inline constexpr Tolerances kTolerances{0.01, 0.00026};

/// A point or vector, in model or plane coordinates.
struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

using Coordinates = std::array<double, 3>;

inline Coordinates toArray(Vec3 v) { return {v.x, v.y, v.z}; }
inline Vec3 fromArray(const Coordinates& c) { return {c[0], c[1], c[2]}; }
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

inline double dot(Vec3 a, Vec3 b) {
    double product = 0.0;
    CMathVector::zqvt02(3, toArray(a).data(), toArray(b).data(), &product);
    return product;
}

inline Vec3 cross(Vec3 a, Vec3 b) {
    Coordinates out{};
    CMathVector::zqvt03(toArray(a).data(), toArray(b).data(), out.data());
    return fromArray(out);
}

/// A unit vector, where the vector has a length.
inline std::optional<Vec3> tryUnit(Vec3 v) {
    double length = 0.0;
    Coordinates out{};
    if (CMathVector::zqvt04(3, toArray(v).data(), &length, out.data()) != 0) {
        return std::nullopt;
    }
    return fromArray(out);
}

inline Vec3 unit(Vec3 v) { return tryUnit(v).value_or(Vec3{}); }

/// The unit vector square to both, where they are not parallel.
inline std::optional<Vec3> tryUnitNormal(Vec3 a, Vec3 b) {
    double length = 0.0;
    Coordinates out{};
    if (CMathVector::zqvt08(toArray(a).data(), toArray(b).data(), &length, out.data()) != 0) {
        return std::nullopt;
    }
    return fromArray(out);
}

inline Vec3 unitNormal(Vec3 a, Vec3 b) { return tryUnitNormal(a, b).value_or(Vec3{}); }

/// Neither parallel nor anti-parallel within an angle in radians.
inline bool independent(Vec3 a, Vec3 b, double angularTolerance) {
    return CMathVector::zkvt00(3, toArray(a).data(), toArray(b).data(), angularTolerance) == 1;
}

/// The angle from a to b counter-clockwise about the normal, in radians, where both have a length.
inline std::optional<double> angleAbout(Vec3 normal, Vec3 a, Vec3 b) {
    double angle = 0.0;
    if (CMathVector::zqvt13(toArray(a).data(), toArray(b).data(), toArray(normal).data(), &angle) !=
        0) {
        return std::nullopt;
    }
    return angle;
}

inline double distance(Vec3 p, Vec3 q) {
    double length = 0.0;
    CMathGeolib::znpp00(3, toArray(p).data(), toArray(q).data(), &length);
    return length;
}

inline Vec3 moved(Vec3 from, Vec3 direction, double by) {
    Coordinates out{};
    CMathGeolib::movPnt(3, toArray(direction).data(), toArray(from).data(), by, out.data());
    return fromArray(out);
}

/// Where a point stands beside a line.
struct Foot {
    Vec3 point;
    double distance = 0.0;
};

/// The perpendicular from a point to the infinite line through a and b.
inline Foot footOnLine(Vec3 p, Vec3 a, Vec3 b) {
    Coordinates foot{};
    double along = 0.0;
    double away = 0.0;
    CMathGeolib::zhpl01(3, toArray(p).data(), 3, toArray(a).data(), toArray(b).data(),
                        kTolerances.distance, kTolerances.angle, foot.data(), &along, &away);
    return {fromArray(foot), away};
}

} // namespace dorvale
