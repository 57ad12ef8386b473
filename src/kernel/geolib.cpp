#include "kernel/geolib.h"

#include <cmath>
#include <optional>

#include "kernel/vector.h"

namespace dorvale {

namespace {

/// Zero for a vector without a length.
Triple unitOrZero(const Triple& v) {
    return hasDirection(v) ? scaled(v, 1.0 / lengthOf(v)) : Triple{};
}

/// A straight edge in the annotation's plane, z dropped.
struct Edge {
    Triple start;
    Triple end;
    Triple direction;

    explicit Edge(const double (*points)[3])
        : start(load(2, points[0])), end(load(2, points[1])),
          direction(unitOrZero(difference(end, start))) {}

    const Triple& endNearer(const Triple& p) const {
        return lengthOf(difference(p, start)) <= lengthOf(difference(p, end)) ? start : end;
    }

    bool contains(const Triple& p) const {
        return lengthOf(difference(p, nearestOnSegment(p, start, end))) <= kOnEdge;
    }
};

/// The crossing of the two infinite lines, unless they are parallel.
std::optional<Triple> crossing(const Edge& edge1, const Edge& edge2) {
    std::array<double, 8> out{};
    if (CMathGeolib::zxln00(3, 3, edge1.start.data(), edge1.direction.data(), 3, edge2.start.data(),
                            edge2.direction.data(), kCrossingDistance, kCrossingAngle,
                            out.data()) != 0) {
        return std::nullopt;
    }
    return Triple{out[0], out[1], out[2]};
}

/// The z component of a cross product in the plane.
double turn(const Triple& a, const Triple& b) { return a[0] * b[1] - a[1] * b[0]; }

} // namespace

int CMathGeolib::zhpl01(int nPoint, const double* p, int nLine, const double* a, const double* b,
                        double /*tolDist*/, double /*tolAng*/, double* foot, double* param,
                        double* distance) {
    const Triple point = load(nPoint, p);
    const Triple from = load(nLine, a);
    const Triple line = difference(load(nLine, b), from);
    if (!hasDirection(line)) {
        return 1;
    }
    const Triple direction = scaled(line, 1.0 / lengthOf(line));
    const double reach = dotOf(difference(point, from), direction);
    const Triple nearest = along(from, direction, reach);
    store(nLine, nearest, foot);
    *param = reach;
    *distance = lengthOf(difference(point, nearest));
    return 0;
}

int CMathGeolib::zxli00(const double* linePoint, const double* lineDirection,
                        const double* planePoint, const double* planeNormal, double /*tolDist*/,
                        double tolAng, double* out, double* param) {
    const Triple point = load(3, linePoint);
    const Triple direction = load(3, lineDirection);
    const Triple normal = load(3, planeNormal);
    if (!hasDirection(direction) || !hasDirection(normal)) {
        return -1;
    }
    const double steepness = dotOf(direction, normal);
    const Triple across = crossOf(direction, normal);
    if (!angleExceeds(steepness * steepness, dotOf(across, across), tolAng)) {
        return 1;
    }
    const double height = dotOf(difference(load(3, planePoint), point), normal);
    const double reach = height / steepness;
    store(3, along(point, direction, reach), out);
    *param = reach;
    return 0;
}

int CMathGeolib::zxln00(int /*n*/, int nA, const double* pointA, const double* directionA, int nB,
                        const double* pointB, const double* directionB, double tolDist,
                        double tolAng, double* out) {
    const Triple a = load(nA, pointA);
    const Triple b = load(nB, pointB);
    const Triple dA = load(nA, directionA);
    const Triple dB = load(nB, directionB);
    if (!hasDirection(dA) || !hasDirection(dB)) {
        return -1;
    }
    if (!divergeBeyond(dA, dB, tolAng)) {
        return 1;
    }
    // The two nearest points, where their connection is square to both lines.
    const Triple square = crossOf(dA, dB);
    const Triple apart = difference(b, a);
    const double squared = dotOf(square, square);
    const double reachA = dotOf(crossOf(apart, dB), square) / squared;
    const double reachB = dotOf(crossOf(apart, dA), square) / squared;
    const Triple onA = along(a, dA, reachA);
    const Triple onB = along(b, dB, reachB);
    if (!(lengthOf(difference(onA, onB)) <= tolDist)) {
        return 2;
    }
    store(3, onA, out);
    out[3] = reachA;
    store(3, onB, out + 4);
    out[7] = reachB;
    return 0;
}

int CMathGeolib::GetAngleDimData(const double (*edge1)[3], const double (*edge2)[3],
                                 const double* text, int& flag, double (*points)[3], double& angle,
                                 double* vertex) {
    const std::array<Edge, 2> edges{Edge(edge1), Edge(edge2)};
    const Triple textPoint = load(2, text);
    angle = 0.0;
    flag = 0;
    const std::optional<Triple> center = crossing(edges[0], edges[1]);
    store(3, center.value_or(textPoint), vertex);
    if (!center) {
        for (int i = 0; i < 4; ++i) {
            store(3, textPoint, points[i]);
        }
        return 0;
    }
    // The text point lies at a*e1 + b*e2 from the vertex; a negative share turns its ray round.
    const Triple toText = difference(textPoint, *center);
    const double radius = lengthOf(toText);
    const Triple& e1 = edges[0].direction;
    const Triple& e2 = edges[1].direction;
    const double area = turn(e1, e2);
    const double a = turn(toText, e2) / area;
    const double b = turn(e1, toText) / area;
    const std::array<Triple, 2> rays{scaled(e1, a < 0.0 ? -1.0 : 1.0),
                                     scaled(e2, b < 0.0 ? -1.0 : 1.0)};
    constexpr Triple up{0.0, 0.0, 1.0};
    CMathVector::zqvt13(rays[0].data(), rays[1].data(), up.data(), &angle);
    for (std::size_t i = 0; i < 2; ++i) {
        const Triple arcEnd = along(*center, rays[i], radius);
        store(3, edges[i].endNearer(arcEnd), points[2 * i]);
        store(3, arcEnd, points[2 * i + 1]);
        if (!edges[i].contains(arcEnd)) {
            flag += i == 0 ? 1 : 2;
        }
    }
    return 0;
}

int CMathGeolib::GetAngleDimSpecialLineData(const double (*edge1)[3], const double (*edge2)[3],
                                            int& count, double (*points)[3]) {
    const std::array<Edge, 2> edges{Edge(edge1), Edge(edge2)};
    count = 0;
    for (int i = 0; i < 4; ++i) {
        store(3, Triple{}, points[i]);
    }
    const std::optional<Triple> center = crossing(edges[0], edges[1]);
    if (!center) {
        return 0;
    }
    for (const Edge& edge : edges) {
        if (!edge.contains(*center)) {
            store(3, *center, points[2 * count]);
            store(3, edge.endNearer(*center), points[2 * count + 1]);
            ++count;
        }
    }
    return 0;
}

} // namespace dorvale
