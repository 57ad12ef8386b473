// The definition plane of an annotation, from the curves that it measures.
#pragma once

#include "geometry/curves.h"
#include "geometry/plane.h"

namespace dorvale {

/// What defines a plane; the values are those of the exported service.
enum class PlaneKind : int {
    LineAndDirection = 2,
    Arc = 4,
    Circle = 5,
    TwoLines = 6,
    Line = 7,
    TwoPointLines = 11,
};
inline constexpr int kFirstPlaneKind = 2;
inline constexpr int kLastPlaneKind = 11;

inline constexpr int kParallelLines = 900;

/// Origin and unit axes; where the curves define none, the world's.
struct PlaneDefinition {
    Vec3 origin;
    Vec3 xAxis{1.0, 0.0, 0.0};
    Vec3 yAxis{0.0, 1.0, 0.0};
    int status = 0;
    /// Of two lines: whether the origin is their crossing.
    bool crosses = false;

    AnnotationPlane plane() const { return {origin, xAxis, yAxis}; }
    Vec3 normal() const { return cross(xAxis, yAxis); }
};

PlaneDefinition definePlane(PlaneKind kind, const Ank_CurveEntity* first,
                            const Ank_CurveEntity* second, Vec3 towardsViewer,
                            double angularTolerance = kTolerances.angle);

/// The plane through an origin along a direction and the horizontal across it (kind
/// `LineAndDirection`).
PlaneDefinition planeAlong(Vec3 origin, Vec3 direction, Vec3 towardsViewer);

/// The plane of an arc, its origin at the arc's centre (kind `Circle`).
PlaneDefinition planeOfArc(const Arc& arc, Vec3 towardsViewer,
                           double angularTolerance = kTolerances.angle);

/// The direction of the plane of two lines; its origin is left open.
PlaneDefinition directionOfTwoLines(const Segment& line1, const Segment& line2, Vec3 towardsViewer,
                                    double angularTolerance = kTolerances.angle);

/// The plane of two lines, its origin at their crossing (kind `TwoLines`).
PlaneDefinition planeOfTwoLines(const Segment& line1, const Segment& line2, Vec3 towardsViewer,
                                double angularTolerance = kTolerances.angle);

/// The plane that two lines span: of crossing or skew lines the one along both, of parallel ones
/// the one that holds both, of collinear ones one through them. Zero for lines without a length.
Vec3 normalOfLines(const Segment& line1, const Segment& line2, double angularTolerance);

/// The crossing of two infinite lines; none of parallel lines, nor where one has no direction. Skew
/// lines cross where their pictures in the XY plane do, at z = 0.
std::optional<Vec3> LinLinIntersect(const Line& lineA, const Line& lineB);

} // namespace dorvale
