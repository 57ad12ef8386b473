#include "geometry/anglearc.h"

namespace dorvale {

namespace {

Line lineOf(const Segment& edge) { return lineThrough(edge.start, edge.end); }

/// The z component of a cross product in the plane.
double turn(Vec3 a, Vec3 b) { return a.x * b.y - a.y * b.x; }

AngleArc::Side sideOf(const Segment& edge, Vec3 arcEnd) {
    return {arcEnd, endNearerTo(arcEnd, edge), !liesOn(edge, arcEnd)};
}

} // namespace

AngleArc angleArc(const Segment& edge1, const Segment& edge2, Vec3 textPoint) {
    const Segment flat1 = flat(edge1);
    const Segment flat2 = flat(edge2);
    const Vec3 text = flat(textPoint);
    const Line line1 = lineOf(flat1);
    const Line line2 = lineOf(flat2);
    const std::optional<Crossing> crossing = crossingOfLines(line1, line2, kCrossing);
    if (!crossing) {
        return {0.0, text, {{{text, text}, {text, text}}}};
    }
    // The text point lies at a*e1 + b*e2 from the vertex; a negative share turns its ray round.
    const Vec3 vertex = crossing->onA;
    const Vec3 toText = text - vertex;
    const double area = turn(line1.direction, line2.direction);
    const double a = turn(toText, line2.direction) / area;
    const double b = turn(line1.direction, toText) / area;
    const Line ray1{vertex, line1.direction * (a < 0.0 ? -1.0 : 1.0)};
    const Line ray2{vertex, line2.direction * (b < 0.0 ? -1.0 : 1.0)};
    const double radius = length(toText);
    constexpr Vec3 up{0.0, 0.0, 1.0};
    return {orZero(angleAbout(up, ray1.direction, ray2.direction)),
            vertex,
            {sideOf(flat1, ray1.at(radius)), sideOf(flat2, ray2.at(radius))}};
}

GapLines gapLines(const Segment& edge1, const Segment& edge2) {
    const std::array edges{flat(edge1), flat(edge2)};
    const auto crossing = crossingOfLines(lineOf(edges[0]), lineOf(edges[1]), kCrossing);
    GapLines gaps;
    for (const Segment& edge : edges) {
        if (crossing && !liesOn(edge, crossing->onA)) {
            gaps.lines.at(static_cast<std::size_t>(gaps.count++)) = {
                crossing->onA, endNearerTo(crossing->onA, edge)};
        }
    }
    return gaps;
}

} // namespace dorvale
