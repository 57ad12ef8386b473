// The length of a straight edge, with a dimension line parallel to it.
#include "generators/assembly.h"
#include "generators/kindcode.h"
#include "geometry/definitionplane.h"
#include "geometry/offset.h"
#include "model/values.h"
#include "valuetext/valueline.h"

using namespace dorvale;

void PMICreateParallelDim3D(int* kindCode, int* /*unused*/, Ank_CurveEntity* reference,
                            Ank_CurveEntity* edge, Ank_CurveEntity* /*unused*/, _ank_locate* locate,
                            double textHeight, Ank_PMI* pmi, int* /*status*/, double* viewMatrix) {
    if (!isKnownKind(kindCode)) {
        return;
    }
    const View view = View::fromMatrix(viewMatrix);
    const Segment measured = segmentOf(edge);
    const Segment along = segmentOf(reference);
    const AnnotationPlane plane =
        planeAlong(measured.start, along.end - along.start, view.towardsViewer).plane();
    pmi->SetDefPlane(plane.matrix32());

    const Vec3 textPoint = plane.placeAlongView(*locate);
    const Vec3 start = plane.toPlane(measured.start);
    const Vec3 end = plane.toPlane(measured.end);
    const OffsetLine line = offsetThrough(textPoint, start, end);
    const Vec3 middle = midpoint(line.start, line.end);

    Assembly assembly(*pmi);
    assembly.addLeader(line.start, middle);
    assembly.addLeader(line.end, middle);
    assembly.setLeadersIfAny();
    const TextAxes text{toDirection32(plane.xAxis()), toDirection32(plane.yAxis())};
    assembly.addText(lengthLine(distance(start, end)), textPoint, text, textHeight);
    assembly.addExtensionLine(start, line.start);
    assembly.addExtensionLine(end, line.end);
    assembly.setExtensionLinesIfAny();
    pmi->SetType(kParallelDimension);
    pmi->SetDisplay(true);
    pmi->SetDim(3);
}
