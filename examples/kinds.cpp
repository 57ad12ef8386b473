#include "kinds.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

constexpr double kHeight = 3.5;

/// What the host has measured, and the view. Stays the caller's; what a call may write to is set
/// anew for each.
struct Part {
    double points[6][3] = {{0, 0, 0}, {0, 10, 0}, {0, 20, 0}, {50, 0, 0}, {50, 10, 0}, {50, 20, 0}};
    double text[3] = {25, 25, 0};
    double view[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    _ank_locate locate{};
    double sectionNormal[3] = {0, 0, 1};
    double sectionOrigin[3] = {0, 0, 0};
    double sectionX[3] = {30, 0, 0};
    int kindCode = 900001;
    int angleMode = 1;
    int status = 0;
    Ank_Line edge;
    Ank_Line slope;
    Ank_Line parallel;
    Ank_Ellipse circle = quarterCircle(10);

    Part() {
        edge.SetEndPoint({40, 0, 0});
        slope.SetEndPoint({20, 34.6410162F, 0});
        parallel.SetStartPoint({0, 20, 0});
        parallel.SetEndPoint({40, 20, 0});
        std::copy_n(view, 16, locate.viewMatrix);
    }

    _ank_locate* placedAt(double x, double y) {
        locate.point[0] = x;
        locate.point[1] = y;
        locate.point[2] = 0;
        return &locate;
    }
};

Part& part() {
    thread_local Part part;
    return part;
}

using Distance = void (*)(double (*)[3], double*, double, Ank_PMI*, int*, double*);

template <Distance create> void distance(Ank_PMI& pmi) {
    create(part().points, part().text, kHeight, &pmi, &part().status, nullptr);
}

using Circle = void (*)(int*, Ank_CurveEntity*, _ank_locate*, int*, double, Ank_PMI*, int*,
                        double*);

template <Circle create> void circle(Ank_PMI& pmi) {
    _ank_locate* const locate = part().placedAt(20, 15);
    create(&part().kindCode, &part().circle, locate, nullptr, kHeight, &pmi, &part().status,
           part().view);
}

void update(Ank_PMI& pmi) {
    PMIUpdateDimesion(&pmi, part().points[0], part().points[3], nullptr, &part().status);
}

void parallel(Ank_PMI& pmi) {
    _ank_locate* const locate = part().placedAt(20, 15);
    PMICreateParallelDim3D(&part().kindCode, nullptr, &part().edge, &part().edge, nullptr, locate,
                           kHeight, &pmi, &part().status, part().view);
}

void arc(Ank_PMI& pmi) { buildArcLength(pmi, part().circle, 10); }

void clipArc(Ank_PMI& pmi) {
    Part& p = part();
    _ank_locate* const locate = p.placedAt(20, 15);
    PMICreateClipArcDim3D(nullptr, p.sectionNormal, p.sectionOrigin, p.sectionX, &p.circle, locate,
                          kHeight, &pmi, &p.status, p.view, &p.edge, &p.slope);
}

void angle(Ank_PMI& pmi) {
    Part& p = part();
    _ank_locate* const locate = p.placedAt(50, 15);
    int count = 0;
    double lines[4][3];
    PMICreateAngleDim(&p.angleMode, &p.edge, &p.slope, locate, kHeight, &pmi, &p.status, count,
                      lines, p.view);
}

void angle3d(Ank_PMI& pmi) {
    Part& p = part();
    _ank_locate* const locate = p.placedAt(50, 15);
    _ank_element first{&p.edge, {20, 0, 0}};
    _ank_element second{&p.slope, {10, 17.3, 0}};
    int flags[2];
    PMICreateAngleDim3D(&p.angleMode, &flags[0], &flags[1], &first, &second, locate, nullptr,
                        nullptr, kHeight, &pmi, &p.status, p.view);
}

void note(Ank_PMI& pmi) {
    thread_local std::vector<PMITextLine> lines{{1, L"BREAK ALL SHARP EDGES"}, {0, L"0.2 x 45"}};
    PMICreateNote3D(lines, part().points[1], part().text, 0, true, L"UNLESS STATED OTHERWISE",
                    kHeight, &pmi, &part().status);
}

void linDist(Ank_PMI& pmi) {
    Part& p = part();
    _ank_locate* const locate = p.placedAt(50, 10);
    PMICreateLinDistDim3D(&p.edge, &p.parallel, locate, kHeight, &pmi, &p.status, p.view, nullptr);
}

void linDot(Ank_PMI& pmi) {
    Part& p = part();
    _ank_locate* const locate = p.placedAt(50, 10);
    PMICreateLinDotDim3D(&p.edge, &p.parallel, locate, kHeight, &pmi, &p.status, p.view);
}

void dotDist(Ank_PMI& pmi) {
    Part& p = part();
    PMICreateDotDistDim3D(&p.edge, &p.parallel, kHeight, &pmi, &p.status, p.view);
}

void clip(Ank_PMI& pmi) {
    Part& p = part();
    _ank_locate* const locate = p.placedAt(10, 10);
    PMICreateClipDim3D(p.sectionNormal, p.sectionOrigin, p.sectionX, locate, kHeight, &pmi,
                       &p.status, p.view);
}

void clipLinDot(Ank_PMI& pmi) {
    Part& p = part();
    _ank_locate* const locate = p.placedAt(50, 10);
    PMICreateClipLinDotDim3D(p.sectionNormal, p.sectionOrigin, p.sectionX, &p.edge, &p.parallel,
                             locate, kHeight, &pmi, &p.status, p.view);
}

void framedNote(Ank_PMI& pmi) {
    note(pmi);
    Envelope envelope{true, 0x00FFFFFF, 0x00000000};
    PMISetEnvelope(1, true, false, true, envelope, &pmi);
}

constexpr AnnotationKind kKinds[] = {
    {"PMICreateAxToAx", distance<PMICreateAxToAx>},
    {"PMICreateCntToCnt", distance<PMICreateCntToCnt>},
    {"PMICreatePLNTOPLN", distance<PMICreatePLNTOPLN>},
    {"PMICreatePntToFace", distance<PMICreatePntToFace>},
    {"PMIUpdateDimesion", update},
    {"PMICreateParallelDim3D", parallel},
    {"PMICreateRadiusDim3D", circle<PMICreateRadiusDim3D>},
    {"PMICreateDiameterDim3D", circle<PMICreateDiameterDim3D>},
    {"PMICreateNote3D", note},
    {"PMICreateLinDistDim3D", linDist},
    {"PMICreateLinDotDim3D", linDot},
    {"PMICreateDotDistDim3D", dotDist},
    {"PMICreateClipDim3D", clip},
    {"PMICreateClipLinDotDim3D", clipLinDot},
    {"PMICreateArcDim3D", arc},
    {"PMICreateClipArcDim3D", clipArc},
    {"PMICreateAngleDim", angle},
    {"PMICreateAngleDim3D", angle3d},
    {"PMISetEnvelope", framedNote},
};

} // namespace

std::vector<AnnotationKind> annotationKinds() { return {std::begin(kKinds), std::end(kKinds)}; }

Ank_Ellipse quarterCircle(float radius) {
    Ank_Ellipse circle;
    circle.SetRadius(radius, radius);
    circle.SetCoordiantePnt({radius, 0, 0}, {0, radius, 0});
    return circle;
}

void buildArcLength(Ank_PMI& pmi, Ank_Ellipse& circle, double radius) {
    Part& p = part();
    _ank_locate* const locate = p.placedAt(1.2 * radius, 0.9 * radius);
    PMICreateArcDim3D(nullptr, &circle, locate, kHeight, &pmi, &p.status, p.view, &p.edge,
                      &p.slope);
}
