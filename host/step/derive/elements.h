/// @file
/// What can be measured to or from on a feature: its planes, axes, straight edges and points.
#pragma once

#include <vector>

#include "host/step/records.h"

namespace host::step {

enum class ElementKind { Plane, Axis, Line, Point };

struct Element {
    ElementKind kind = ElementKind::Point;
    Vec3 point{};
    /// Out of the material for a plane, along an axis or a line.
    Vec3 direction{};
    /// Of what turns about an axis, or stands about a point.
    double radius = 0;
    /// Points on the feature: how far it reaches.
    std::vector<Vec3> reach;
    int part = 0;
};

/// A circle of the part, or a part of one.
struct Circle {
    Vec3 centre{};
    Vec3 axis{};
    double radius = 0;
    /// Of an arc, counter-clockwise about the axis; the same point twice for a full circle.
    Vec3 start{};
    Vec3 end{};
    /// A sphere's: any axis will do.
    bool anyAxis = false;
};

/// Faces on one axis, and circles on one axis, count once.
std::vector<Element> elementsOf(const Feature& feature);

/// Whether two lines run the same way, or opposite ways.
bool parallel(const Vec3& a, const Vec3& b);
bool square(const Vec3& a, const Vec3& b);

/// From a line to a point, square to the line.
Vec3 offsetFromLine(const Vec3& point, const Vec3& origin, const Vec3& direction);

Vec3 middleOf(const std::vector<Vec3>& points);

/// The least and the greatest of points along a direction.
struct Range {
    double low = 0;
    double high = 0;
    double middle() const { return (low + high) / 2; }
    double size() const { return high - low; }
};
Range rangeAlong(const std::vector<Vec3>& points, const Vec3& direction);

} // namespace host::step
