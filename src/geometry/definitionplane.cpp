#include "geometry/definitionplane.h"

#include <cmath>
#include <limits>

namespace dorvale {

namespace {

/// The reference axes that a plane's own axes are taken from.
struct ReferenceAxes {
    Vec3 x{1.0, 0.0, 0.0};
    Vec3 z{0.0, 0.0, 1.0};
};

constexpr ReferenceAxes kWorld{};
/// For a vertical line, which has no horizontal across it among the world's own axes.
constexpr ReferenceAxes kRotated{{0.0, 1.0, 0.0}, {1.0, 0.0, 0.0}};

/// The normal as a unit vector that does not point away from the viewer.
Vec3 facingViewer(Vec3 normal, Vec3 towardsViewer) {
    const Vec3 oriented = unit(normal).value_or(normal);
    return dot(towardsViewer, oriented) < 0.0 ? -oriented : oriented;
}

/// X square to Y and the normal, right-handed. A plane without a normal keeps the world's axes.
void setAxes(PlaneDefinition& plane, Vec3 normal, std::optional<Vec3> yAxis) {
    plane.yAxis = yAxis.value_or(plane.yAxis);
    plane.xAxis = unitNormal(plane.yAxis, normal).value_or(plane.xAxis);
}

/// Y horizontal where the normal allows it: square to the world's X, or to its Z where the normal
/// runs along X.
void setAxesOfNormal(PlaneDefinition& plane, Vec3 normal, double angularTolerance) {
    setAxes(plane, normal,
            independent(normal, kWorld.x, angularTolerance) ? unitNormal(normal, kWorld.x)
                                                            : unitNormal(kWorld.z, normal));
}

/// The angle of two lines, 0 to a right one.
std::optional<double> angleOfLines(Vec3 a, Vec3 b) {
    constexpr double kRightAngle = 1.570796;
    constexpr double kHalfTurn = 3.141592654;
    const std::optional<double> angle = angleBetween(a, b);
    return angle && *angle > kRightAngle ? std::abs(kHalfTurn - *angle) : angle;
}

/// A line's picture in the model's XY plane, as one sees it looking down the Z axis:
/// y = slope * x + offset, or the upright at `x`.
struct Picture {
    double x;
    bool isUpright;
    double slope;
    double offset;

    explicit Picture(const Line& line)
        : x(line.point.x), isUpright(std::abs(line.direction.x) < kLeastComponent),
          slope(isUpright || std::abs(line.direction.y) < kLeastComponent
                    ? 0.0
                    : line.direction.y / line.direction.x),
          offset(line.point.y - slope * x) {}

    Vec3 at(double atX) const { return {atX, offset + slope * atX, 0.0}; }

private:
    /// A unit direction with less than this along an axis counts as square to that axis. So no
    /// slope is steeper than 200, and none less steep than a 200th but 0.
    static constexpr double kLeastComponent = 0.005;
};

/// Where the pictures of two lines that miss each other in space cross. They may be parallel, two
/// uprights for one, while the lines are not: then it is the picture of the point of line A that is
/// nearest to line B; zero without one.
Vec3 crossingInXY(const Line& lineA, const Line& lineB) {
    // Pictures are parallel whose slopes differ by less.
    constexpr double kEqualSlopes = 1e-9;
    const Picture a(lineA);
    const Picture b(lineB);
    if (a.isUpright != b.isUpright) {
        return a.isUpright ? b.at(a.x) : a.at(b.x);
    }
    if (std::abs(a.slope - b.slope) < kEqualSlopes) {
        constexpr Tolerances anywhere{std::numeric_limits<double>::infinity(), kCrossing.angle};
        return flat(orZero(crossingOfLines(lineA, lineB, anywhere)).onA);
    }
    return a.at((b.offset - a.offset) / (a.slope - b.slope));
}

} // namespace

PlaneDefinition definePlane(PlaneKind kind, const Ank_CurveEntity* first,
                            const Ank_CurveEntity* second, Vec3 towardsViewer,
                            double angularTolerance) {
    switch (kind) {
    case PlaneKind::LineAndDirection: {
        const Segment direction = segmentOf(second);
        return planeAlong(segmentOf(first).start, direction.end - direction.start, towardsViewer);
    }
    case PlaneKind::Line:
        if (isOfType(first, kLineCurve)) {
            const Segment line = segmentOf(first);
            return planeAlong(line.start, line.end - line.start, towardsViewer);
        }
        [[fallthrough]];
    case PlaneKind::Arc:
    case PlaneKind::Circle:
        return planeOfArc(arcOf(first), towardsViewer, angularTolerance);
    case PlaneKind::TwoLines:
    case PlaneKind::TwoPointLines:
        return planeOfTwoLines(segmentOf(first), segmentOf(second), towardsViewer,
                               angularTolerance);
    }
    return {};
}

PlaneDefinition planeAlong(Vec3 origin, Vec3 direction, Vec3 towardsViewer) {
    ReferenceAxes axes = kWorld;
    std::optional<Vec3> across = unitNormal(direction, axes.z);
    if (!across) {
        axes = kRotated;
        across = unitNormal(direction, axes.z);
    }
    const Vec3 normal = orZero(unitNormal(direction, orZero(across)));
    const Vec3 facing = facingViewer(normal, towardsViewer);
    PlaneDefinition plane{origin};
    setAxes(plane, facing, unitNormal(facing, axes.x));
    return plane;
}

PlaneDefinition planeOfArc(const Arc& arc, Vec3 towardsViewer, double angularTolerance) {
    PlaneDefinition plane{arc.center};
    setAxesOfNormal(plane, facingViewer(arc.normal, towardsViewer), angularTolerance);
    return plane;
}

PlaneDefinition directionOfTwoLines(const Segment& line1, const Segment& line2, Vec3 towardsViewer,
                                    double angularTolerance) {
    PlaneDefinition plane;
    const Vec3 normal = normalOfLines(line1, line2, angularTolerance);
    setAxesOfNormal(plane, facingViewer(normal, towardsViewer), angularTolerance);
    return plane;
}

PlaneDefinition planeOfTwoLines(const Segment& line1, const Segment& line2, Vec3 towardsViewer,
                                double angularTolerance) {
    PlaneDefinition plane = directionOfTwoLines(line1, line2, towardsViewer, angularTolerance);
    const Line a = lineAlong(line1);
    const Line b = lineAlong(line2);
    const std::optional<Vec3> crossing = LinLinIntersect(a, b);
    plane.origin = orZero(crossing);
    plane.crosses = crossing.has_value();
    const bool areLines = hasDirection(a.direction) && hasDirection(b.direction);
    plane.status = !crossing && areLines ? kParallelLines : 0;
    return plane;
}

Vec3 normalOfLines(const Segment& line1, const Segment& line2, double angularTolerance) {
    const Vec3 along1 = orZero(unit(line1.start - line1.end));
    const Vec3 along2 = orZero(unit(line2.start - line2.end));
    if (independent(along1, along2, angularTolerance)) {
        return orZero(unitNormal(along1, along2));
    }
    const Vec3 between = unit(line1.start - line2.start).value_or(kWorld.x);
    if (independent(along1, between, angularTolerance)) {
        return orZero(unitNormal(along1, between));
    }
    constexpr Vec3 worldY{0.0, 1.0, 0.0};
    const std::optional<Vec3> acrossX = unitNormal(along1, kWorld.x);
    return acrossX ? *acrossX : orZero(unitNormal(along1, worldY));
}

std::optional<Vec3> LinLinIntersect(const Line& lineA, const Line& lineB) {
    if (const std::optional<Crossing> crossing = crossingOfLines(lineA, lineB, kCrossing)) {
        return crossing->onA;
    }
    const std::optional<double> angle = angleOfLines(lineA.direction, lineB.direction);
    const bool parallel = !angle || *angle < kCrossing.angle;
    return parallel ? std::nullopt : std::optional(crossingInXY(lineA, lineB));
}

} // namespace dorvale

int PMI3DPlnDef(int kind, Ank_CurveEntity* first, Ank_CurveEntity* second, _ank_locate* /*locate*/,
                double* const tolerances, double* const origin, double* const xAxis,
                double* const yAxis, double* viewMatrix) {
    using namespace dorvale;
    PlaneDefinition plane;
    if (kind >= kFirstPlaneKind && kind <= kLastPlaneKind) {
        const double angularTolerance = tolerances == nullptr ? kTolerances.angle : tolerances[1];
        plane = definePlane(static_cast<PlaneKind>(kind), first, second,
                            View::fromMatrix(viewMatrix).towardsViewer, angularTolerance);
    }
    writeTo(origin, plane.origin);
    writeTo(xAxis, plane.xAxis);
    writeTo(yAxis, plane.yAxis);
    return plane.status;
}
