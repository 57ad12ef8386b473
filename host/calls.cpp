#include "calls.h"

#include <algorithm>
#include <map>

#include "jsontext.h"

namespace host {
namespace {

using nlohmann::ordered_json;

constexpr int kKindCode = 900001;
/// A status that no call writes, so that one that is left alone can be told from one that is set.
constexpr int kUntouched = -1;

ordered_json toJson(const _ank_locate& locate) {
    return {{"point", numbers(locate.point)}, {"viewMatrix", numbers(locate.viewMatrix)}};
}

ordered_json toJson(const Ank_Line& line) {
    return {{"start", numbers(line.GetStartPoint())}, {"end", numbers(line.GetEndPoint())}};
}

/// What most calls take besides the geometry. Read in one order, so that the first mistake of a
/// scene is the one reported.
struct Placement {
    _ank_locate* locate;
    double height;
    double* view;
    int status;
};

Placement readPlacement(Arguments& arguments) {
    Placement placement{};
    placement.locate = arguments.locate();
    placement.height = arguments.number("height");
    placement.view = arguments.view();
    placement.status = arguments.integer("status", kUntouched);
    return placement;
}

void keep(const Placement& placement, HandedBack& result) {
    result.values["status"] = placement.status;
    result.values["locate"] = toJson(*placement.locate);
}

// Distances ---------------------------------------------------------------------------------------

template <auto create> void measured(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    double points[6][3];
    double* place = points[0];
    for (const Vec3& p : in.points("points", 6))
        place = std::copy(p.begin(), p.end(), place);
    Vec3 text = in.point("text");
    const double height = in.number("height");
    int status = in.integer("status", kUntouched);
    create(points, text.data(), height, &out.pmi, &status, nullptr);
    result.values["status"] = status;
}

void update(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    Vec3 first = in.point("first");
    Vec3 second = in.point("second");
    int status = in.integer("status", kUntouched);
    PMIUpdateDimesion(&out.pmi, first.data(), second.data(), nullptr, &status);
    result.values["status"] = status;
}

// Linear dimensions -------------------------------------------------------------------------------

void edgeToEdge(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    Ank_Line* edge1 = in.line("edge1");
    Ank_Line* edge2 = in.line("edge2");
    Placement at = readPlacement(in);
    PMICreateLinDistDim3D(edge1, edge2, at.locate, at.height, &out.pmi, &at.status, at.view,
                          nullptr);
    keep(at, result);
}

void pointToEdge(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    Ank_Line* edge = in.line("edge");
    Ank_CurveEntity* point = in.edgeOrPoint("point");
    Placement at = readPlacement(in);
    PMICreateLinDotDim3D(edge, point, at.locate, at.height, &out.pmi, &at.status, at.view);
    keep(at, result);
}

void pointToPoint(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    Ank_Line* line1 = in.line("line1");
    Ank_Line* line2 = in.line("line2");
    const double height = in.number("height");
    double* view = in.view();
    int status = in.integer("status", kUntouched);
    PMICreateDotDistDim3D(line1, line2, height, &out.pmi, &status, view);
    result.values["status"] = status;
}

void clippedDistance(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    Vec3 normal = in.direction("normal");
    Vec3 a = in.point("pointA");
    Vec3 b = in.point("pointB");
    Placement at = readPlacement(in);
    PMICreateClipDim3D(normal.data(), a.data(), b.data(), at.locate, at.height, &out.pmi,
                       &at.status, at.view);
    keep(at, result);
}

/// A section plane, as the clipped calls take it.
struct Section {
    Vec3 normal;
    Vec3 origin;
    Vec3 xPoint;
};

Section readSection(Arguments& in) {
    Section section{};
    section.normal = in.direction("normal");
    section.origin = in.point("origin");
    section.xPoint = in.point("xPoint");
    return section;
}

void clippedPointToEdge(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    Section cut = readSection(in);
    Ank_Line* edge = in.line("edge");
    Ank_CurveEntity* point = in.edgeOrPoint("point");
    Placement at = readPlacement(in);
    PMICreateClipLinDotDim3D(cut.normal.data(), cut.origin.data(), cut.xPoint.data(), edge, point,
                             at.locate, at.height, &out.pmi, &at.status, at.view);
    keep(at, result);
}

void parallel(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    int kindCode = in.integer("kindCode", kKindCode);
    Ank_Line* reference = in.line("reference");
    Ank_Line* edge = in.line("edge");
    Placement at = readPlacement(in);
    PMICreateParallelDim3D(&kindCode, nullptr, reference, edge, nullptr, at.locate, at.height,
                           &out.pmi, &at.status, at.view);
    keep(at, result);
}

// Circles -----------------------------------------------------------------------------------------

template <auto create> void circle(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    int kindCode = in.integer("kindCode", kKindCode);
    Ank_Ellipse* measured = in.arc("circle");
    Placement at = readPlacement(in);
    create(&kindCode, measured, at.locate, nullptr, at.height, &out.pmi, &at.status, at.view);
    keep(at, result);
}

/// The two lines that orient an arc's sweep; a straight edge needs none.
std::array<Ank_Line*, 2> readSweepLines(Arguments& in, const Ank_CurveEntity& curve) {
    if (curve.GetCurveType() == ANK_CURVE_ARC)
        return {in.line("line1"), in.line("line2")};
    return {in.optionalLine("line1"), in.optionalLine("line2")};
}

void arcLength(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    Ank_CurveEntity* curve = in.lineOrArc("curve");
    Placement at = readPlacement(in);
    const auto lines = readSweepLines(in, *curve);
    PMICreateArcDim3D(nullptr, curve, at.locate, at.height, &out.pmi, &at.status, at.view, lines[0],
                      lines[1]);
    keep(at, result);
}

void clippedArcLength(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    Section cut = readSection(in);
    Ank_CurveEntity* curve = in.lineOrArc("curve");
    Placement at = readPlacement(in);
    const auto lines = readSweepLines(in, *curve);
    PMICreateClipArcDim3D(nullptr, cut.normal.data(), cut.origin.data(), cut.xPoint.data(), curve,
                          at.locate, at.height, &out.pmi, &at.status, at.view, lines[0], lines[1]);
    keep(at, result);
}

// Angles ------------------------------------------------------------------------------------------

void angle(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    int mode = in.integer("angleMode", 0);
    Ank_Line* edge1 = in.line("edge1");
    Ank_Line* edge2 = in.line("edge2");
    Placement at = readPlacement(in);
    int count = kUntouched;
    double ends[4][3] = {};
    PMICreateAngleDim(&mode, edge1, edge2, at.locate, at.height, &out.pmi, &at.status, count, ends,
                      at.view);
    keep(at, result);
    result.values["specialLineCount"] = count;
    result.values["specialLines"] = ordered_json::array();
    for (const auto& end : ends)
        result.values["specialLines"].push_back(numbers(end));
    const auto pointAt = [&ends](int i) { return Vec3{ends[i][0], ends[i][1], ends[i][2]}; };
    for (int i = 0; i < std::min(count, 2); ++i)
        out.callerLines.push_back({pointAt(2 * i), pointAt(2 * i + 1)});
}

_ank_element readElement(Arguments& in, const std::string& edge, const std::string& pick) {
    _ank_element element{};
    element.line = in.line(edge);
    const Vec3 picked = in.point(pick);
    std::copy(picked.begin(), picked.end(), element.pickPoint);
    return element;
}

void angleOfPicks(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    int mode = in.integer("angleMode", 0);
    _ank_element element1 = readElement(in, "edge1", "pick1");
    _ank_element element2 = readElement(in, "edge2", "pick2");
    Placement at = readPlacement(in);
    int flag1 = kUntouched;
    int flag2 = kUntouched;
    PMICreateAngleDim3D(&mode, &flag1, &flag2, &element1, &element2, at.locate, nullptr, nullptr,
                        at.height, &out.pmi, &at.status, at.view);
    keep(at, result);
    result.values["flag1"] = flag1;
    result.values["flag2"] = flag2;
    result.values["edge1"] = toJson(*element1.line);
    result.values["pick1"] = numbers(element1.pickPoint);
    result.values["edge2"] = toJson(*element2.line);
    result.values["pick2"] = numbers(element2.pickPoint);
}

// Notes and frames --------------------------------------------------------------------------------

void note(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    std::vector<PMITextLine> lines = in.textLines("lines");
    const bool withLeader = in.boolean("leader", false);
    Vec3 text = in.point("text");
    Vec3 target = withLeader ? in.point("target") : text;
    std::wstring extraLine = in.text("extraLine");
    const double height = in.number("height");
    int status = in.integer("status", kUntouched);
    PMICreateNote3D(lines, target.data(), text.data(), 0, withLeader, std::move(extraLine), height,
                    &out.pmi, &status);
    result.values["status"] = status;
}

void setEnvelope(Arguments& in, BuiltAnnotation& out, HandedBack&) {
    const int mode = in.integer("mode", 1);
    const bool apply = in.boolean("apply", true);
    const bool stub = in.boolean("stub", false);
    const bool withEnvelope = in.boolean("withEnvelope", true);
    Envelope envelope{};
    envelope.frameFlag = in.boolean("frame", true);
    envelope.backgroundColour = in.colour("backgroundColour");
    envelope.frameColour = in.colour("frameColour");
    PMISetEnvelope(mode, apply, stub, withEnvelope, envelope, &out.pmi);
}

void fillEnvelope(Arguments& in, BuiltAnnotation& out, HandedBack& result) {
    const bool frame = in.boolean("frame", true);
    unsigned long background = in.colour("backgroundColour");
    unsigned long frameColour = in.colour("frameColour");
    CDimSymUitity::FillEnvelope(&out.pmi, frame, background, frameColour);
    result.values["backgroundColour"] = background;
    result.values["frameColour"] = frameColour;
}

} // namespace

const CallFunction* findCall(const std::string& name) {
    static const std::map<std::string, CallFunction> calls = {
        {"PMICreateAxToAx", measured<PMICreateAxToAx>},
        {"PMICreateCntToCnt", measured<PMICreateCntToCnt>},
        {"PMICreatePLNTOPLN", measured<PMICreatePLNTOPLN>},
        {"PMICreatePntToFace", measured<PMICreatePntToFace>},
        {"PMIUpdateDimesion", update},
        {"PMICreateLinDistDim3D", edgeToEdge},
        {"PMICreateLinDotDim3D", pointToEdge},
        {"PMICreateDotDistDim3D", pointToPoint},
        {"PMICreateClipDim3D", clippedDistance},
        {"PMICreateClipLinDotDim3D", clippedPointToEdge},
        {"PMICreateParallelDim3D", parallel},
        {"PMICreateArcDim3D", arcLength},
        {"PMICreateClipArcDim3D", clippedArcLength},
        {"PMICreateDiameterDim3D", circle<PMICreateDiameterDim3D>},
        {"PMICreateRadiusDim3D", circle<PMICreateRadiusDim3D>},
        {"PMICreateAngleDim", angle},
        {"PMICreateAngleDim3D", angleOfPicks},
        {"PMICreateNote3D", note},
        {"PMISetEnvelope", setEnvelope},
        {"FillEnvelope", fillEnvelope},
    };
    const auto found = calls.find(name);
    return found == calls.end() ? nullptr : &found->second;
}

} // namespace host
