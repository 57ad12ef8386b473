#include "host/step/derive/elements.h"

#include <algorithm>

namespace host::step {
namespace {

/// Directions that differ by less, in radians, count as equal.
constexpr double kSameDirection = 1e-4;
/// Axes that are nearer, in millimetres, count as one.
constexpr double kSamePlace = 1e-3;

bool onSameAxis(const Element& a, const Element& b) {
    return a.kind == b.kind && a.kind == ElementKind::Axis && a.part == b.part &&
           parallel(a.direction, b.direction) &&
           length(offsetFromLine(b.point, a.point, a.direction)) < kSamePlace &&
           std::abs(a.radius - b.radius) < kSamePlace;
}

bool sameElement(const Element& a, const Element& b) {
    if (a.kind == ElementKind::Point) {
        return b.kind == a.kind && length(a.point - b.point) < kSamePlace &&
               std::abs(a.radius - b.radius) < kSamePlace;
    }
    if (a.kind == ElementKind::Plane) {
        return b.kind == a.kind && parallel(a.direction, b.direction) &&
               dot(a.direction, b.direction) > 0 && a.part == b.part &&
               std::abs(dot(b.point - a.point, a.direction)) < kSamePlace;
    }
    return onSameAxis(a, b);
}

void add(std::vector<Element>& elements, Element element) {
    for (Element& known : elements) {
        if (sameElement(known, element)) {
            known.reach.insert(known.reach.end(), element.reach.begin(), element.reach.end());
            return;
        }
    }
    elements.push_back(std::move(element));
}

Element elementOf(const Face& face) {
    Element element;
    element.point = face.origin;
    element.direction = face.axis;
    element.reach = face.points;
    element.part = face.part;
    element.radius = face.radius;
    switch (face.kind) {
    case SurfaceKind::Plane:
        element.kind = ElementKind::Plane;
        element.radius = 0;
        break;
    case SurfaceKind::Cylinder:
        element.kind = ElementKind::Axis;
        break;
    case SurfaceKind::Cone:
    case SurfaceKind::Torus:
        element.kind = ElementKind::Axis;
        element.radius = 0;
        break;
    case SurfaceKind::Sphere:
        element.kind = ElementKind::Point;
        break;
    case SurfaceKind::Other:
        element.kind = ElementKind::Point;
        element.point = middleOf(face.points);
        break;
    }
    return element;
}

Element elementOf(const Edge& edge) {
    Element element;
    element.reach = edge.points;
    if (edge.kind == CurveKind::Line) {
        element.kind = ElementKind::Line;
        element.point = edge.start;
        element.direction = unit(edge.end - edge.start);
    } else if (edge.kind == CurveKind::Circle) {
        element.kind = ElementKind::Axis;
        element.point = edge.centre;
        element.direction = edge.axis;
        element.radius = edge.radius;
    } else {
        element.point = middleOf(edge.points);
    }
    return element;
}

} // namespace

bool parallel(const Vec3& a, const Vec3& b) { return length(cross(a, b)) < kSameDirection; }

bool square(const Vec3& a, const Vec3& b) { return std::abs(dot(a, b)) < kSameDirection; }

Vec3 offsetFromLine(const Vec3& point, const Vec3& origin, const Vec3& direction) {
    const Vec3 toPoint = point - origin;
    return toPoint - dot(toPoint, direction) * direction;
}

Vec3 middleOf(const std::vector<Vec3>& points) {
    Vec3 sum{};
    for (const Vec3& point : points) {
        sum = sum + point;
    }
    return points.empty() ? sum : 1.0 / static_cast<double>(points.size()) * sum;
}

Range rangeAlong(const std::vector<Vec3>& points, const Vec3& direction) {
    if (points.empty()) {
        return {};
    }
    Range range{HUGE_VAL, -HUGE_VAL};
    for (const Vec3& point : points) {
        const double at = dot(point, direction);
        range.low = std::min(range.low, at);
        range.high = std::max(range.high, at);
    }
    return range;
}

std::vector<Element> elementsOf(const Feature& feature) {
    std::vector<Element> elements;
    for (const Face& face : feature.faces) {
        add(elements, elementOf(face));
    }
    for (const Edge& edge : feature.edges) {
        add(elements, elementOf(edge));
    }
    for (const Vec3& point : feature.points) {
        add(elements, {ElementKind::Point, point, {}, 0, {point}, 0});
    }
    return elements;
}

} // namespace host::step
