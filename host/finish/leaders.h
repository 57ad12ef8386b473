/// @file
/// The shape of leaders, in plane coordinates.
#pragma once

#include <optional>
#include <vector>

#include <dorvale/datamanager.h>

#include "host/geometry/vectors.h"

namespace host {

/// A leader along an arc of the annotation's plane.
struct ArcLeader {
    Vec3 center;
    double radius;
    /// The angle of its start from the plane's X axis, and the signed turn to its end at the text.
    double start;
    double sweep;

    /// A point of the circle, turned from the start.
    Vec3 at(double turn) const;
};

/// Nothing for any other leader, and for an arc without a length.
std::optional<ArcLeader> arcLeaderOf(const Ank_Leader& leader);

/// From the tip to the text; nothing for a leader that is no straight one.
std::vector<Vec3> straightLeaderOf(const Ank_Leader& leader);

/// Along its curve.
double lengthOf(const Ank_Leader& leader);

} // namespace host
