// The length of a curve: of an arc, along a concentric arc through the placement; of a straight
// edge, along a line parallel to it.
#include <cmath>
#include <numbers>

#include "generators/assembly.h"
#include "geometry/definitionplane.h"
#include "geometry/offset.h"
#include "geometry/projection.h"
#include "valuetext/valueline.h"

using namespace dorvale;

namespace {

/// What a dimension of a curve's length is made from.
struct CurveLength {
    const Ank_CurveEntity* curve = nullptr;
    AnnotationPlane plane;
    View view;
    double textHeight = 0.0;
    /// Two lines whose plane orients the sweep of an arc.
    const Ank_Line* line1 = nullptr;
    const Ank_Line* line2 = nullptr;
};

void drawStraight(const CurveLength& input, Vec3 textPoint, Ank_PMI& pmi) {
    const Segment edge = segmentOf(input.curve);
    const Vec3 start = input.plane.toPlane(edge.start);
    const Vec3 end = input.plane.toPlane(edge.end);
    const OffsetLine line = offsetThrough(textPoint, start, end);

    // The text stands up away from the edge.
    const TextAxes along = textAlong(orZero(unit(end - start)));
    const TextAxes text = dot(widen(along.y), line.away) < 0.0 ? along.reversed() : along;
    Assembly assembly(pmi);
    assembly.addText(lengthLine(distance(start, end)), textPoint, text, input.textHeight);
    assembly.addLeader(line.start, textPoint);
    assembly.addLeader(line.end, textPoint);
    assembly.setLeadersIfAny();
    assembly.addExtensionLine(start, line.start);
    assembly.addExtensionLine(end, line.end);
    assembly.setExtensionLinesIfAny();
}

/// The measured arc and the dimension arc beside it, in the annotation's plane.
struct ConcentricArc {
    Vec3 center;
    Vec3 start;
    Vec3 end;
    /// Unit direction from the centre to the text; the plane's X axis where both coincide.
    Vec3 towardsText;
    double radius = 0.0;

    Vec3 onDimensionArc(Vec3 point) const {
        return moved(center, orZero(unit(point - center)), radius);
    }
    Vec3 underText() const { return moved(center, towardsText, radius); }
};

Vec3 directionFrom(Vec3 center, Vec3 point) {
    return unit(point - center).value_or(Vec3{1.0, 0.0, 0.0});
}

ConcentricArc concentricArc(const Arc& arc, const AnnotationPlane& plane, Vec3 textPoint) {
    const Vec3 center = plane.toPlane(arc.center);
    return {center, plane.toPlane(arc.start), plane.toPlane(arc.end),
            directionFrom(center, textPoint), distance(textPoint, center)};
}

/// The angle from the arc's start to its end about the normal of the two lines' plane.
std::optional<double> sweepOf(const Arc& arc, const CurveLength& input) {
    const PlaneDefinition sweepPlane =
        directionOfTwoLines(segmentOf(input.line1), segmentOf(input.line2), Vec3{});
    return angleAbout(sweepPlane.normal(), (arc.start - arc.center) / arc.radius,
                      (arc.end - arc.center) / arc.radius);
}

/// The normal about which the dimension arc of a major arc runs the long way round: that of the
/// centre, the start and the point of the arc away from its chord.
Vec3 normalOfMajorArc(const ConcentricArc& arc) {
    const Foot foot = orZero(footOnLine(flat(arc.center), flat(arc.start), flat(arc.end)));
    const Vec3 awayFromChord = orZero(unit(flat(arc.center - foot.point)));
    return orZero(normalOf(arc.center, arc.start, moved(arc.center, awayFromChord, arc.radius)));
}

/// The text's axes, tangent to the dimension arc at the middle of the estimated width.
TextAxes tangentText(const ConcentricArc& arc, Vec3 textPoint, double width,
                     const AnnotationPlane& plane, const View& view) {
    const TextAxes first = textOnCircle(directionFrom(flat(arc.center), flat(textPoint)));
    const bool backwards = readsBackwards(first, plane, view);
    const TextAxes turned = backwards ? first.reversed() : first;
    const Vec3 middle = moved(textPoint, orZero(unit(widen(turned.x))), width * 0.5);
    const TextAxes text = textOnCircle(directionFrom(flat(arc.center), flat(middle)));
    return backwards ? text.reversed() : text;
}

/// Half the width of a line whose characters are four fifths as wide as usual.
double estimatedWidth(const std::wstring& line, double height) {
    return static_cast<double>(line.size()) * charSizeOf(height).width * 0.8 * 0.5;
}

void drawArc(const CurveLength& input, Vec3 textPoint, Ank_PMI& pmi) {
    const Arc measured = arcOf(input.curve);
    const ConcentricArc arc = concentricArc(measured, input.plane, textPoint);
    const std::optional<double> sweep = sweepOf(measured, input);
    const Vec3 start = arc.onDimensionArc(arc.start);
    const Vec3 end = arc.onDimensionArc(arc.end);

    Assembly assembly(pmi);
    const bool major = sweep && *sweep > std::numbers::pi;
    const Vec3 normal =
        assembly.addArcLeader(arc.center, start, arc.underText(), arc.radius,
                              major ? std::optional(normalOfMajorArc(arc)) : std::nullopt);
    assembly.addArcLeader(arc.center, end, arc.underText(), arc.radius,
                          major ? std::optional(-normal) : std::nullopt);
    assembly.setArcTerminators();
    assembly.setLeaders();
    if (sweep) {
        std::wstring line = arcLengthLine(std::abs(*sweep) * measured.radius);
        const double width = estimatedWidth(line, input.textHeight);
        const TextAxes text = tangentText(arc, textPoint, width, input.plane, input.view);
        assembly.addText(std::move(line), textPoint, text, input.textHeight);
    }
    assembly.addExtensionLine(arc.start, start);
    assembly.addExtensionLine(arc.end, end);
    assembly.setExtensionLinesIfAny();
}

/// Fills the annotation but for its flags; true for a straight edge.
bool drawCurveLength(const CurveLength& input, _ank_locate& locate, Ank_PMI& pmi) {
    pmi.SetDefPlane(input.plane.matrix32());
    const Vec3 textPoint = input.plane.place(locate);
    const bool straight = isOfType(input.curve, kLineCurve);
    if (straight) {
        drawStraight(input, textPoint, pmi);
    } else {
        drawArc(input, textPoint, pmi);
    }
    return straight;
}

} // namespace

void PMICreateArcDim3D(int* /*unused*/, Ank_CurveEntity* curve, _ank_locate* locate,
                       double textHeight, Ank_PMI* pmi, int* status, double* viewMatrix,
                       Ank_Line* line1, Ank_Line* line2) {
    const View view = View::fromMatrix(viewMatrix);
    drawCurveLength({curve,
                     definePlane(PlaneKind::Line, curve, nullptr, view.towardsViewer).plane(), view,
                     textHeight, line1, line2},
                    *locate, *pmi);
    pmi->SetParallelScreen(true);
    pmi->SetDisplay(true);
    pmi->SetDim(3);
    *status = 0;
}

void PMICreateClipArcDim3D(int* /*unused*/, double* normal, double* origin, double* xPoint,
                           Ank_CurveEntity* curve, _ank_locate* locate, double textHeight,
                           Ank_PMI* pmi, int* status, double* viewMatrix, Ank_Line* line1,
                           Ank_Line* line2) {
    const bool straight = drawCurveLength(
        {curve, AnnotationPlane::ofSection(fromArray(normal), fromArray(origin), fromArray(xPoint)),
         View::fromMatrix(viewMatrix), textHeight, line1, line2},
        *locate, *pmi);
    if (!straight) {
        pmi->SetType(kClipArcDimension);
    }
    pmi->SetDisplay(true);
    pmi->SetDim(3);
    *status = 0;
}
