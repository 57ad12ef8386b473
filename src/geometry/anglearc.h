// The geometry of an angle dimension in its plane. Heights above the plane do not count.
#pragma once

#include <array>

#include "geometry/lines.h"

namespace dorvale {

/// The arc of the angle on whose side the text point lies.
struct AngleArc {
    /// One end of the arc, on the ray of its edge.
    struct Side {
        Vec3 arcEnd;
        /// The edge's end nearer to it, where an extension line to it starts, and whether there is
        /// one: the arc's end lies off the edge.
        Vec3 edgeEnd;
        bool isExtended = false;
    };

    /// Counter-clockwise from the first edge's ray to the second one's, 0 up to but without 2 pi.
    double angle = 0.0;
    Vec3 vertex;
    std::array<Side, 2> sides;
};

/// Of parallel edges an empty arc at the text point.
AngleArc angleArc(const Segment& edge1, const Segment& edge2, Vec3 textPoint);

/// The lines that bridge the gaps between the edges and their crossing; unused ones are zero.
struct GapLines {
    int count = 0;
    std::array<Segment, 2> lines;
};

GapLines gapLines(const Segment& edge1, const Segment& edge2);

} // namespace dorvale
