/// @file
/// The edges that annotations measure.
#pragma once

#include <variant>

#include "host/geometry/vectors.h"

namespace host {

/// A straight edge.
struct LineEdge {
    Vec3 start;
    Vec3 end;
};

/// A circular edge. Runs counter-clockwise about its normal; a full circle where both ends are the
/// same point.
struct ArcEdge {
    Vec3 center;
    Vec3 normal;
    double radius;
    Vec3 start;
    Vec3 end;
};

using Edge = std::variant<LineEdge, ArcEdge>;

} // namespace host
