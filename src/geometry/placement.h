// Bringing a picked point into an annotation's plane.
#pragma once

#include <dorvale/dorvale.h>

#include "geometry/vec3.h"

namespace dorvale {

/// The record's point, moved along the viewing direction of its own matrix into a plane; as it was
/// where that direction runs in the plane or cannot be found.
Vec3 movedAlongView(const _ank_locate& locate, Vec3 origin, Vec3 unitNormal,
                    double angularTolerance = kTolerances.angle);

/// Orthogonal projection of a point onto a plane; the point itself for a normal without a length.
inline Vec3 ProjPntToPlane(Vec3 point, Vec3 origin, Vec3 unitNormal) {
    return moved(point, unitNormal, dot(origin - point, unitNormal));
}

} // namespace dorvale
