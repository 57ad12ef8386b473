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
    const Vec3 oriented = tryUnit(normal).value_or(normal);
    return dot(towardsViewer, oriented) < 0.0 ? -oriented : oriented;
}

/// X square to Y and the normal, right-handed. A plane without a normal keeps the world's axes.
void setAxes(PlaneDefinition& plane, Vec3 normal, std::optional<Vec3> yAxis) {
    plane.yAxis = yAxis.value_or(plane.yAxis);
    plane.xAxis = tryUnitNormal(plane.yAxis, normal).value_or(plane.xAxis);
}

/// Y horizontal where the normal allows it: square to the world's X, or to its Z where the normal
/// runs along X.
void setAxesOfNormal(PlaneDefinition& plane, Vec3 normal, double angularTolerance) {
    setAxes(plane, normal,
            independent(normal, kWorld.x, angularTolerance) ? tryUnitNormal(normal, kWorld.x)
                                                            : tryUnitNormal(kWorld.z, normal));
}

/// Components of a unit direction below this count as zero in a slope.
constexpr double kLeastComponent = 0.005;
constexpr double kEqualSlopes = 1e-9;

/// A line by a point and its unit direction.
struct Ray {
    Vec3 start;
    Vec3 direction;
    double length = 0.0;
};

int rayOf(const Segment& line, Ray& ray) {
    Coordinates direction{};
    const int status = CMathVector::zqvt04(3, toArray(line.end - line.start).data(), &ray.length,
                                           direction.data());
    ray.start = line.start;
    ray.direction = fromArray(direction);
    return status;
}

/// The nearest points of two lines, with their distances along them.
struct Crossing {
    Vec3 onA;
    double alongA = 0.0;
    double alongB = 0.0;
    int status = 0;
};

Crossing crossingOf(const Ray& a, const Ray& b, double missDistance) {
    std::array<double, 8> out{};
    const int status = CMathGeolib::zxln00(
        3, 3, toArray(a.start).data(), toArray(a.direction).data(), 3, toArray(b.start).data(),
        toArray(b.direction).data(), missDistance, kCrossingAngle, out.data());
    return {{out[0], out[1], out[2]}, out[3], out[7], status};
}

bool isVerticalInXY(const Ray& ray) { return std::abs(ray.direction.x) < kLeastComponent; }

double slopeInXY(const Ray& ray) {
    const Vec3 d = ray.direction;
    return std::abs(d.y) < kLeastComponent ? 0.0 : d.y / d.x;
}

double heightAt(double x, const Ray& ray, double slope) {
    return ray.start.y - slope * ray.start.x + slope * x;
}

/// The crossing of two skew lines as seen along z; x and y alone are written.
void crossInXY(const Ray& a, const Ray& b, Vec3& out) {
    const double slopeA = isVerticalInXY(a) ? 0.0 : slopeInXY(a);
    const double slopeB = isVerticalInXY(b) ? 0.0 : slopeInXY(b);
    if (isVerticalInXY(a) && !isVerticalInXY(b)) {
        out.x = a.start.x;
        out.y = heightAt(out.x, b, slopeB);
    } else if (isVerticalInXY(b) && !isVerticalInXY(a)) {
        out.x = b.start.x;
        out.y = heightAt(out.x, a, slopeA);
    } else if (std::abs(slopeA - slopeB) < kEqualSlopes) {
        // Parallel as seen along z (both vertical ones included): the point of A nearest to B.
        const Crossing nearest = crossingOf(a, b, std::numeric_limits<double>::infinity());
        out.x = nearest.status == 0 ? nearest.onA.x : out.x;
        out.y = nearest.status == 0 ? nearest.onA.y : out.y;
    } else {
        const double offsetA = a.start.y - slopeA * a.start.x;
        out.x = (b.start.y - slopeB * b.start.x - offsetA) / (slopeA - slopeB);
        out.y = slopeA * out.x + offsetA;
    }
}

/// The angle of two lines, 0 to a right one.
std::optional<double> angleOfLines(Vec3 a, Vec3 b) {
    double angle = 0.0;
    if (CMathVector::zqvt05(3, toArray(a).data(), toArray(b).data(), &angle) < 0) {
        return std::nullopt;
    }
    return angle > 1.570796 ? std::abs(3.141592654 - angle) : angle;
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
    std::optional<Vec3> across = tryUnitNormal(direction, axes.z);
    if (!across) {
        axes = kRotated;
        across = tryUnitNormal(direction, axes.z);
    }
    const Vec3 normal = unitNormal(direction, across.value_or(Vec3{}));
    const Vec3 facing = facingViewer(normal, towardsViewer);
    PlaneDefinition plane{origin};
    setAxes(plane, facing, tryUnitNormal(facing, axes.x));
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
    const int crossing = LinLinIntersect(line1, line2, plane.origin);
    plane.crosses = crossing == 0 || crossing == kCrossBeyondEnds;
    plane.status = crossing == kParallelLines ? kParallelLines : 0;
    return plane;
}

Vec3 normalOfLines(const Segment& line1, const Segment& line2, double angularTolerance) {
    const Vec3 along1 = unit(line1.start - line1.end);
    const Vec3 along2 = unit(line2.start - line2.end);
    if (independent(along1, along2, angularTolerance)) {
        return unitNormal(along1, along2);
    }
    const Vec3 between = tryUnit(line1.start - line2.start).value_or(kWorld.x);
    if (independent(along1, between, angularTolerance)) {
        return unitNormal(along1, between);
    }
    constexpr Vec3 worldY{0.0, 1.0, 0.0};
    return tryUnitNormal(along1, kWorld.x).value_or(unitNormal(along1, worldY));
}

int LinLinIntersect(const Segment& lineA, const Segment& lineB, Vec3& out) {
    Ray a;
    Ray b;
    if (const int status = rayOf(lineA, a); status != 0) {
        return status;
    }
    if (const int status = rayOf(lineB, b); status != 0) {
        return status;
    }
    const Crossing crossing = crossingOf(a, b, kCrossingDistance);
    if (crossing.status < 0) {
        return crossing.status;
    }
    if (crossing.status == 0) {
        out = crossing.onA;
        const bool within = crossing.alongA >= 0.0 && crossing.alongA <= a.length &&
                            crossing.alongB >= 0.0 && crossing.alongB <= b.length;
        return within ? 0 : kCrossBeyondEnds;
    }
    const std::optional<double> angle = angleOfLines(a.direction, b.direction);
    if (!angle) {
        return kNoAngle;
    }
    if (*angle < kCrossingAngle) {
        return kParallelLines;
    }
    crossInXY(a, b, out);
    return 0;
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
