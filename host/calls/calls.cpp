#include "host/calls/calls.h"

#include <algorithm>

#include "host/calls/measure.h"

namespace host {
namespace {

constexpr int kKindCode = 900001;

void keep(const Placement& placement, CallResult& result) {
    result.status = placement.status;
    result.locate = placement.locate;
}

Measured asLength(double value) { return {Quantity::Length, value}; }
Measured asAngle(double degrees) { return {Quantity::Angle, degrees}; }

Vec3 fromArray(const double (&p)[3]) { return {p[0], p[1], p[2]}; }

// Distances ---------------------------------------------------------------------------------------

/// @tparam from, to which of the six points are measured
template <auto create, std::size_t from, std::size_t to>
void distance(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    std::array<Vec3, 6> given{};
    in.points("points", given);
    Vec3 text = in.point("text");
    const double height = in.number("height");
    int status = in.status();
    double points[6][3];
    for (std::size_t i = 0; i < given.size(); ++i) {
        std::copy(given[i].begin(), given[i].end(), points[i]);
    }
    create(points, text.data(), height, &pmi, &status, nullptr);
    result.status = status;
    result.measured = asLength(distanceOf(given[from], given[to]));
}

void update(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    Vec3 first = in.point("first");
    Vec3 second = in.point("second");
    int status = in.status();
    PMIUpdateDimesion(&pmi, first.data(), second.data(), nullptr, &status);
    result.status = status;
    result.measured = asLength(distanceOf(first, second));
}

// Linear dimensions -------------------------------------------------------------------------------

void edgeToEdge(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    const Curve edge1 = in.curve("edge1", kLine);
    const Curve edge2 = in.curve("edge2", kLine);
    Placement at = in.placement();
    PMICreateLinDistDim3D(edge1.entity, edge2.entity, &at.locate, at.height, &pmi, &at.status,
                          at.viewMatrix(), nullptr);
    keep(at, result);
    result.measured =
        asLength(distanceOfEdges(lineOf(edge1), lineOf(edge2), Frame::of(pmi), at.locate.point));
    result.centersText = true;
}

void pointToEdge(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    const Curve edge = in.curve("edge", kLine);
    const Curve point = in.curve("point", kLine | kArc | kPoint);
    Placement at = in.placement();
    PMICreateLinDotDim3D(edge.entity, point.entity, &at.locate, at.height, &pmi, &at.status,
                         at.viewMatrix());
    keep(at, result);
    result.measured = asLength(distanceToEdge(lineOf(edge), pointOf(point), Frame::of(pmi)));
    result.centersText = true;
}

void pointToPoint(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    const Curve line1 = in.curve("line1", kLine);
    const Curve line2 = in.curve("line2", kLine);
    const double height = in.number("height");
    CallView view = in.view();
    int status = in.status();
    PMICreateDotDistDim3D(line1.line(), line2.line(), height, &pmi, &status, view.pointer());
    result.status = status;
    result.measured = asLength(distanceOf(lineOf(line1).start, lineOf(line2).start));
    result.centersText = true;
}

void clippedDistance(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    Vec3 normal = in.direction("normal");
    Vec3 a = in.point("pointA");
    Vec3 b = in.point("pointB");
    Placement at = in.placement();
    PMICreateClipDim3D(normal.data(), a.data(), b.data(), &at.locate, at.height, &pmi, &at.status,
                       at.viewMatrix());
    keep(at, result);
    const Frame frame = Frame::ofSection(normal, a, b);
    result.measured = asLength(length(frame.flat(b) - frame.flat(a)));
    result.centersText = true;
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

void clippedPointToEdge(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    Section cut = readSection(in);
    const Curve edge = in.curve("edge", kLine);
    const Curve point = in.curve("point", kLine | kArc | kPoint);
    Placement at = in.placement();
    PMICreateClipLinDotDim3D(cut.normal.data(), cut.origin.data(), cut.xPoint.data(), edge.entity,
                             point.entity, &at.locate, at.height, &pmi, &at.status,
                             at.viewMatrix());
    keep(at, result);
    const Frame frame = Frame::ofSection(cut.normal, cut.origin, cut.xPoint);
    result.measured = asLength(distanceToEdge(lineOf(edge), pointOf(point), frame));
    result.centersText = true;
}

// Lengths -----------------------------------------------------------------------------------------

void parallel(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    int kindCode = in.integer("kindCode", kKindCode);
    const Curve reference = in.curve("reference", kLine);
    const Curve edge = in.curve("edge", kLine);
    Placement at = in.placement();
    PMICreateParallelDim3D(&kindCode, nullptr, reference.entity, edge.entity, nullptr, &at.locate,
                           at.height, &pmi, &at.status, at.viewMatrix());
    keep(at, result);
    if (kindCode == kKindCode) {
        const LineEdge measured = lineOf(edge);
        result.measured = asLength(distanceOf(measured.start, measured.end));
    }
}

/// The curve whose length is measured, and the two lines that orient an arc's sweep; a straight
/// edge needs none.
struct MeasuredCurve {
    Curve curve;
    Placement at;
    Curve line1;
    Curve line2;
};

MeasuredCurve readMeasuredCurve(Arguments& in) {
    MeasuredCurve read;
    read.curve = in.curve("curve", kLine | kArc);
    read.at = in.placement();
    const bool isArc = read.curve.shape && std::holds_alternative<ArcEdge>(*read.curve.shape);
    read.line1 = in.curve("line1", kLine, {isArc, "curve"});
    read.line2 = in.curve("line2", kLine, {isArc, "curve"});
    return read;
}

double lengthOf(const MeasuredCurve& read) {
    const bool isLine = read.curve.line() != nullptr;
    const LineEdge edge = lineOf(read.curve);
    return isLine ? distanceOf(edge.start, edge.end)
                  : lengthOfArc(arcOf(read.curve), read.line1, read.line2);
}

void arcLength(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    MeasuredCurve read = readMeasuredCurve(in);
    PMICreateArcDim3D(nullptr, read.curve.entity, &read.at.locate, read.at.height, &pmi,
                      &read.at.status, read.at.viewMatrix(), read.line1.line(), read.line2.line());
    keep(read.at, result);
    result.measured = asLength(lengthOf(read));
}

void clippedArcLength(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    Section cut = readSection(in);
    MeasuredCurve read = readMeasuredCurve(in);
    PMICreateClipArcDim3D(nullptr, cut.normal.data(), cut.origin.data(), cut.xPoint.data(),
                          read.curve.entity, &read.at.locate, read.at.height, &pmi, &read.at.status,
                          read.at.viewMatrix(), read.line1.line(), read.line2.line());
    keep(read.at, result);
    result.measured = asLength(lengthOf(read));
}

// Circles -----------------------------------------------------------------------------------------

/// @tparam factor what is shown, by the radius
template <auto create, int factor> void circle(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    int kindCode = in.integer("kindCode", kKindCode);
    const Curve measured = in.curve("circle", kArc);
    Placement at = in.placement();
    create(&kindCode, measured.entity, &at.locate, nullptr, at.height, &pmi, &at.status,
           at.viewMatrix());
    keep(at, result);
    if (kindCode == kKindCode) {
        result.measured = asLength(factor * arcOf(measured).radius);
    }
}

// Angles ------------------------------------------------------------------------------------------

void angleOnTextSide(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    int mode = in.integer("angleMode", 0);
    const Curve edge1 = in.curve("edge1", kLine);
    const Curve edge2 = in.curve("edge2", kLine);
    Placement at = in.placement();
    int count = kUntouched;
    double ends[4][3] = {};
    PMICreateAngleDim(&mode, edge1.line(), edge2.line(), &at.locate, at.height, &pmi, &at.status,
                      count, ends, at.viewMatrix());
    keep(at, result);
    FourPoints points{};
    std::transform(std::begin(ends), std::end(ends), points.begin(), fromArray);
    for (std::size_t i = 0; static_cast<int>(i) < std::min(count, 2); ++i) {
        result.callerLines.push_back({points[2 * i], points[2 * i + 1]});
    }
    result.handBack("specialLineCount", count);
    result.handBack("specialLines", points);
    const double degrees =
        angleAtText(lineOf(edge1), lineOf(edge2), Frame::of(pmi), at.locate.point);
    result.measured = asAngle(shownAngle(degrees, mode));
}

_ank_element elementOf(const Curve& edge, const Vec3& pick) {
    return {edge.line(), {pick[0], pick[1], pick[2]}};
}

MovedLine movedLine(const _ank_element& element) {
    if (element.line == nullptr) {
        return {};
    }
    return {element.line->GetStartPoint(), element.line->GetEndPoint()};
}

void angleOnPickedSides(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    int mode = in.integer("angleMode", 0);
    const Curve edge1 = in.curve("edge1", kLine);
    const Vec3 pick1 = in.point("pick1");
    const Curve edge2 = in.curve("edge2", kLine);
    const Vec3 pick2 = in.point("pick2");
    Placement at = in.placement();
    _ank_element element1 = elementOf(edge1, pick1);
    _ank_element element2 = elementOf(edge2, pick2);
    int flag1 = kUntouched;
    int flag2 = kUntouched;
    PMICreateAngleDim3D(&mode, &flag1, &flag2, &element1, &element2, &at.locate, nullptr, nullptr,
                        at.height, &pmi, &at.status, at.viewMatrix());
    keep(at, result);
    result.handBack("flag1", flag1);
    result.handBack("flag2", flag2);
    result.handBack("edge1", movedLine(element1));
    result.handBack("pick1", fromArray(element1.pickPoint));
    result.handBack("edge2", movedLine(element2));
    result.handBack("pick2", fromArray(element2.pickPoint));
    const double degrees = angleOfPicks(lineOf(edge1), pick1, lineOf(edge2), pick2, Frame::of(pmi));
    result.measured = asAngle(shownAngle(degrees, mode));
}

// Notes and frames --------------------------------------------------------------------------------

void note(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    std::vector<PMITextLine> lines = in.textLines("lines");
    const bool withLeader = in.boolean("leader", false);
    Vec3 text = in.point("text");
    Vec3 target = in.point("target", {withLeader, "leader"}).value_or(text);
    std::wstring extraLine = in.text("extraLine");
    const double height = in.number("height");
    int status = in.status();
    PMICreateNote3D(lines, target.data(), text.data(), 0, withLeader, std::move(extraLine), height,
                    &pmi, &status);
    result.status = status;
}

void setEnvelope(Arguments& in, Ank_PMI& pmi, CallResult& /*result*/) {
    const int mode = in.integer("mode", 1);
    const bool apply = in.boolean("apply", true);
    const bool stub = in.boolean("stub", false);
    const bool withEnvelope = in.boolean("withEnvelope", true);
    Envelope envelope{};
    envelope.frameFlag = in.boolean("frame", true);
    envelope.backgroundColour = in.color("backgroundColour");
    envelope.frameColour = in.color("frameColour");
    PMISetEnvelope(mode, apply, stub, withEnvelope, envelope, &pmi);
}

void fillEnvelope(Arguments& in, Ank_PMI& pmi, CallResult& result) {
    const bool frame = in.boolean("frame", true);
    unsigned long background = in.color("backgroundColour");
    unsigned long frameColor = in.color("frameColour");
    CDimSymUitity::FillEnvelope(&pmi, frame, background, frameColor);
    result.handBack("backgroundColour", static_cast<std::uint32_t>(background));
    result.handBack("frameColour", static_cast<std::uint32_t>(frameColor));
}

// In the header's order; tests/catalogue.py compares it with the header.
constexpr Call kCalls[] = {
    {"PMICreateAxToAx", distance<PMICreateAxToAx, 2, 5>},
    {"PMICreateCntToCnt", distance<PMICreateCntToCnt, 0, 2>},
    {"PMICreatePLNTOPLN", distance<PMICreatePLNTOPLN, 2, 5>},
    {"PMICreatePntToFace", distance<PMICreatePntToFace, 2, 5>},
    {"PMIUpdateDimesion", update, true},
    {"PMICreateLinDistDim3D", edgeToEdge},
    {"PMICreateLinDotDim3D", pointToEdge},
    {"PMICreateDotDistDim3D", pointToPoint},
    {"PMICreateClipDim3D", clippedDistance},
    {"PMICreateClipLinDotDim3D", clippedPointToEdge},
    {"PMICreateParallelDim3D", parallel},
    {"PMICreateArcDim3D", arcLength},
    {"PMICreateClipArcDim3D", clippedArcLength},
    {"PMICreateDiameterDim3D", circle<PMICreateDiameterDim3D, 2>},
    {"PMICreateRadiusDim3D", circle<PMICreateRadiusDim3D, 1>},
    {"PMICreateAngleDim", angleOnTextSide},
    {"PMICreateAngleDim3D", angleOnPickedSides},
    {"PMICreateNote3D", note},
    {"PMISetEnvelope", setEnvelope, true},
    {"FillEnvelope", fillEnvelope, true},
};

} // namespace

std::span<const Call> calls() { return kCalls; }

const Call* findCall(std::string_view name) {
    const auto* const found = std::find_if(std::begin(kCalls), std::end(kCalls),
                                           [name](const Call& call) { return call.name == name; });
    return found == std::end(kCalls) ? nullptr : found;
}

} // namespace host
