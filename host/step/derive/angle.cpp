// Angles: of two planes, of a plane and an axis, of two edges, and of a cone.
#include <algorithm>
#include <numbers>

#include "host/step/derive/derive.h"

namespace host::step {
namespace {

constexpr std::size_t kMostElements = 64;
constexpr double kDegree = std::numbers::pi / 180;

/// A side of an angle: a line in the plane of the angle, and what lies along it.
struct Trace {
    Vec3 point{};
    Vec3 direction{};
    std::vector<Vec3> reach;
};

/// Where a plane, or a line, meets the plane of the angle.
Trace traceOf(const Element& element, const Vec3& normal, const Vec3& origin) {
    Trace trace;
    trace.reach = element.reach;
    if (element.kind == ElementKind::Plane) {
        trace.direction = unit(cross(normal, element.direction));
        // The point of the plane that is nearest to the origin lies in the plane of the angle.
        const double off = dot(element.point - origin, element.direction);
        trace.point = origin + off * element.direction;
    } else {
        trace.direction = element.direction;
        trace.point = element.point - dot(element.point - origin, normal) * normal;
    }
    return trace;
}

/// Where two lines of one plane cross.
std::optional<Vec3> crossing(const Trace& a, const Trace& b, const Vec3& normal) {
    const double sine = dot(normal, cross(a.direction, b.direction));
    if (std::abs(sine) < 1e-9) {
        return std::nullopt;
    }
    const double along = dot(normal, cross(b.point - a.point, b.direction)) / sine;
    return a.point + along * a.direction;
}

double degreesBetween(const Vec3& a, const Vec3& b) {
    return std::atan2(length(cross(a, b)), dot(a, b)) / kDegree;
}

/// The angle's plane: square to both planes, or through both lines.
Vec3 planeOf(const Element& a, const Element& b) {
    const bool aIsPlane = a.kind == ElementKind::Plane;
    const bool bIsPlane = b.kind == ElementKind::Plane;
    if (aIsPlane == bIsPlane) {
        return unit(cross(a.direction, b.direction));
    }
    // Through the line and the plane's normal.
    return unit(cross(aIsPlane ? a.direction : b.direction, aIsPlane ? b.direction : a.direction));
}

/// Away from the vertex on the side where most of the feature lies.
double sideOf(const Range& range) { return std::abs(range.high) >= std::abs(range.low) ? 1 : -1; }

Range turned(const Range& range, double sign) {
    return sign > 0 ? range : Range{-range.high, -range.low};
}

std::optional<Geometry> between(const Dimension& dimension, const Element& a, const Element& b) {
    const Vec3 normal = planeOf(a, b);
    if (a.kind == ElementKind::Point || b.kind == ElementKind::Point || !(length(normal) > 0.5)) {
        return std::nullopt;
    }
    std::vector<Vec3> all = a.reach;
    all.insert(all.end(), b.reach.begin(), b.reach.end());
    const double depth = rangeAlong(all, normal).high;
    const Vec3 origin = a.point + (depth - dot(a.point, normal)) * normal;
    const std::array<Trace, 2> traces = {traceOf(a, normal, origin), traceOf(b, normal, origin)};
    const auto vertex = crossing(traces[0], traces[1], normal);
    if (!vertex) {
        return std::nullopt;
    }
    Geometry geometry;
    geometry.shown = Shown::Angle;
    geometry.corner.vertex = *vertex;
    geometry.corner.normal = normal;
    std::array<double, 2> signs{};
    std::array<Range, 2> ranges{};
    for (std::size_t i = 0; i < 2; ++i) {
        const double at = dot(*vertex, traces[i].direction);
        const Range absolute = rangeAlong(traces[i].reach, traces[i].direction);
        ranges[i] = {absolute.low - at, absolute.high - at};
        signs[i] = sideOf(ranges[i]);
    }
    // Between the sides as they lie; failing that, between one and the other's extension.
    const auto set = [&](double second) {
        const std::array<double, 2> turn = {signs[0], signs[1] * second};
        for (std::size_t i = 0; i < 2; ++i) {
            geometry.corner.directions[i] = turn[i] * traces[i].direction;
            geometry.corner.ranges[i] = turned(ranges[i], turn[i]);
        }
        geometry.measured =
            degreesBetween(geometry.corner.directions[0], geometry.corner.directions[1]);
    };
    set(1);
    if (!agrees(dimension, *geometry.measured)) {
        set(-1);
        if (!agrees(dimension, *geometry.measured)) {
            set(1);
        }
    }
    return geometry;
}

/// The whole angle of a cone between two of its generators, or half of it between one and the axis.
std::optional<Geometry> ofCone(const Dimension& dimension, const Face& cone) {
    if (std::abs(cone.halfAngle) < 1e-9 || cone.points.empty()) {
        return std::nullopt;
    }
    const double widening = cone.halfAngle > 0 ? 1 : -1;
    const Vec3 axis = widening * cone.axis;
    const double half = std::abs(cone.halfAngle);
    Geometry geometry;
    geometry.shown = Shown::Angle;
    Corner& corner = geometry.corner;
    corner.vertex = cone.origin - cone.radius / std::tan(half) * axis;
    corner.turnsAbout = true;
    corner.axis = axis;
    const Range along = rangeAlong(cone.points, axis);
    const double apex = dot(corner.vertex, axis);
    const Range slant{(along.low - apex) / std::cos(half), (along.high - apex) / std::cos(half)};
    const bool whole = agrees(dimension, 2 * half / kDegree) || !agrees(dimension, half / kDegree);
    geometry.measured = (whole ? 2 : 1) * half / kDegree;
    corner.ranges[0] = slant;
    corner.ranges[1] = whole ? slant : Range{along.low - apex, along.high - apex};
    corner.turns[0] = half;
    corner.turns[1] = whole ? -half : 0;
    return geometry;
}

/// Takes a geometry where it is the first one, or the first one that agrees.
void keepBetter(const Dimension& dimension, std::optional<Geometry> found,
                std::optional<Geometry>& best) {
    if (found &&
        (!best || (!agrees(dimension, *best->measured) && agrees(dimension, *found->measured)))) {
        best = std::move(found);
    }
}

} // namespace

std::optional<Geometry> deriveAngle(const Dimension& dimension) {
    std::vector<Element> first = elementsOf(dimension.first);
    std::vector<Element> second = elementsOf(dimension.second);
    first.resize(std::min(first.size(), kMostElements));
    second.resize(std::min(second.size(), kMostElements));
    std::optional<Geometry> best;
    const bool isSize = second.empty();
    if (isSize) {
        for (const Face& face : dimension.first.faces) {
            if (face.kind == SurfaceKind::Cone) {
                keepBetter(dimension, ofCone(dimension, face), best);
            }
        }
    }
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (best && agrees(dimension, *best->measured)) {
            break;
        }
        for (std::size_t j = isSize ? i + 1 : 0; j < (isSize ? first : second).size(); ++j) {
            keepBetter(dimension, between(dimension, first[i], (isSize ? first : second)[j]), best);
        }
    }
    if (best && isSize && best->corner.turnsAbout) {
        int cones = 0;
        std::vector<Element> axes = elementsOf(dimension.first);
        for (const Element& axis : axes) {
            cones += axis.kind == ElementKind::Axis ? 1 : 0;
        }
        best->places = std::max(1, cones);
    }
    return best;
}

} // namespace host::step
