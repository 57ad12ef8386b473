#include "support/calls.h"

#include <array>
#include <bit>
#include <cfloat>
#include <limits>

#include "support/annotation.h"
#include "support/members.h"

namespace dorvale::test {

namespace {

using Dim = Members;

/// Where a function puts an object that belongs to the caller afterwards.
template <typename Owner> class Out {
public:
    explicit Out(Owner& owner) : owner_(owner) {}
    Out(const Out&) = delete;
    Out& operator=(const Out&) = delete;
    ~Out() { owner_.reset(object_); }
    operator typename Owner::pointer *() { return &object_; }

private:
    Owner& owner_;
    typename Owner::pointer object_ = nullptr;
};

// One line a call: what is called, with which of the arguments `a`.
// NOLINTBEGIN(cppcoreguidelines-macro-usage)
#define RUN(expression) [](Arguments& a) { expression; }
#define CALL(function, arguments)                                                                  \
    { #function, RUN(function arguments) }
// NOLINTEND(cppcoreguidelines-macro-usage)

void note(Arguments& a) {
    PMICreateNote3D(a.noteLines, a.place, a.text, 0, a.flag(0), std::move(a.extraLine), a.height,
                    &a.pmi, &a.status);
}

void angle(Arguments& a) {
    PMICreateAngleDim(&a.mode, a.line(0), a.line(1), &a.locate, a.height, &a.pmi, &a.status,
                      a.count, a.specialLines, a.view());
}

constexpr Call kCalls[] = {
    CALL(PMICreateAxToAx, (a.points, a.text, a.height, &a.pmi, &a.status, nullptr)),
    CALL(PMICreateCntToCnt, (a.points, a.text, a.height, &a.pmi, &a.status, nullptr)),
    CALL(PMICreatePLNTOPLN, (a.points, a.text, a.height, &a.pmi, &a.status, nullptr)),
    CALL(PMICreatePntToFace, (a.points, a.text, a.height, &a.pmi, &a.status, nullptr)),
    {"PMIUpdateDimesion", RUN(PMIUpdateDimesion(&a.pmi, a.place, a.text, nullptr, &a.status)), 0,
     angle},
    CALL(PMICreateLinDistDim3D, (a.curve(0, a.lines[0]), a.curve(1, a.lines[1]), &a.locate,
                                 a.height, &a.pmi, &a.status, a.view(), nullptr)),
    CALL(PMICreateLinDotDim3D, (a.curve(0, a.lines[0]), a.curve(1, a.arc), &a.locate, a.height,
                                &a.pmi, &a.status, a.view())),
    CALL(PMICreateDotDistDim3D, (a.line(0), a.line(1), a.height, &a.pmi, &a.status, a.view())),
    CALL(PMICreateClipDim3D,
         (a.sectionNormal, a.origin, a.xPoint, &a.locate, a.height, &a.pmi, &a.status, a.view())),
    CALL(PMICreateClipLinDotDim3D,
         (a.sectionNormal, a.origin, a.xPoint, a.curve(0, a.lines[0]), a.curve(1, a.polyline),
          &a.locate, a.height, &a.pmi, &a.status, a.view())),
    CALL(PMICreateParallelDim3D,
         (&a.kindCode, nullptr, a.curve(0, a.lines[0]), a.curve(1, a.lines[1]), nullptr, &a.locate,
          a.height, &a.pmi, &a.status, a.view())),
    CALL(PMICreateArcDim3D, (nullptr, a.curve(0, a.arc), &a.locate, a.height, &a.pmi, &a.status,
                             a.view(), a.line(0), a.line(1))),
    CALL(PMICreateClipArcDim3D,
         (nullptr, a.sectionNormal, a.origin, a.xPoint, a.curve(0, a.arc), &a.locate, a.height,
          &a.pmi, &a.status, a.view(), a.line(0), a.line(1))),
    CALL(PMICreateDiameterDim3D, (&a.kindCode, a.curve(0, a.arc), &a.locate, nullptr, a.height,
                                  &a.pmi, &a.status, a.view())),
    CALL(PMICreateRadiusDim3D, (&a.kindCode, a.curve(0, a.arc), &a.locate, nullptr, a.height,
                                &a.pmi, &a.status, a.view())),
    {"PMICreateAngleDim", angle},
    CALL(PMICreateAngleDim3D, (&a.mode, &a.count, &a.code, &a.elements[0], &a.elements[1],
                               &a.locate, nullptr, nullptr, a.height, &a.pmi, &a.status, a.view())),
    {"PMICreateNote3D", note},
    {"PMISetEnvelope",
     RUN(PMISetEnvelope(a.mode, a.flag(0), a.flag(1), a.flag(2), a.envelope, &a.pmi)), 0, note},
    {"CnvViewLocate", RUN(a.code = CnvViewLocate(&a.locate, a.origin, a.axes[0], a.axes[1],
                                                 a.tolerances, &a.locate))},
    {"PMI3DPlnDef",
     RUN(a.code = PMI3DPlnDef(a.planeKind, a.curve(0, a.lines[0]), a.curve(1, a.lines[1]), nullptr,
                              a.tolerances, a.result, a.result + 3, a.result + 6, a.view()))},
    {"Project3DTo2D",
     RUN(a.curveOut.reset(CArithmeticOfPMI::Project3DTo2D(a.curve(0, a.arc), a.result)))},
    {"Project2DTo3D",
     RUN(a.code = CArithmeticOfPMI::Project2DTo3D(a.shape, a.viewMatrix, a.pointsOut))},

    {"ValToStr", RUN(a.code = Dim::ValToStr(a.value, &a.count, Out(a.textOut))), -2},
    {"AngValToStr", RUN(a.code = Dim::AngValToStr(a.value, &a.count, Out(a.textOut)))},
    {"ArcValToStr",
     RUN(a.code =
             Dim::ArcValToStr(a.center, a.radii[0], a.arcEnds, a.normal, a.result, Out(a.textOut))),
     -920},
    {"SeStrCre", RUN(a.code = Dim::SeStrCre(a.value, a.format, Out(a.textOut))), -976},
    {"SeStrdec", RUN(a.buffer[0] = '\0'; Dim::SeStrdec(a.angle, a.format[4], a.buffer))},
    {"SeStrfrc", RUN(a.buffer[0] = '\0'; Dim::SeStrfrc(a.angle, a.format[5], a.flag(0), a.buffer))},
    {"SeStritoa", RUN(Dim::SeStritoa(a.kindCode, a.buffer))},

    {"FillLeaderData",
     RUN(a.code = Dim::FillLeaderData(a.shape, a.places[2], a.leaders, a.flag(0), a.flag(1)))},
    {"FillLeaderData_Type",
     RUN(a.code = Dim::FillLeaderData(ANK_TERM_ARROW, a.shape, a.places[2], a.leaders, a.flag(0)))},
    {"FillLeaderData_Arc",
     RUN(a.code = Dim::FillLeaderData(a.places[0], a.places[1], a.places[3], a.number, a.leaders,
                                      a.flag(0) ? a.normal : nullptr))},
    {"SetTerminator", RUN(std::vector leaders = a.pmi.GetLeaders(); Dim::SetTerminator(leaders)), 0,
     angle},
    {"FillExlineData", RUN(Dim::FillExlineData(a.shape, a.exLines, a.flag(0)))},
    {"FillExlineData_Type",
     RUN(Dim::FillExlineData(a.shape, a.exLines, ANK_CURVE_DISP_SPECIAL_LINE, a.flag(0)))},
    {"FillSpecLinData", RUN(a.lineOut.reset(Dim::FillSpecLinData(a.shape)))},
    {"FillSpecLinData_Arc", RUN(a.code = Dim::FillSpecLinData(a.places[0], a.places[1], a.places[3],
                                                              a.number, Out(a.lineOut)))},
    {"FillTextData",
     RUN(Dim::FillTextData(a.textLines, a.places[0], a.directions, a.height, Out(a.blockOut)))},
    {"FillTextData_Places",
     RUN(Dim::FillTextData(a.textLines, &a.places[0], a.directions, a.height, Out(a.blockOut)))},
    {"ComputeTxtFrame",
     RUN(a.code = Dim::ComputeTxtFrame(std::move(a.textLines), a.charSize, a.places[0],
                                       a.directions, a.result, a.result + 3))},
    {"FillEnvelope",
     RUN(Dim::FillEnvelope(&a.pmi, a.flag(0), a.frameColours[0], a.frameColours[1])), 0, note},
    {"GetNoraml", RUN(Dim::GetNoraml(a.points[0], a.points[1], a.points[5], a.result))},
    {"GetNoraml_Floats",
     RUN(a.directions[0] = Dim::GetNoraml(a.places[0], a.places[1], a.places[5], a.directions[0],
                                          a.directions[0], a.directions[1]))},
    {"ComputeVecByAngle",
     RUN(a.places[0] = Dim::ComputeVecByAngle(a.directions[0], a.directions[1], a.number,
                                              a.places[1], a.places[2], a.number))},
    {"ConvertToAnkCurve",
     RUN(Dim::ConvertToAnkCurve(a.shape, static_cast<AnkCurveTypeEnum>(a.curveType & 3),
                                Out(a.curveOut)))},
    {"ConvertToAnkCurve_Arc",
     RUN(Dim::ConvertToAnkCurve(a.places[0], a.places[1], a.places[3], a.number, Out(a.curveOut),
                                a.flag(0) ? a.normal : nullptr))},
    {"polyLinFun", RUN(Dim::polyLinFun(a.shape, Out(a.curveOut)))},
};

ANK_PNT32 pointAt(const double* p) { return Vec(p).point32(); }
ANK_DIR32 directionAt(const double* d) { return Vec(d).direction32(); }

template <typename T> std::span<const T> all(const std::vector<T>& values) { return values; }
template <typename C> std::span<const C> all(const std::basic_string<C>& text) { return text; }
template <typename T> std::span<const T> all(const T& value) { return {&value, 1}; }

template <typename... T> void addBits(Bits& bits, const T&... values) {
    const auto add = [&bits](std::span<const std::byte> bytes) {
        bits.insert(bits.end(), bytes.begin(), bytes.end());
    };
    (add(std::as_bytes(all(values))), ...);
}

/// Replaces one element of a record that holds nothing but such.
template <typename T, typename Element> void replace(T& record, std::size_t i, Element to) {
    auto elements = std::bit_cast<std::array<Element, sizeof record / sizeof to>>(record);
    elements.at(i) = to;
    record = std::bit_cast<T>(elements);
}

} // namespace

std::span<const Call> calls() { return kCalls; }

void run(std::string_view call, Arguments& arguments) {
    std::ranges::find(kCalls, call, &Call::name)->run(arguments);
}

Bits resultOf(const Call& call, const Record& record) {
    Arguments arguments(record);
    call.prepare(arguments);
    call.run(arguments);
    return arguments.bits();
}

void Record::setNumber(std::size_t i, double to) { replace<Numbers>(*this, i, to); }
void Record::setInteger(std::size_t i, int to) { replace<Integers>(*this, i, to); }

std::span<const Record> records() {
    static const auto all = [] {
        std::array<Record, 5> made;
        auto& [plain, parallel, near, far, zeros] = made;
        set(parallel.lineEnds[1], {10, 45, 0}, {100, 45, 0});
        parallel.curves[0] = 2;
        parallel.curveType = ANK_CURVE_LINE;
        set(near.place, {4, 2, 12});
        set(near.center, {5, 50, 0});
        set(near.arcEnds, {35, 50, 0}, {5, 80, 0});
        set(far.place, {300, 150, 12});
        set(far.arcEnds, {50, 80, 0}, {80, 50, 0});
        far.mode = 0;
        far.noView = 1;
        near.pointsFrom = far.pointsFrom = 4;
        for (std::size_t i = 0; i < kNumbers; ++i) {
            zeros.setNumber(i, 0.0);
        }
        return made;
    }();
    return all;
}

std::span<const double> hostileNumbers() {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    static constexpr double numbers[] = {
        nan,   infinity, 1e308, DBL_MIN,   DBL_TRUE_MIN, 0.0,           2147483648.0, 1e39, 1e-46,
        1e-11, 1.0,      -nan,  -infinity, -1e308,       -DBL_TRUE_MIN, -0.0,         -1.0};
    return numbers;
}

Arguments::Arguments(const Record& record)
    : Record(record),
      number(static_cast<float>(radii[0])), noteLines{{mode, record.line}, {0, L""}, {0, L"\\A 3"}},
      textLines{record.line, L"", L"\\A 3"},
      extraLine(record.line), envelope{flag(3), static_cast<std::uint32_t>(colours[0]),
                                       static_cast<std::uint32_t>(colours[1])},
      frameColours{envelope.backgroundColour, envelope.frameColour} {
    for (int i = 0; i < 2; ++i) {
        lines[i].SetStartPoint(pointAt(lineEnds[i][0]));
        lines[i].SetEndPoint(pointAt(lineEnds[i][1]));
        elements[i].line = line(i);
        std::copy_n(picks[i], 3, elements[i].pickPoint);
        directions[i] = directionAt(axes[i]);
    }
    arc.SetCenterPoint(pointAt(center));
    arc.SetNormal(directionAt(normal));
    arc.SetRadius(number, static_cast<float>(radii[1]));
    arc.SetCoordiantePnt(pointAt(arcEnds[0]), pointAt(arcEnds[1]));
    arc.SetParameter(static_cast<float>(angle), static_cast<float>(value));
    std::transform(std::begin(points), std::end(points), places, pointAt);
    shape.assign(places + static_cast<unsigned>(pointsFrom) % 7, std::end(places));
    polyline.SetPoints(shape);
    std::copy_n(place, 3, locate.point);
    std::copy_n(placeView, 16, locate.viewMatrix);
}

Ank_CurveEntity* Arguments::curve(int i, Ank_CurveEntity& fitting) {
    Ank_CurveEntity* const choices[] = {&fitting, &arc, &lines[i], &polyline};
    const auto choice = static_cast<unsigned>(curves[i]);
    return choice < std::size(choices) ? choices[choice] : nullptr;
}

void Arguments::gather() {
    if (curveOut) {
        leaders.push_back(new Ank_Leader);
        leaders.back()->SetCurve(curveOut.release());
    }
    built.SetLeaders(std::exchange(leaders, {}));
    built.SetExLines(std::exchange(exLines, {}));
    if (lineOut) {
        built.AddSpecialLine(lineOut.release());
    }
    if (blockOut) {
        built.AddComText(blockOut.release());
    }
}

Bits Arguments::bits() {
    gather();
    Bits all;
    for (const Annotation& part : {test::read(pmi), test::read(built), test::read(lines[1])}) {
        for (const Field& field : part.fields) {
            addBits(all, field.name, field.text, field.numbers);
        }
    }
    addBits(all, code, status, count, result, specialLines, buffer, normal, text, place);
    addBits(all, places, directions, frameColours, locate, pointsOut);
    addBits(all, std::string(textOut ? textOut.get() : ""));
    return all;
}

} // namespace dorvale::test
