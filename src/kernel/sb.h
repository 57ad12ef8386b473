// A point, a rotation, a line and a colour in single precision, for what an annotation asks for in
// that. They compute in double precision and round once, so that every platform gets the same
// result.
#pragma once

#include <array>
#include <cmath>

#include "kernel/triple.h"

namespace dorvale {

/// A vector of three floats.
class SbVec3f {
public:
    SbVec3f() = default;
    SbVec3f(float x, float y, float z) : v_{x, y, z} {}
    explicit SbVec3f(const Triple& v)
        : v_{static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])} {}

    float operator[](std::size_t i) const { return v_[i]; }
    Triple wide() const { return {v_[0], v_[1], v_[2]}; }

    /// Whether two points coincide: their *squared* distance is at most `tolerance`.
    bool equals(const SbVec3f& other, float tolerance) const {
        const Triple apart = difference(wide(), other.wide());
        return dotOf(apart, apart) <= static_cast<double>(tolerance);
    }

private:
    std::array<float, 3> v_{};
};

/// A rotation, held as a unit quaternion.
class SbRotation {
public:
    SbRotation() = default;

    /// By an angle in radians about an axis through the origin, right-hand rule. An axis without a
    /// length gives the identity.
    void setValue(const SbVec3f& axis, float radians) {
        const Triple a = axis.wide();
        const double length = lengthOf(a);
        const double half = 0.5 * static_cast<double>(radians);
        const double factor = hasDirection(a) ? std::sin(half) / length : 0.0;
        imaginary_ = scaled(a, factor);
        real_ = hasDirection(a) ? std::cos(half) : 1.0;
    }

    void multVec(const SbVec3f& in, SbVec3f& out) const {
        // v + 2 w (q x v) + 2 q x (q x v), Rodrigues' formula in quaternion form
        const Triple v = in.wide();
        const Triple once = crossOf(imaginary_, v);
        const Triple twice = crossOf(imaginary_, once);
        out = SbVec3f(along(along(v, once, 2.0 * real_), twice, 2.0));
    }

private:
    Triple imaginary_{};
    double real_ = 1.0;
};

/// An infinite line: a position and a unit direction.
class SbLine {
public:
    SbLine() = default;

    void setValue(const SbVec3f& p0, const SbVec3f& p1) {
        position_ = p0;
        const Triple through = difference(p1.wide(), p0.wide());
        const double length = lengthOf(through);
        direction_ = hasDirection(through) ? SbVec3f(scaled(through, 1.0 / length)) : SbVec3f();
    }

    /// The foot of the perpendicular from a point.
    SbVec3f getClosestPoint(const SbVec3f& p) const {
        const Triple from = position_.wide();
        const Triple direction = direction_.wide();
        return SbVec3f(along(from, direction, dotOf(difference(p.wide(), from), direction)));
    }

private:
    SbVec3f position_;
    SbVec3f direction_;
};

/// A colour, each channel from 0 to 1.
class SbColor4f {
public:
    SbColor4f(float r, float g, float b, float a) : v_{r, g, b, a} {}

    void getValue(float& r, float& g, float& b, float& a) const {
        r = v_[0];
        g = v_[1];
        b = v_[2];
        a = v_[3];
    }

private:
    std::array<float, 4> v_;
};

} // namespace dorvale
