#include "kernel/geolib.h"

#include "geometry/anglearc.h"

namespace dorvale {

namespace {

Segment loadEdge(const double (*ends)[3]) { return {fromArray(ends[0]), fromArray(ends[1])}; }

} // namespace

int CMathGeolib::zhpl01(int nPoint, const double* p, int nLine, const double* a, const double* b,
                        double /*tolDist*/, double /*tolAng*/, double* foot, double* param,
                        double* distance) {
    const std::optional<Foot> found = footOnLine(load(nPoint, p), load(nLine, a), load(nLine, b));
    if (!found) {
        return 1;
    }
    store(nLine, found->point, foot);
    *param = found->along;
    *distance = found->distance;
    return 0;
}

int CMathGeolib::zxli00(const double* linePoint, const double* lineDirection,
                        const double* planePoint, const double* planeNormal, double /*tolDist*/,
                        double tolAng, double* out, double* param) {
    const Line line{fromArray(linePoint), fromArray(lineDirection)};
    const Vec3 normal = fromArray(planeNormal);
    const std::optional<double> reach = reachOfPlane(line, fromArray(planePoint), normal, tolAng);
    if (!reach) {
        return hasDirection(line.direction) && hasDirection(normal) ? 1 : -1;
    }
    writeTo(out, line.at(*reach));
    *param = *reach;
    return 0;
}

int CMathGeolib::zxln00(int /*n*/, int nA, const double* pointA, const double* directionA, int nB,
                        const double* pointB, const double* directionB, double tolDist,
                        double tolAng, double* out) {
    const Line a{load(nA, pointA), load(nA, directionA)};
    const Line b{load(nB, pointB), load(nB, directionB)};
    const std::optional<Crossing> crossing = crossingOfLines(a, b, {tolDist, tolAng});
    if (!crossing) {
        if (!hasDirection(a.direction) || !hasDirection(b.direction)) {
            return -1;
        }
        return independent(a.direction, b.direction, tolAng) ? 2 : 1;
    }
    writeTo(out, crossing->onA);
    out[3] = crossing->alongA;
    writeTo(out + 4, crossing->onB);
    out[7] = crossing->alongB;
    return 0;
}

int CMathGeolib::GetAngleDimData(const double (*edge1)[3], const double (*edge2)[3],
                                 const double* text, int& flag, double (*points)[3], double& angle,
                                 double* vertex) {
    const AngleArc arc = angleArc(loadEdge(edge1), loadEdge(edge2), fromArray(text));
    flag = (arc.sides[0].isExtended ? 1 : 0) + (arc.sides[1].isExtended ? 2 : 0);
    for (const AngleArc::Side& side : arc.sides) {
        writeTo(*points++, side.edgeEnd);
        writeTo(*points++, side.arcEnd);
    }
    angle = arc.angle;
    writeTo(vertex, arc.vertex);
    return 0;
}

int CMathGeolib::GetAngleDimSpecialLineData(const double (*edge1)[3], const double (*edge2)[3],
                                            int& count, double (*points)[3]) {
    const GapLines gaps = gapLines(loadEdge(edge1), loadEdge(edge2));
    count = gaps.count;
    for (const Segment& line : gaps.lines) {
        writeTo(*points++, line.start);
        writeTo(*points++, line.end);
    }
    return 0;
}

} // namespace dorvale
