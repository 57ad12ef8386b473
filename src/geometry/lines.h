// Straight lines and edges.
#pragma once

#include "geometry/vec3.h"

namespace dorvale {

struct Segment {
    Vec3 start;
    Vec3 end;
};

inline Segment flat(const Segment& s) { return {flat(s.start), flat(s.end)}; }

/// An infinite line by one of its points and its unit direction.
struct Line {
    Vec3 point;
    Vec3 direction;

    Vec3 at(double reach) const { return moved(point, direction, reach); }
};

/// The line from one point to another; without a direction where they coincide.
inline Line lineThrough(Vec3 from, Vec3 to) {
    const Vec3 v = to - from;
    return {from, hasDirection(v) ? v * (1.0 / length(v)) : Vec3{}};
}

/// The line of an edge; without a direction for an edge without a length.
inline Line lineAlong(const Segment& edge) {
    return {edge.start, orZero(unit(edge.end - edge.start))};
}

/// Where a point stands beside a line: its foot, the foot's distance from the line's point along
/// the line, and its own distance from the line.
struct Foot {
    Vec3 point;
    double along = 0.0;
    double distance = 0.0;
};

inline Foot footOnLine(Vec3 p, const Line& line) {
    const double reach = dot(p - line.point, line.direction);
    const Vec3 foot = line.at(reach);
    return {foot, reach, distance(p, foot)};
}

/// The perpendicular from a point to the infinite line through a and b, unless these coincide.
inline std::optional<Foot> footOnLine(Vec3 p, Vec3 a, Vec3 b) {
    return hasDirection(b - a) ? std::optional(footOnLine(p, lineThrough(a, b))) : std::nullopt;
}

/// The same on an edge's line.
inline std::optional<Foot> footOnLine(Vec3 p, const Segment& edge) {
    return footOnLine(p, edge.start, edge.end);
}

/// A point within this distance of an edge lies on it.
inline constexpr double kOnEdge = 0.01;
bool liesOn(const Segment& edge, Vec3 p);
Vec3 endNearerTo(Vec3 p, const Segment& edge);

/// Where a line meets a plane, by its signed distance along the line; none for a line whose angle
/// to the plane is within a tolerance.
std::optional<double> reachOfPlane(const Line& line, Vec3 pointOfPlane, Vec3 normal,
                                   double angularTolerance);

/// What counts as the crossing of two edges.
inline constexpr Tolerances kCrossing{0.005, 6.5e-5};

/// The points in which two lines meet, or nearly so, and their distances along the lines.
struct Crossing {
    Vec3 onA;
    double alongA = 0.0;
    Vec3 onB;
    double alongB = 0.0;
};

/// None for lines whose angle is within the tolerance, and for lines that miss each other by more
/// than the tolerance of the distance.
std::optional<Crossing> crossingOfLines(const Line& a, const Line& b, Tolerances tolerances);

} // namespace dorvale
