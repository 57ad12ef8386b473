// A point, a rotation, a line and a colour in single precision.
#pragma once

#include <array>
#include <cstddef>

#include "geometry/lines.h"
#include "geometry/single.h"

namespace dorvale {

/// A vector of three floats.
class SbVec3f {
public:
    SbVec3f() = default;
    SbVec3f(float x, float y, float z) : v_{x, y, z} {}
    explicit SbVec3f(Vec3 v)
        : SbVec3f(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)) {}

    float operator[](std::size_t i) const { return v_[i]; }
    Vec3 wide() const { return {v_[0], v_[1], v_[2]}; }

    /// Whether two points coincide: their *squared* distance is at most `tolerance`.
    bool equals(const SbVec3f& other, float tolerance) const {
        return coincide(wide(), other.wide(), tolerance);
    }

private:
    std::array<float, 3> v_{};
};

/// A rotation, held as a unit quaternion.
class SbRotation {
public:
    /// By an angle in radians about an axis through the origin, right-hand rule. An axis without a
    /// length gives the identity.
    void setValue(const SbVec3f& axis, float radians) {
        rotation_ = rotationAbout(axis.wide(), radians);
    }
    void multVec(const SbVec3f& in, SbVec3f& out) const {
        out = SbVec3f(rotated(in.wide(), rotation_));
    }

private:
    Rotation rotation_;
};

/// An infinite line: a position and a unit direction.
class SbLine {
public:
    void setValue(const SbVec3f& p0, const SbVec3f& p1) {
        line_ = lineThrough(p0.wide(), p1.wide());
        line_.direction = narrowed(line_.direction);
    }
    /// The foot of the perpendicular from a point.
    SbVec3f getClosestPoint(const SbVec3f& p) const {
        return SbVec3f(footOnLine(p.wide(), line_).point);
    }

private:
    Line line_;
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
