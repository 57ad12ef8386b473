// Points and arcs as curves of the object model. Points are in the annotation's plane.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "geometry/drawnarc.h"
#include "geometry/vec3.h"

namespace dorvale {

using Points = std::vector<ANK_PNT32>;

/// A circular arc by its centre, its two ends and its radius.
struct ArcShape {
    ANK_PNT32 center;
    ANK_PNT32 start;
    ANK_PNT32 end;
    float radius = 0.0F;
};

/// Null for fewer than two points, and for two equal ones; a longer list may be closed.
std::unique_ptr<Ank_PolyLine> makePolyline(const Points& points);

/// The segment between the first two points; null for fewer.
std::unique_ptr<Ank_Line> makeSegment(const Points& points);

/// An arc, its normal and how it is drawn.
struct MadeArc {
    std::unique_ptr<Ank_Ellipse> curve;
    ANK_DIR32 normal;
    DrawnArc drawn;
};

/// The arc from the start's angle to the end's. A normal whose components add up to 0 counts as
/// absent, as a null does; the arc's normal is then that of the three points.
MadeArc makeArc(const ArcShape& shape, const std::optional<Vec3>& normal);

} // namespace dorvale
