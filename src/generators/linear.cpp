// The linear family: the distance of two measured points, drawn parallel to them through a text
// point.
#include <cmath>

#include "generators/assembly.h"
#include "geometry/definitionplane.h"
#include "geometry/offset.h"
#include "geometry/single.h"
#include "model/values.h"
#include "valuetext/valueline.h"

using namespace dorvale;

namespace {

/// Two points meet whose squared distance is no more.
constexpr float kMeeting = 0.1F;

/// One measured end, in the plane: the point, and the edge it was measured on, if it was one.
struct MeasuredEnd {
    Vec3 point;
    std::optional<Segment> edge;
};

/// What the generators of the family hand to their shared routine; everything in the plane.
struct LinearDimension {
    const AnnotationPlane& plane;
    MeasuredEnd a;
    MeasuredEnd b;
    Vec3 textPoint;
    OffsetLine line;
    double value = 0.0;
};

/// The dimension of two ends whose dimension line runs through the text point.
LinearDimension throughText(const AnnotationPlane& plane, const MeasuredEnd& a,
                            const MeasuredEnd& b, Vec3 textPoint) {
    return {plane,
            a,
            b,
            textPoint,
            offsetThrough(textPoint, a.point, b.point),
            distance(a.point, b.point)};
}

/// Where the extension line to an end of the dimension line starts; none where that end lies on the
/// measured geometry already.
std::optional<Vec3> extensionStart(const MeasuredEnd& measured, Vec3 lineEnd) {
    Vec3 start = measured.point;
    if (measured.edge) {
        if (liesOn(*measured.edge, lineEnd)) {
            return std::nullopt;
        }
        start = endNearerTo(lineEnd, *measured.edge);
    }
    return coincide(start, lineEnd, kMeeting) ? std::nullopt : std::optional(start);
}

/// Leaders from both ends of the dimension line to the text; to their midpoint where the text
/// stands right above an end, so that no leader is without a length.
void addLeaders(const LinearDimension& dimension, Assembly& assembly) {
    const OffsetLine& line = dimension.line;
    const bool aboveEnd = coincide(line.foot, dimension.a.point, kMeeting) ||
                          coincide(line.foot, dimension.b.point, kMeeting);
    const Vec3 meeting = aboveEnd ? midpoint(line.start, line.end) : dimension.textPoint;
    assembly.addLeader(line.start, meeting);
    assembly.addLeader(line.end, meeting);
    assembly.setLeadersIfAny();
}

void addExtensionLines(const LinearDimension& dimension, Assembly& assembly) {
    const OffsetLine& line = dimension.line;
    if (const std::optional<Vec3> start = extensionStart(dimension.a, line.start)) {
        assembly.addExtensionLine(*start, line.start);
    }
    if (const std::optional<Vec3> start = extensionStart(dimension.b, line.end)) {
        assembly.addExtensionLine(*start, line.end);
    }
    assembly.setExtensionLinesIfAny();
}

/// The text runs along the measured length (along the plane's X axis where that is none), centred
/// on the text point.
void addCentredText(const LinearDimension& dimension, double textHeight, const View& view,
                    Assembly& assembly) {
    std::optional<std::wstring> line = lengthLine(dimension.value);
    if (!line) {
        return;
    }
    constexpr Vec3 planeX{1.0, 0.0, 0.0};
    const Vec3 along = unit(dimension.b.point - dimension.a.point).value_or(planeX);
    const TextAxes text = readable(textAlong(along), dimension.plane, view);
    const CharSize size = charSizeOf(textHeightOr(textHeight));
    const double width = EstimateTextWidth(*line, size, 0.0);
    assembly.addText(std::move(line), moved(dimension.textPoint, widen(text.x), -0.5 * width), text,
                     textHeight);
}

/// Draws a dimension of the family and sets its flags; some set a type.
void createLinear(const LinearDimension& dimension, std::optional<AnkPMITypeEnum> type,
                  double textHeight, const View& view, Ank_PMI& pmi) {
    pmi.SetDefPlane(dimension.plane.matrix32());
    Assembly assembly(pmi);
    addCentredText(dimension, textHeight, view, assembly);
    addLeaders(dimension, assembly);
    addExtensionLines(dimension, assembly);
    if (type) {
        pmi.SetType(*type);
    }
    pmi.SetDim(3);
    pmi.SetDisplay(true);
}

/// The plane of two lines. Where they have no crossing the first one's start is the origin, so that
/// the plane holds what is measured.
AnnotationPlane planeHolding(const Segment& line1, const Segment& line2, const View& view) {
    PlaneDefinition definition = planeOfTwoLines(line1, line2, view.towardsViewer);
    if (!definition.crosses) {
        definition.origin = line1.start;
    }
    return definition.plane();
}

Vec3 footOn(const Segment& edge, Vec3 point) { return orZero(footOnLine(point, edge)).point; }

/// From a point's foot on an edge to the point, in a plane.
LinearDimension pointToEdge(const Segment& edgeInModel, Vec3 pointInModel,
                            const AnnotationPlane& plane, _ank_locate& locate) {
    const Segment edge = flat(plane.toPlane(edgeInModel));
    const Vec3 point = flat(plane.toPlane(pointInModel));
    return throughText(plane, {footOn(edge, point), edge}, {point, std::nullopt},
                       flat(plane.place(locate)));
}

} // namespace

void PMICreateLinDistDim3D(Ank_CurveEntity* curve1, Ank_CurveEntity* curve2, _ank_locate* locate,
                           double textHeight, Ank_PMI* pmi, int* status, double* viewMatrix,
                           Ank_Line* /*unused*/) {
    const View view = View::fromMatrix(viewMatrix);
    const AnnotationPlane plane = planeHolding(segmentOf(curve1), segmentOf(curve2), view);
    const Segment edge1 = flat(plane.toPlane(segmentOf(curve1)));
    const Segment edge2 = flat(plane.toPlane(segmentOf(curve2)));
    const Vec3 textPoint = flat(plane.place(*locate));
    const Vec3 a = footOn(edge1, textPoint);
    createLinear(throughText(plane, {a, edge1}, {footOn(edge2, a), edge2}, textPoint),
                 kLinearDimension, textHeight, view, *pmi);
    *status = 0;
}

void PMICreateLinDotDim3D(Ank_CurveEntity* edgeCurve, Ank_CurveEntity* pointCurve,
                          _ank_locate* locate, double textHeight, Ank_PMI* pmi, int* status,
                          double* viewMatrix) {
    const View view = View::fromMatrix(viewMatrix);
    const Segment edge = segmentOf(edgeCurve);
    const Vec3 point = pointOf(pointCurve);
    const AnnotationPlane plane = planeHolding(edge, {point, footOn(edge, point)}, view);
    createLinear(pointToEdge(edge, point, plane, *locate), kLinearDimension, textHeight, view,
                 *pmi);
    *status = 0;
}

void PMICreateDotDistDim3D(Ank_Line* line1, Ank_Line* line2, double textHeight, Ank_PMI* pmi,
                           int* status, double* viewMatrix) {
    const View view = View::fromMatrix(viewMatrix);
    const Segment side1 = segmentOf(line1);
    const Segment side2 = segmentOf(line2);
    const AnnotationPlane plane = planeHolding(side1, side2, view);
    const Segment flat1 = flat(plane.toPlane(side1));
    const Segment flat2 = flat(plane.toPlane(side2));
    const Vec3 textPoint = midpoint(flat1.end, flat2.end);
    LinearDimension dimension =
        throughText(plane, {flat1.start, std::nullopt}, {flat2.start, std::nullopt}, textPoint);
    dimension.line.start = flat1.end;
    dimension.line.end = flat2.end;
    dimension.value = distance(side1.start, side2.start);
    createLinear(dimension, kLinearDimension, textHeight, view, *pmi);
    *status = 0;
}

void PMICreateClipDim3D(double* normal, double* pointA, double* pointB, _ank_locate* locate,
                        double textHeight, Ank_PMI* pmi, int* status, double* viewMatrix) {
    const Vec3 a = fromArray(pointA);
    const Vec3 b = fromArray(pointB);
    const AnnotationPlane plane = AnnotationPlane::ofSection(fromArray(normal), a, b);
    const LinearDimension dimension =
        throughText(plane, {flat(plane.toPlane(a)), std::nullopt},
                    {flat(plane.toPlane(b)), std::nullopt}, flat(plane.place(*locate)));
    createLinear(dimension, std::nullopt, textHeight, View::fromMatrix(viewMatrix), *pmi);
    *status = 0;
}

void PMICreateClipLinDotDim3D(double* normal, double* origin, double* xPoint, Ank_CurveEntity* edge,
                              Ank_CurveEntity* point, _ank_locate* locate, double textHeight,
                              Ank_PMI* pmi, int* status, double* viewMatrix) {
    const AnnotationPlane plane =
        AnnotationPlane::ofSection(fromArray(normal), fromArray(origin), fromArray(xPoint));
    createLinear(pointToEdge(segmentOf(edge), pointOf(point), plane, *locate), kLinearDimension,
                 textHeight, View::fromMatrix(viewMatrix), *pmi);
    *status = 0;
}
