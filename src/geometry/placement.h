// Bringing a picked point into an annotation's plane.
#pragma once

#include <dorvale/dorvale.h>

#include "geometry/vec3.h"

namespace dorvale {

/// The record's point, moved along the viewing direction of its own matrix into the plane; as it
/// was where that direction runs in the plane or cannot be found.
Vec3 movedAlongView(const _ank_locate& locate, Vec3 origin, Vec3 xAxis, Vec3 yAxis,
                    Tolerances tolerances);

/// Orthogonal projection of a point onto a plane. Returns 0, or -1 with `out` untouched for axes
/// that span no plane.
int ProjPntToPlane(Vec3 point, Vec3 origin, Vec3 xAxis, Vec3 yAxis, Vec3& out);

/// Orthogonal projection onto the plane through a point with a unit normal; the point itself for a
/// normal without a length.
Vec3 droppedOnto(Vec3 point, Vec3 pointOfPlane, Vec3 unitNormal);

} // namespace dorvale
