#include "geometry/lines.h"

#include <algorithm>

namespace dorvale {

bool liesOn(const Segment& edge, Vec3 p) {
    const Vec3 v = edge.end - edge.start;
    const double squared = dot(v, v);
    const double share = squared > 0.0 ? dot(p - edge.start, v) / squared : 0.0;
    return distance(p, moved(edge.start, v, std::clamp(share, 0.0, 1.0))) <= kOnEdge;
}

Vec3 endNearerTo(Vec3 p, const Segment& edge) {
    return distance(p, edge.start) <= distance(p, edge.end) ? edge.start : edge.end;
}

std::optional<double> reachOfPlane(const Line& line, Vec3 pointOfPlane, Vec3 normal,
                                   double angularTolerance) {
    const double steepness = dot(line.direction, normal);
    const Vec3 across = cross(line.direction, normal);
    if (!hasDirection(line.direction) || !hasDirection(normal) ||
        !angleExceeds(steepness * steepness, dot(across, across), angularTolerance)) {
        return std::nullopt;
    }
    return dot(pointOfPlane - line.point, normal) / steepness;
}

std::optional<Crossing> crossingOfLines(const Line& a, const Line& b, Tolerances tolerances) {
    if (!independent(a.direction, b.direction, tolerances.angle)) {
        return std::nullopt;
    }
    // The two nearest points, where their connection is square to both lines.
    const Vec3 square = cross(a.direction, b.direction);
    const Vec3 apart = b.point - a.point;
    const double squared = dot(square, square);
    const double alongA = dot(cross(apart, b.direction), square) / squared;
    const double alongB = dot(cross(apart, a.direction), square) / squared;
    const Crossing crossing{a.at(alongA), alongA, b.at(alongB), alongB};
    if (!(distance(crossing.onA, crossing.onB) <= tolerances.distance)) {
        return std::nullopt;
    }
    return crossing;
}

} // namespace dorvale
