#include "support/calls.h"

#include <array>
#include <bit>
#include <cfloat>
#include <limits>
#include <map>
#include <stdexcept>

#include "host/calls/description.h"
#include "host/calls/packed.h"
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
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage)
#define RUN(expression) [](Arguments& a) { expression; }

// The services and builders. The other calls stand in the host's table.
constexpr Call kBuilders[] = {
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
    {"BuToFract", RUN(a.code = Dim::BuToFract(&a.value, a.format, a.format, a.format))},
    {"CheckAngDim", RUN(a.code = Dim::CheckAngDim(a.angle, a.format, a.format))},

    {"FillLeaderData",
     RUN(a.code = Dim::FillLeaderData(a.shape, a.places[2], a.leaders, a.flag(0), a.flag(1)))},
    {"FillLeaderData_Type",
     RUN(a.code = Dim::FillLeaderData(ANK_TERM_ARROW, a.shape, a.places[2], a.leaders, a.flag(0)))},
    {"FillLeaderData_Arc",
     RUN(a.code = Dim::FillLeaderData(a.places[0], a.places[1], a.places[3], a.number, a.leaders,
                                      a.flag(0) ? a.normal : nullptr))},
    {"SetTerminator", RUN(std::vector leaders = a.pmi.GetLeaders(); Dim::SetTerminator(leaders)), 0,
     "PMICreateAngleDim"},
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

host::Vec3 vectorAt(const double* p) { return {p[0], p[1], p[2]}; }

host::LineEdge lineAt(const Arguments& a, std::size_t i) {
    return {vectorAt(a.lineEnds[i][0]), vectorAt(a.lineEnds[i][1])};
}

host::ArcEdge arcAt(const Arguments& a) {
    return {vectorAt(a.center), vectorAt(a.normal), a.radii[0], vectorAt(a.arcEnds[0]),
            vectorAt(a.arcEnds[1])};
}

/// The curve that a record has in the place of a member, as `Integers::curves` says.
std::optional<host::Shape> shapeOf(const Arguments& a, std::string_view call,
                                   std::string_view member) {
    const bool measuresSecond = call == "PMICreateParallelDim3D" && member == "edge";
    const std::size_t i = measuresSecond || member == "point" || member.ends_with('2') ? 1 : 0;
    const bool fitsArc = member == "circle" || member == "curve" || member == "point";
    switch (a.curves[i]) {
    case 0:
        return fitsArc ? std::optional<host::Shape>(arcAt(a)) : lineAt(a, i);
    case 1:
        return member.starts_with("line") ? std::optional<host::Shape>(lineAt(a, i)) : arcAt(a);
    case 2:
        return lineAt(a, i);
    case 3:
        return vectorAt(a.points[0]);
    default:
        return std::nullopt;
    }
}

/// What a record has for a point or a direction; its one direction for a name it does not know.
const double* pointOf(const Arguments& a, std::string_view member) {
    static const std::map<std::string_view, const double* (*)(const Arguments&)> points{
        {"text", [](const Arguments& of) { return of.text; }},
        {"first", [](const Arguments& of) { return of.place; }},
        {"second", [](const Arguments& of) { return of.text; }},
        {"target", [](const Arguments& of) { return of.place; }},
        {"locate", [](const Arguments& of) { return of.place; }},
        {"pointA", [](const Arguments& of) { return of.origin; }},
        {"pointB", [](const Arguments& of) { return of.xPoint; }},
        {"origin", [](const Arguments& of) { return of.origin; }},
        {"xPoint", [](const Arguments& of) { return of.xPoint; }},
        {"pick1", [](const Arguments& of) { return of.picks[0]; }},
        {"pick2", [](const Arguments& of) { return of.picks[1]; }},
        {"normal", [](const Arguments& of) { return of.sectionNormal; }},
    };
    const auto found = points.find(member);
    return found == points.end() ? a.sectionNormal : found->second(a);
}

/// What a record has for an integer, a boolean or a colour; its mode for a name it does not know.
int integerOf(const Arguments& a, std::string_view member) {
    static const std::map<std::string_view, int (*)(const Arguments&)> integers{
        {"status", [](const Arguments& of) { return of.status; }},
        {"kindCode", [](const Arguments& of) { return of.kindCode; }},
        {"leader", [](const Arguments& of) { return of.flags & 1; }},
        {"apply", [](const Arguments& of) { return of.flags & 1; }},
        {"stub", [](const Arguments& of) { return of.flags & 2; }},
        {"withEnvelope", [](const Arguments& of) { return of.flags & 4; }},
        {"frame", [](const Arguments& of) { return of.envelope.frameFlag ? 1 : 0; }},
        {"backgroundColour",
         [](const Arguments& of) { return std::bit_cast<int>(of.envelope.backgroundColour); }},
        {"frameColour",
         [](const Arguments& of) { return std::bit_cast<int>(of.envelope.frameColour); }},
    };
    const auto found = integers.find(member);
    return found == integers.end() ? a.mode : found->second(a);
}

/// The arguments as a row of the host.
host::Row rowOf(const host::Description& call, const Arguments& a) {
    host::Row row;
    for (const host::Member& member : call.members) {
        switch (member.kind) {
        case host::Kind::Number:
            row.numbers.push_back(a.height);
            break;
        case host::Kind::Integer:
        case host::Kind::Boolean:
        case host::Kind::Color:
            row.integers.push_back(integerOf(a, member.name));
            break;
        case host::Kind::Text:
            row.texts.push_back(a.extraLine);
            break;
        case host::Kind::TextLines:
            row.add(a.noteLines);
            break;
        case host::Kind::Point:
            if (!member.need.always()) {
                row.integers.push_back(1);
            }
            [[fallthrough]];
        case host::Kind::Direction:
            row.add(vectorAt(pointOf(a, member.name)));
            break;
        case host::Kind::Points:
            for (const double* p : a.points) {
                row.add(vectorAt(p));
            }
            break;
        case host::Kind::EdgeShape:
            row.add(shapeOf(a, call.call, member.name));
            break;
        case host::Kind::View:
            row.add(a.noView != 0 ? host::CallView{} : host::CallView{std::to_array(a.viewMatrix)});
            break;
        }
    }
    return row;
}

const host::Description& descriptionOf(const host::Call& entry) {
    static const auto all = [] {
        std::map<const host::Call*, host::Description> described;
        for (const host::Call& call : host::calls()) {
            described.emplace(&call, host::describe(call));
        }
        return described;
    }();
    return all.at(&entry);
}

void make(const host::Call& entry, Arguments& a) {
    const host::Row row = rowOf(descriptionOf(entry), a);
    host::Rows rows = row.rows();
    const host::Matrix sceneView = std::to_array(a.placeView);
    host::PackedArguments packed(rows, sceneView);
    a.handed = {};
    entry.make(packed, a.pmi, a.handed);
    a.status = a.handed.status.value_or(a.status);
    a.locate = a.handed.locate.value_or(a.locate);
}

} // namespace

Call::Call(const host::Call& entry)
    : name(entry.name), entry_(&entry), filledBy_(entry.changes ? "PMICreateNote3D" : nullptr) {}

void Call::run(Arguments& arguments) const {
    if (entry_ != nullptr) {
        make(*entry_, arguments);
    } else {
        builder_(arguments);
    }
}

void Call::prepare(Arguments& arguments) const {
    if (filledBy_ != nullptr) {
        test::run(filledBy_, arguments);
    }
}

std::span<const Call> calls() {
    static const auto all = [] {
        std::vector<Call> made(host::calls().begin(), host::calls().end());
        made.insert(made.end(), std::begin(kBuilders), std::end(kBuilders));
        return made;
    }();
    return all;
}

const Call* findCall(std::string_view name) {
    const auto found = std::ranges::find(calls(), name, &Call::name);
    return found == calls().end() ? nullptr : &*found;
}

void run(std::string_view name, Arguments& arguments) {
    const Call* call = findCall(name);
    if (call == nullptr) {
        throw std::invalid_argument("there is no call " + std::string(name));
    }
    call->run(arguments);
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
      extraLine(record.line), envelope{flag(3), static_cast<std::uint32_t>(colors[0]),
                                       static_cast<std::uint32_t>(colors[1])} {
    for (int i = 0; i < 2; ++i) {
        lines[i].SetStartPoint(pointAt(lineEnds[i][0]));
        lines[i].SetEndPoint(pointAt(lineEnds[i][1]));
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
    for (const Annotation& part : {test::read(pmi), test::read(built)}) {
        for (const Field& field : part.fields) {
            addBits(all, field.name, field.text, field.numbers);
        }
    }
    addBits(all, code, status, count, result, buffer, normal);
    addBits(all, places, directions, locate, pointsOut);
    for (const host::HandedBack& other : handed.others) {
        std::visit([&all](const auto& of) { addBits(all, of); }, other.value);
    }
    addBits(all, std::string(textOut ? textOut.get() : ""));
    return all;
}

} // namespace dorvale::test
