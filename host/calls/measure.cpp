#include "host/calls/measure.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>

namespace host {
namespace {

// The library's own limits.
constexpr std::array kTolerances = {0.01, 0.00026};
constexpr double kZeroLength = 1e-10;
constexpr double kParallel = 6.5e-5;

Vec3 row(const ANK_MTX32& matrix, int i) {
    return {matrix.m[i][0], matrix.m[i][1], matrix.m[i][2]};
}

/// A straight edge in a plane.
struct FlatLine {
    Vec2 start;
    /// Zero for an edge without a length.
    Vec2 direction;

    FlatLine(const LineEdge& edge, const Frame& frame) : start(frame.flat(edge.start)) {
        const Vec2 along = frame.flat(edge.end) - start;
        const double size = length(along);
        direction = size > kZeroLength ? 1 / size * along : Vec2{};
    }

    /// The plane's origin for an edge without a length.
    Vec2 foot(Vec2 p) const {
        const bool isPoint = length(direction) == 0;
        return isPoint ? Vec2{} : start + dot(p - start, direction) * direction;
    }
};

/// Where two lines cross, unless they are parallel.
std::optional<Vec2> crossing(const FlatLine& a, const FlatLine& b) {
    const double area = cross(a.direction, b.direction);
    if (!(std::abs(area) > kParallel)) {
        return std::nullopt;
    }
    return a.start + cross(b.start - a.start, b.direction) / area * a.direction;
}

/// Counter-clockwise from one direction to another, from 0 up to a full turn.
double angleBetween(Vec2 a, Vec2 b) {
    const double angle = std::atan2(cross(a, b), dot(a, b));
    return angle < 0 ? angle + kFullTurn : angle;
}

double inDegrees(double radians) { return radians * 360 / kFullTurn; }

template <class T> T shapeOr(const Curve& curve, const T& otherwise) {
    const T* shape = curve.shape ? std::get_if<T>(&*curve.shape) : nullptr;
    return shape == nullptr ? otherwise : *shape;
}

} // namespace

Frame Frame::of(const Ank_PMI& pmi) {
    const ANK_MTX32 plane = pmi.GetDefPlane();
    // The annotation's axes are single precision; made square again, what they lack tilts the plane
    // a little and changes no length in it.
    const Vec3 x = unit(row(plane, 0));
    const Vec3 y = row(plane, 1);
    const Vec3 squareY = unit(y - host::dot(x, y) * x);
    return {row(plane, 3), x, squareY, cross(x, squareY)};
}

Frame Frame::ofSection(const Vec3& normal, const Vec3& origin, const Vec3& xPoint) {
    const Vec3 z = unit(normal);
    const Vec3 x = unit(xPoint - origin);
    return {origin, x, cross(z, x), z};
}

Vec3 Frame::coordinates(const Vec3& p) const {
    const Vec3 v = p - origin;
    return {host::dot(v, x), host::dot(v, y), host::dot(v, z)};
}

Vec2 Frame::flat(const Vec3& p) const {
    const Vec3 inFrame = coordinates(p);
    return {inFrame[0], inFrame[1]};
}

LineEdge lineOf(const Curve& curve) { return shapeOr(curve, LineEdge{}); }

ArcEdge arcOf(const Curve& curve) { return shapeOr(curve, ArcEdge{}); }

Vec3 pointOf(const Curve& curve) {
    const bool isArc = curve.shape && std::holds_alternative<ArcEdge>(*curve.shape);
    return isArc ? arcOf(curve).center : shapeOr(curve, lineOf(curve).start);
}

double distanceOf(const Vec3& a, const Vec3& b) { return length(b - a); }

double distanceOfEdges(const LineEdge& edge1, const LineEdge& edge2, const Frame& frame,
                       const double* text) {
    const Vec2 a = FlatLine(edge1, frame).foot({text[0], text[1]});
    return length(FlatLine(edge2, frame).foot(a) - a);
}

double distanceToEdge(const LineEdge& edge, const Vec3& point, const Frame& frame) {
    const Vec2 p = frame.flat(point);
    return length(p - FlatLine(edge, frame).foot(p));
}

double lengthOfArc(const ArcEdge& arc, const Curve& line1, const Curve& line2) {
    const Vec3 a = arc.start - arc.center;
    const Vec3 b = arc.end - arc.center;
    if (!(dot(a, a) > 0 && dot(b, b) > 0)) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    Vec3 origin{};
    Vec3 x{};
    Vec3 y{};
    std::array tolerances = kTolerances;
    PMI3DPlnDef(6, line1.line(), line2.line(), nullptr, tolerances.data(), origin.data(), x.data(),
                y.data(), nullptr);
    const Vec3 across = cross(a, b);
    const double angle = std::atan2(length(across), dot(a, b));
    return arc.radius * (dot(across, cross(x, y)) < 0 ? kFullTurn - angle : angle);
}

double angleAtText(const LineEdge& edge1, const LineEdge& edge2, const Frame& frame,
                   const double* text) {
    const FlatLine line1(edge1, frame);
    const FlatLine line2(edge2, frame);
    const std::optional<Vec2> vertex = crossing(line1, line2);
    if (!vertex) {
        return 0;
    }
    // The text stands at a times one direction and b times the other from the vertex.
    const Vec2 toText = Vec2{text[0], text[1]} - *vertex;
    const double area = cross(line1.direction, line2.direction);
    const double a = cross(toText, line2.direction) / area;
    const double b = cross(line1.direction, toText) / area;
    return inDegrees(angleBetween((a < 0 ? -1.0 : 1.0) * line1.direction,
                                  (b < 0 ? -1.0 : 1.0) * line2.direction));
}

double angleOfPicks(const LineEdge& edge1, const Vec3& pick1, const LineEdge& edge2,
                    const Vec3& pick2, const Frame& frame) {
    const FlatLine line1(edge1, frame);
    const FlatLine line2(edge2, frame);
    // Parallel edges have the plane's origin for a vertex.
    const Vec2 vertex = crossing(line1, line2).value_or(Vec2{});
    return inDegrees(angleBetween(line1.foot(frame.flat(pick1)) - vertex,
                                  line2.foot(frame.flat(pick2)) - vertex));
}

double shownAngle(double degrees, int angleMode) {
    return angleMode == 1 ? std::min(degrees, 360 - degrees) : degrees;
}

} // namespace host
