// The angle between the sides at which two edges were picked.
#include "builders/lines.h"
#include "generators/angletext.h"
#include "geometry/definitionplane.h"
#include "geometry/placement.h"

using namespace dorvale;

namespace {

constexpr int kZeroAngle = 3;
/// An edge whose end is this near to the vertex touches it.
constexpr double kTouching = 0.1;
/// Directions are the same below this angle, and opposite from what it leaves of a half turn on.
constexpr double kSameDirection = 1.0;

constexpr Vec3 kPlaneNormal{0.0, 0.0, 1.0};

/// A picked edge, in the model or in the plane.
struct Side {
    Segment edge;
    Vec3 pick;
};

Side sideOf(const _ank_element& element) {
    return {segmentOf(element.line), fromArray(element.pickPoint)};
}

/// Drops edge 2 and both picks into the plane through edge 1 along both edges, and rewrites the
/// caller's edge 2.
void makeCoplanar(Side& side1, Side& side2, Ank_Line* line2) {
    const Vec3 normal = normalOfLines(side1.edge, side2.edge, kTolerances.angle);
    const Vec3 origin = side1.edge.start;
    if (line2 != nullptr) {
        line2->SetStartPoint(toPoint32(ProjPntToPlane(side2.edge.start, origin, normal)));
        line2->SetEndPoint(toPoint32(ProjPntToPlane(side2.edge.end, origin, normal)));
    }
    side1.pick = ProjPntToPlane(side1.pick, origin, normal);
    side2 = {segmentOf(line2), ProjPntToPlane(side2.pick, origin, normal)};
}

/// From the crossing towards the picked part of an edge.
Vec3 pickedDirection(const Side& side, Vec3 crossing) {
    return orZero(unit(orZero(footOnLine(side.pick, side.edge)).point - crossing));
}

/// The angle from the first picked side to the second one about the plane's normal, in degrees. The
/// plane's origin is where the edges cross.
double pickedAngle(const Side& side1, const Side& side2, const AnnotationPlane& plane) {
    const Vec3 crossing = plane.origin();
    const std::optional<double> angle = angleAbout(plane.normal(), pickedDirection(side1, crossing),
                                                   pickedDirection(side2, crossing));
    return inDegrees(orZero(angle));
}

Side inPlane(const Side& side, const AnnotationPlane& plane) {
    return {plane.toPlane(side.edge), plane.toPlane(side.pick)};
}

/// An edge as seen from the vertex:
///
///     vertex . . gap . . nearEnd ------ length ------ farEnd
struct EdgeFromVertex {
    Vec3 nearEnd;
    Vec3 farEnd;
    Vec3 direction;
    double gap = 0.0;
    double length = 0.0;
    bool touchesVertex = false;
};

EdgeFromVertex seenFrom(Vec3 vertex, const Segment& edge, Vec3 startToEnd) {
    const double toStart = distance(vertex, edge.start);
    const double toEnd = distance(vertex, edge.end);
    const bool endIsFar = toEnd > toStart;
    EdgeFromVertex seen;
    seen.nearEnd = endIsFar ? edge.start : edge.end;
    seen.farEnd = endIsFar ? edge.end : edge.start;
    seen.direction = endIsFar ? startToEnd : -startToEnd;
    seen.gap = endIsFar ? toStart : toEnd;
    seen.length = distance(edge.start, edge.end);
    // The distance of the edge's end counts, whichever end is the nearer one.
    seen.touchesVertex = toEnd <= kTouching;
    return seen;
}

/// The angle between two directions of the plane, 0 to 180 degrees; 0 where either has no length.
double degreesBetween(Vec3 a, Vec3 b) {
    return foldedDegrees(inDegrees(orZero(angleAbout(kPlaneNormal, a, b))));
}

/// The dimension arc: through the text point about the vertex, from one picked side to the other.
struct DimensionArc {
    Vec3 vertex;
    Vec3 textPoint;
    double radius = 0.0;
    Vec3 towardsText;
    std::array<Vec3, 2> ends;
};

DimensionArc arcThrough(Vec3 textPoint, Vec3 vertex, const Side& side1, const Side& side2) {
    DimensionArc arc{vertex,
                     textPoint,
                     distance(flat(textPoint), flat(vertex)),
                     orZero(unit(textPoint - vertex)),
                     {}};
    arc.ends = {moved(vertex, orZero(unit(side1.pick - vertex)), arc.radius),
                moved(vertex, orZero(unit(side2.pick - vertex)), arc.radius)};
    const Vec3 bisector = orZero(unit(midpoint(arc.ends[0], arc.ends[1]) - vertex));
    // Most texts stand on the bisector's side, which takes no arc tangent to see.
    if (dot(bisector, arc.towardsText) < 0.0 && degreesBetween(bisector, arc.towardsText) > 90.0) {
        // The text stands in the opposite angle. Its arc's ends are these, reflected through the
        // vertex: the plane's origin is where the edges cross, so that negating them does it.
        arc.ends = {-arc.ends[0], -arc.ends[1]};
    }
    return arc;
}

void addSpecialLine(const EdgeFromVertex& edge, Vec3 vertex, Ank_PMI& pmi) {
    if (edge.touchesVertex) {
        return;
    }
    std::unique_ptr<Ank_SpecialLine> line =
        makeSpecialLine({toPoint32(edge.nearEnd), toPoint32(vertex)});
    if (line) {
        give(std::move(line), [&](Ank_SpecialLine* taken) { pmi.AddSpecialLine(taken); });
    }
}

/// The lines that join an edge to its end of the dimension arc.
void joinToArc(const EdgeFromVertex& edge, const DimensionArc& arc, Vec3 arcEnd, Assembly& assembly,
               Ank_PMI& pmi) {
    const Vec3 towardsArcEnd = orZero(unit(flat(arcEnd - arc.vertex)));
    const double apart = degreesBetween(towardsArcEnd, edge.direction);
    if (apart >= kSameDirection && apart < 180.0 - kSameDirection) {
        return;
    }
    if (apart >= kSameDirection) {
        // The arc ends on the other side of the vertex.
        assembly.addExtensionLine(arc.vertex, arcEnd);
        if (edge.gap > 0.0) {
            addSpecialLine(edge, arc.vertex, pmi);
        }
        return;
    }
    const double reach = edge.touchesVertex ? arc.radius : arc.radius - edge.gap;
    if (reach > edge.length) {
        assembly.addExtensionLine(edge.farEnd, arcEnd);
    }
    if (edge.gap > arc.radius) {
        addSpecialLine(edge, arc.vertex, pmi);
    }
}

} // namespace

void PMICreateAngleDim3D(int* angleMode, int* flag1, int* flag2, _ank_element* edge1,
                         _ank_element* edge2, _ank_locate* locate, int* /*unused*/,
                         double* /*unused*/, double textHeight, Ank_PMI* pmi, int* status,
                         double* viewMatrix) {
    *flag1 = 1;
    *flag2 = 1;
    const View view = View::fromMatrix(viewMatrix);
    Side side1 = sideOf(*edge1);
    Side side2 = sideOf(*edge2);
    makeCoplanar(side1, side2, edge2->line);
    const AnnotationPlane plane =
        planeOfTwoLines(side1.edge, side2.edge, view.towardsViewer).plane();
    pmi->SetDefPlane(plane.matrix32());
    const double degrees = pickedAngle(side1, side2, plane);
    if (degrees == 0.0) {
        *status = kZeroAngle;
        return;
    }
    side1 = inPlane(side1, plane);
    side2 = inPlane(side2, plane);
    const Line line1 = lineAlong(side1.edge);
    const Line line2 = lineAlong(side2.edge);
    const Vec3 vertex = orZero(LinLinIntersect(line1, line2));
    const DimensionArc arc = arcThrough(plane.place(*locate), vertex, side1, side2);

    Assembly assembly(*pmi);
    joinToArc(seenFrom(vertex, side1.edge, line1.direction), arc, arc.ends[0], assembly, *pmi);
    joinToArc(seenFrom(vertex, side2.edge, line2.direction), arc, arc.ends[1], assembly, *pmi);
    assembly.setExtensionLinesIfAny();
    for (const Vec3& from : arc.ends) {
        assembly.addArcLeader(vertex, from, arc.textPoint, arc.radius);
        assembly.setLeaders();
    }
    assembly.setArcTerminators();
    assembly.addText(angleTextLine(degrees, *angleMode), arc.textPoint,
                     readable(textOnCircle(orZero(unit(flat(arc.towardsText)))), plane, view),
                     textHeight);
    setAngleFlags(*pmi);
    *status = 0;
}
