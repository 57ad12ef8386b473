// The angle of two edges on the side of its text.
#include "generators/angletext.h"
#include "geometry/anglearc.h"
#include "geometry/definitionplane.h"

using namespace dorvale;

namespace {

/// Hands the lines that bridge the gaps to the vertex back to the host, in the model.
void writeGapLines(const GapLines& gaps, const AnnotationPlane& plane, int& count,
                   double (*points)[3]) {
    count = gaps.count;
    for (const Segment& line : gaps.lines) {
        writeTo(*points++, plane.toModel(line.start));
        writeTo(*points++, plane.toModel(line.end));
    }
}

} // namespace

void PMICreateAngleDim(int* angleMode, Ank_Line* line1, Ank_Line* line2, _ank_locate* locate,
                       double textHeight, Ank_PMI* pmi, int* status, int& specialLineCount,
                       double (*const specialLines)[3], double* viewMatrix) {
    const View view = View::fromMatrix(viewMatrix);
    const Segment side1 = segmentOf(line1);
    const Segment side2 = segmentOf(line2);
    const AnnotationPlane plane = planeOfTwoLines(side1, side2, view.towardsViewer).plane();
    pmi->SetDefPlane(plane.matrix32());
    const Segment edge1 = plane.toPlane(side1);
    const Segment edge2 = plane.toPlane(side2);
    const Vec3 textPoint = plane.place(*locate);
    const AngleArc arc = angleArc(edge1, edge2, textPoint);
    writeGapLines(gapLines(edge1, edge2), plane, specialLineCount, specialLines);

    Assembly assembly(*pmi);
    for (const AngleArc::Side& side : arc.sides) {
        if (side.isExtended) {
            assembly.addExtensionLine(side.edgeEnd, side.arcEnd);
        }
    }
    assembly.setExtensionLinesIfAny();
    const double radius = distance(textPoint, arc.vertex);
    for (const AngleArc::Side& side : arc.sides) {
        assembly.addArcLeader(arc.vertex, side.arcEnd, textPoint, radius);
    }
    assembly.setLeaders();
    assembly.setArcTerminators();
    // The text has no direction of its own: it stays parallel to the screen.
    const TextAxes none{toDirection32({}), toDirection32({})};
    assembly.addText(angleTextLine(inDegrees(arc.angle), *angleMode), textPoint, none, textHeight);
    setAngleFlags(*pmi);
    *status = 0;
}
