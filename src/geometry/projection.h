// Arcs between the model and their own plane, and points turned about an axis.
#pragma once

#include <memory>

#include "geometry/curves.h"

namespace dorvale {

/// The point at a distance from `base` along a direction that is turned about an axis by an angle
/// in radians, right-hand rule. Axis and direction count in single precision.
Vec3 pointByAngle(Vec3 axis, Vec3 direction, float angle, Vec3 base, double distance);

/// The same arc in the coordinates of its own plane.
/// @param matrix receives the plane-to-model matrix
/// @return null, with nothing written, for a radius that is not positive
std::unique_ptr<Ank_Ellipse> arcInItsPlane(const Ank_Ellipse& ellipse, double* matrix);

} // namespace dorvale
