// Rigid motions of a whole scene.
#pragma once

#include "support/vec.h"

namespace dorvale::test {

/// A view matrix as the library takes it.
using ViewMatrix = std::array<double, 16>;

/// A frame of three unit axes, right-handed, and an origin. As a motion it carries the world's
/// frame onto itself.
struct Rigid {
    std::array<Vec, 3> axes{Vec{1.0, 0.0, 0.0}, Vec{0.0, 1.0, 0.0}, Vec{0.0, 0.0, 1.0}};
    Vec origin;

    static Rigid random(Random& random, double reach = 100.0) {
        Rigid motion;
        motion.axes[2] = random.direction();
        motion.axes[0] = unit(cross(random.direction(), motion.axes[2]));
        motion.axes[1] = cross(motion.axes[2], motion.axes[0]);
        motion.origin = random.point(reach);
        return motion;
    }

    Vec direction(const Vec& v) const { return axes[0] * v.x + axes[1] * v.y + axes[2] * v.z; }
    Vec point(const Vec& p) const { return origin + direction(p); }
    Vec directionBack(const Vec& v) const {
        return {dot(v, axes[0]), dot(v, axes[1]), dot(v, axes[2])};
    }
    Vec pointBack(const Vec& p) const { return directionBack(p - origin); }
    /// The motion back.
    Rigid back() const {
        return {{directionBack({1, 0, 0}), directionBack({0, 1, 0}), directionBack({0, 0, 1})},
                pointBack({0, 0, 0})};
    }

    /// The view of a viewer whose right, up and back are the axes, who stands at the origin.
    ViewMatrix view() const {
        const auto& [rows, shift] = back();
        const auto& [x, y, z] = rows;
        return {x.x, x.y, x.z, 0, y.x, y.y, y.z, 0, z.x, z.y, z.z, 0, shift.x, shift.y, shift.z, 1};
    }

    /// The frame after a motion; so `moved(m).view()` sees the moved scene as `view()` sees it
    /// unmoved.
    Rigid moved(const Rigid& motion) const {
        return {{motion.direction(axes[0]), motion.direction(axes[1]), motion.direction(axes[2])},
                motion.point(origin)};
    }
};

} // namespace dorvale::test
