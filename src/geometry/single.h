// Single precision, for what an annotation asks for in that. Coordinates enter and leave as floats;
// in between they are doubles that are rounded once, so that every platform gets the same result.
#pragma once

#include "geometry/vec3.h"

namespace dorvale {

/// The nearest coordinates that floats hold.
inline Vec3 narrowed(Vec3 v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

/// Whether two points coincide: their *squared* distance is at most `tolerance`.
inline bool coincide(Vec3 p, Vec3 q, float tolerance) {
    const Vec3 apart = narrowed(p) - narrowed(q);
    return dot(apart, apart) <= static_cast<double>(tolerance);
}

/// A rotation as a unit quaternion.
struct Rotation {
    Vec3 imaginary;
    double real = 1.0;
};

/// By an angle in radians about an axis through the origin, right-hand rule. An axis without a
/// length turns nothing.
inline Rotation rotationAbout(Vec3 axis, float radians) {
    const Vec3 a = narrowed(axis);
    const double half = 0.5 * static_cast<double>(radians);
    const bool turns = hasDirection(a);
    return {a * (turns ? std::sin(half) / length(a) : 0.0), turns ? std::cos(half) : 1.0};
}

inline Vec3 rotated(Vec3 direction, const Rotation& rotation) {
    // v + 2 w (q x v) + 2 q x (q x v), Rodrigues' formula in quaternion form
    const Vec3 v = narrowed(direction);
    const Vec3 once = cross(rotation.imaginary, v);
    const Vec3 twice = cross(rotation.imaginary, once);
    return narrowed(moved(moved(v, once, 2.0 * rotation.real), twice, 2.0));
}

} // namespace dorvale
