// The angle of two edges on the side of its text.
#include "generators/angletext.h"
#include "geometry/definitionplane.h"

using namespace dorvale;

namespace {

/// Points as the kernel takes them.
template <std::size_t N> struct PointTable {
    double points[N][3] = {};

    Vec3 operator[](std::size_t i) const { return fromArray(points[i]); }
};

using EdgeTable = PointTable<2>;

EdgeTable inPlane(const Segment& edge, const AnnotationPlane& plane) {
    EdgeTable table;
    writeTo(table.points[0], plane.toPlane(edge.start));
    writeTo(table.points[1], plane.toPlane(edge.end));
    return table;
}

/// The dimension's geometry in its plane.
struct AngleGeometry {
    double angle = 0.0;
    Vec3 vertex;
    std::array<Vec3, 2> arcEnds;
    /// Where the extension lines start, for the sides that have one.
    std::array<std::optional<Vec3>, 2> extensionStarts;
};

AngleGeometry angleGeometry(const EdgeTable& edge1, const EdgeTable& edge2, Vec3 textPoint) {
    int flag = 0;
    PointTable<4> table;
    Coordinates vertex{};
    AngleGeometry geometry;
    CMathGeolib::GetAngleDimData(edge1.points, edge2.points, toArray(textPoint).data(), flag,
                                 table.points, geometry.angle, vertex.data());
    geometry.vertex = fromArray(vertex);
    geometry.arcEnds = {table[1], table[3]};
    if (flag == 1 || flag == 3) {
        geometry.extensionStarts[0] = table[0];
    }
    if (flag == 2 || flag == 3) {
        geometry.extensionStarts[1] = table[2];
    }
    return geometry;
}

/// Hands the lines that bridge the gaps to the vertex back to the host.
void writeSpecialLines(const EdgeTable& edge1, const EdgeTable& edge2, const AnnotationPlane& plane,
                       int& count, double (*const points)[3]) {
    CMathGeolib::GetAngleDimSpecialLineData(edge1.points, edge2.points, count, points);
    for (int i = 0; i < 4; ++i) {
        writeTo(points[i], plane.toModel(fromArray(points[i])));
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
    const EdgeTable edge1 = inPlane(side1, plane);
    const EdgeTable edge2 = inPlane(side2, plane);
    const Vec3 textPoint = plane.place(*locate);
    const AngleGeometry geometry = angleGeometry(edge1, edge2, textPoint);
    writeSpecialLines(edge1, edge2, plane, specialLineCount, specialLines);

    Assembly assembly(*pmi);
    for (std::size_t i = 0; i < 2; ++i) {
        if (geometry.extensionStarts[i]) {
            assembly.addExtensionLine(*geometry.extensionStarts[i], geometry.arcEnds[i]);
        }
    }
    assembly.setExtensionLinesIfAny();
    const double radius = distance(textPoint, geometry.vertex);
    for (const Vec3& from : geometry.arcEnds) {
        assembly.addArcLeader(geometry.vertex, from, textPoint, radius);
    }
    assembly.setLeaders();
    assembly.setArcTerminators();
    // The text has no direction of its own: it stays parallel to the screen.
    const TextAxes none{toDirection32({}), toDirection32({})};
    assembly.addText(angleTextLine(inDegrees(geometry.angle), *angleMode), textPoint, none,
                     textHeight);
    setAngleFlags(*pmi);
    *status = 0;
}
