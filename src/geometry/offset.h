// The dimension line beside a measured length.
#pragma once

#include "geometry/lines.h"

namespace dorvale {

/// A measured length, moved parallel to itself through a point:
///
///     start ------- point ---- end
///       |             |         |     offset, `away` long
///     from --------- foot ----- to
struct OffsetLine {
    Vec3 start;
    Vec3 end;
    Vec3 foot;
    /// Unit direction from the length to the point; zero where the point lies on it.
    Vec3 away;
};

inline OffsetLine offsetThrough(Vec3 point, Vec3 from, Vec3 to) {
    const Foot foot = orZero(footOnLine(point, from, to));
    const Vec3 away = orZero(unit(point - foot.point));
    return {moved(from, away, foot.distance), moved(to, away, foot.distance), foot.point, away};
}

} // namespace dorvale
