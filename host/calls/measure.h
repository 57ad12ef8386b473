/// @file
/// What calls measure, in double precision: the number that the value text shows, before it is
/// rounded. The library itself hands no number back, and its curves hold single precision.
#pragma once

#include <dorvale/dorvale.h>

#include "host/calls/arguments.h"

namespace host {

/// The axes and the origin that a measure is taken in.
struct Frame {
    Vec3 origin;
    Vec3 x;
    Vec3 y;
    Vec3 z;

    /// The plane of a finished annotation.
    static Frame of(const Ank_PMI& pmi);
    /// A section plane: its normal, its origin and a point on its X axis.
    static Frame ofSection(const Vec3& normal, const Vec3& origin, const Vec3& xPoint);

    Vec3 coordinates(const Vec3& p) const;
    /// Without what lies across the plane.
    Vec2 flat(const Vec3& p) const;
};

// What stands for a curve in a call: zeros where it is of another kind.
LineEdge lineOf(const Curve& curve);
ArcEdge arcOf(const Curve& curve);
/// An arc's centre, a line's start, or the point.
Vec3 pointOf(const Curve& curve);

double distanceOf(const Vec3& a, const Vec3& b);
/// From the foot of a text point (in the frame's coordinates) on one edge to its foot on the other.
double distanceOfEdges(const LineEdge& edge1, const LineEdge& edge2, const Frame& frame,
                       const double* text);
double distanceToEdge(const LineEdge& edge, const Vec3& point, const Frame& frame);
/// Counted as the plane of two lines orients it; not a number where the arc has no sweep.
double lengthOfArc(const ArcEdge& arc, const Curve& line1, const Curve& line2);
/// In degrees, on the side of a text point in the frame's coordinates; 0 for parallel edges.
double angleAtText(const LineEdge& edge1, const LineEdge& edge2, const Frame& frame,
                   const double* text);
/// In degrees, from the side of edge 1 at which it was picked to that of edge 2.
double angleOfPicks(const LineEdge& edge1, const Vec3& pick1, const LineEdge& edge2,
                    const Vec3& pick2, const Frame& frame);
/// The smaller of an angle and what it lacks to a full turn, in the angle mode 1.
double shownAngle(double degrees, int angleMode);

} // namespace host
