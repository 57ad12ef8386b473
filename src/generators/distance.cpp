// Distances between two features that the host has already measured, drawn in model coordinates.
#include "generators/assembly.h"
#include "valuetext/valueline.h"

using namespace dorvale;

namespace {

/// The definition plane is the model's own XY plane.
constexpr std::array<float, 16> kModelPlane{1.0F, 0.0F, 0.0F, 0.0F, //
                                            0.0F, 1.0F, 0.0F, 0.0F, //
                                            0.0F, 0.0F, 1.0F, 0.0F, //
                                            0.0F, 0.0F, 0.0F, 1.0F};
/// The text runs up the model's Y axis and stands towards its X axis: a swapped pair.
TextAxes swappedAxes() { return {direction32(0.0F, 1.0F, 0.0F), direction32(1.0F, 0.0F, 0.0F)}; }

/// One side of the dimension: the extension line runs from the base to the anchor, where the leader
/// starts.
struct Side {
    Vec3 base;
    Vec3 anchor;
};

void createDistance(double measured, const Side& side1, const Side& side2, Vec3 textPoint,
                    double textHeight, Ank_PMI& pmi) {
    pmi.SetDefPlane(matrix32(kModelPlane));
    std::optional<std::wstring> line = lengthLine(measured);
    Assembly assembly(pmi);
    assembly.addLeader(side1.anchor, textPoint);
    assembly.addLeader(side2.anchor, textPoint);
    assembly.addExtensionLine(side1.base, side1.anchor);
    assembly.addExtensionLine(side2.base, side2.anchor);
    assembly.setLeadersIfAny();
    assembly.setExtensionLinesIfAny();
    assembly.addText(std::move(line), textPoint, swappedAxes(), textHeight);
    pmi.SetDisplay(true);
    pmi.SetParallelScreen(true);
    pmi.SetDim(3);
}

/// Both ends of the measured distance stand at the anchors, P2 and P5.
void createBetweenAnchors(double (*const points)[3], Vec3 base1, Vec3 base2,
                          const double* textPoint, double textHeight, Ank_PMI& pmi) {
    const Side side1{base1, fromArray(points[2])};
    const Side side2{base2, fromArray(points[5])};
    createDistance(distance(side2.anchor, side1.anchor), side1, side2, fromArray(textPoint),
                   textHeight, pmi);
}

} // namespace

void PMICreateAxToAx(double (*const points)[3], double* const textPoint, double textHeight,
                     Ank_PMI* pmi, int* status, double* /*unused*/) {
    createBetweenAnchors(points, fromArray(points[1]), fromArray(points[4]), textPoint, textHeight,
                         *pmi);
    *status = 0;
}

void PMICreateCntToCnt(double (*const points)[3], double* const textPoint, double textHeight,
                       Ank_PMI* pmi, int* status, double* /*unused*/) {
    const Side side1{fromArray(points[0]), fromArray(points[1])};
    const Side side2{fromArray(points[2]), fromArray(points[3])};
    createDistance(distance(side1.base, side2.base), side1, side2, fromArray(textPoint), textHeight,
                   *pmi);
    *status = 0;
}

void PMICreatePLNTOPLN(double (*const points)[3], double* const textPoint, double textHeight,
                       Ank_PMI* pmi, int* status, double* /*unused*/) {
    createBetweenAnchors(points, midpoint(fromArray(points[0]), fromArray(points[1])),
                         midpoint(fromArray(points[3]), fromArray(points[4])), textPoint,
                         textHeight, *pmi);
    *status = 0;
}

void PMICreatePntToFace(double (*const points)[3], double* const textPoint, double textHeight,
                        Ank_PMI* pmi, int* status, double* /*unused*/) {
    createBetweenAnchors(points, fromArray(points[1]), fromArray(points[4]), textPoint, textHeight,
                         *pmi);
    *status = 0;
}

void PMIUpdateDimesion(Ank_PMI* pmi, double* const p1, double* const p2, double* const /*p3*/,
                       int* status) {
    const Vec3 from = fromArray(p1);
    const Vec3 to = fromArray(p2);
    const Vec3 middle = midpoint(from, to);
    Assembly assembly(*pmi);
    assembly.addLeader(from, middle);
    assembly.addLeader(to, middle);
    assembly.setLeadersIfAny();
    assembly.addText(lengthLine(distance(from, to)), middle, swappedAxes(), kDefaultTextHeight);
    *status = 0;
}
