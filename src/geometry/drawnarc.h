// The points of a circular arc, as far as the arrow heads of arc leaders need them.
#pragma once

#include <dorvale/datamanager.h>

namespace dorvale {

/// The length of a straight leader's arrow, and of the chords of an arc: so an arrow on a long arc,
/// which is as long as a chord, looks like it.
inline constexpr double kArrowLength = 3.36;

/// A point's angle about a centre in x and y, in radians. All of it is single precision.
float angleAt(const ANK_PNT32& center, const ANK_PNT32& point);

/// An arc from one angle about its centre to another, as points spread evenly; all at the centre's
/// z.
struct DrawnArc {
    ANK_PNT32 center;
    float radiusX = 0.0F;
    float radiusY = 0.0F;
    double start = 0.0;
    double end = 0.0;
    int count = 0;

    ANK_PNT32 point(int i) const;
    double largerRadius() const;
};

/// From a start angle to an end angle, which is brought by whole turns to the side of the first
/// that the normal asks for; equal angles stay equal. The points are one more than the chords: one
/// chord per arrow length, at least 3 and at most 1000.
DrawnArc drawnArc(const ANK_PNT32& center, float radiusX, float radiusY, float startAngle,
                  float endAngle, const ANK_DIR32& normal);
/// The whole of an arc, by the angles of its two ends.
DrawnArc drawnArc(const Ank_Ellipse& arc);

/// The leader's curve if it is an arc, else null; so for a null leader.
const Ank_Ellipse* arcCurveOf(const Ank_Leader* leader);

} // namespace dorvale
