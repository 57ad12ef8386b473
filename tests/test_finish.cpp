// Finished annotations: arrow heads, text beside its line, labels, and text that reads from every
// side.
#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/drawing/draw.h"
#include "host/geometry/arcs.h"
#include "host/output/dump.h"
#include "host/scene/build.h"
#include "host/system/files.h"
#include "host/system/utf8.h"

namespace {

using host::Vec3;
using nlohmann::json;

using Built = std::unique_ptr<host::BuiltAnnotation>;

/// The annotations of a scene.
std::vector<Built> buildText(const std::string& text) {
    const host::Scene scene(text);
    std::vector<Built> all;
    for (std::size_t i = 0; i < scene.annotationCount(); ++i) {
        all.push_back(std::make_unique<host::BuiltAnnotation>());
        host::buildAnnotation(scene, i, *all.back());
    }
    return all;
}

std::vector<Built> build(const json& content) { return buildText(content.dump()); }

Built buildOne(json annotation, const json& finish) {
    annotation["finish"] = finish;
    return std::move(build({{"annotations", {annotation}}}).front());
}

/// One annotation of every kind: the examples of the scenes' description.
json everyKind() {
    const std::string page = host::readSceneFile(DORVALE_DOCS "/scene.md");
    const std::string opens = "```json\n";
    json kinds = json::array();
    for (std::size_t at = page.find(opens); at != std::string::npos; at = page.find(opens, at)) {
        at += opens.size();
        const auto example = json::parse(page.substr(at, page.find("```", at) - at));
        const bool isAnnotation = example.contains("call") || example.contains("calls");
        if (isAnnotation && !example.contains("finish")) {
            kinds.push_back(example);
        }
    }
    return kinds;
}

json example(const std::string& call) {
    for (const json& annotation : everyKind()) {
        const bool isList = annotation.contains("calls");
        if ((isList ? annotation["calls"][0] : annotation)["call"] == call) {
            return annotation;
        }
    }
    throw std::invalid_argument("no example of " + call);
}

json distanceOfEdges(double width, double x, double height) {
    const auto edge = [](double y) {
        return json{{"type", "line"}, {"start", {0, y, 0}}, {"end", {0, y + 1, 0}}};
    };
    json second = edge(0);
    second["start"][0] = second["end"][0] = width;
    return {{"call", "PMICreateLinDistDim3D"},
            {"edge1", edge(0)},
            {"edge2", second},
            {"locate", {x, 20, 0}},
            {"height", height}};
}

json diameter(double radius, const json& locate) {
    return {{"call", "PMICreateDiameterDim3D"},
            {"circle",
             {{"type", "arc"}, {"centre", {0, 0, 0}}, {"normal", {0, 0, 1}}, {"radius", radius}}},
            {"locate", locate},
            {"height", 5}};
}

struct Arrow {
    AnkTermTypeEnum type{};
    float size[2] = {};
    ANK_PNT32 tip;
    ANK_DIR32 direction;
};

std::vector<Arrow> arrowsOf(const Ank_PMI& pmi) {
    std::vector<Arrow> arrows;
    for (const Ank_Leader* leader : pmi.GetLeaders()) {
        Arrow a;
        leader->GetTerminator(a.type, a.size, a.tip, a.direction);
        if (a.type == ANK_TERM_ARROW) {
            arrows.push_back(a);
        }
    }
    return arrows;
}

std::vector<Ank_Text*> textsOf(const Ank_PMI& pmi) {
    std::vector<Ank_Text*> all;
    for (const Ank_ComText* block : pmi.GetComText()) {
        for (Ank_Text* text : block->GetTexts()) {
            all.push_back(text);
        }
    }
    return all;
}

double distanceOf(const ANK_PNT32& a, const ANK_PNT32& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

// Arrow heads -------------------------------------------------------------------------------------

TEST(FinishArrow, FitsTextLeaderAndTips) {
    const std::pair<json, double> cases[] = {
        {distanceOfEdges(60, 30, 5), 0.96 * 5}, // room enough
        {distanceOfEdges(6, 3, 5), 1.0},        // a third of half of 6
        {distanceOfEdges(60, 57, 5), 1.0},      // both as long as the shorter leader has room for
        {diameter(20, {12, 9, 0}), 0.96 * 5}, // 0.6 and 0.8 inside the circle: leaders of 5 and 35
        {diameter(1.5, {30, 0, 0}), 1.0},     // tips 3 apart
    };
    for (const auto& [annotation, length] : cases) {
        const Built built = buildOne(annotation, {{"arrow", "fit"}});
        for (const Arrow& arrow : arrowsOf(built->pmi)) {
            const bool isInside = annotation.dump().find("[12,9,0]") != std::string::npos;
            EXPECT_NEAR(arrow.size[0], isInside ? 5.0 / 3 : length, 1e-5) << annotation;
            EXPECT_NEAR(arrow.size[1], arrow.size[0] / 3, 1e-6);
        }
        EXPECT_EQ(arrowsOf(built->pmi).size(), 2U);
    }
}

/// On an arc the base of the head's axis lies on the arc as its tip does.
TEST(FinishArrow, FollowsTheChordOfAnArc) {
    for (const json& annotation : everyKind()) {
        for (const json& length : {json(2), json(7.5), json("fit")}) {
            const Built built = buildOne(annotation, {{"arrow", length}});
            for (const Ank_Leader* leader : built->pmi.GetLeaders()) {
                const auto* arc = dynamic_cast<const Ank_Ellipse*>(leader->GetAllCurve().front());
                Arrow a;
                leader->GetTerminator(a.type, a.size, a.tip, a.direction);
                if (arc == nullptr || a.type != ANK_TERM_ARROW) {
                    continue;
                }
                const ANK_PNT32 base{a.tip.x + a.size[0] * a.direction.x,
                                     a.tip.y + a.size[0] * a.direction.y, a.tip.z};
                ANK_PNT32 start;
                ANK_PNT32 end;
                arc->GetCoordinatePnt(start, end);
                float radius = 0;
                arc->GetRadius(radius, radius);
                EXPECT_NEAR(distanceOf(base, arc->GetCenterPoint()), radius, 1e-4) << annotation;
                EXPECT_LT(distanceOf(base, end), distanceOf(start, end)) << annotation;
            }
        }
    }
}

// Text --------------------------------------------------------------------------------------------

/// Advance widths of DejaVu Sans: digits 1303 units of 2048, a point 651.
double widthOfDigits(const Ank_Text& text) {
    float width = 0;
    float height = 0;
    text.GetCharWidthHeight(width, height);
    double units = 0;
    for (const wchar_t c : text.GetText()) {
        units += c == L'.' ? 651 : 1303;
    }
    return static_cast<double>(width) * units / 2048;
}

TEST(FinishText, CentresWhatTheCallCentres) {
    for (const double height : {1.0, 2.5, 3.5, 5.0, 40.0}) {
        for (const json& finish : {json{{"gap", 1}}, json{{"label", "{.3}"}}}) {
            const Built built = buildOne(distanceOfEdges(60, 33, height), finish);
            const Ank_Text& text = *textsOf(built->pmi).front();
            const double width = widthOfDigits(text);
            // The plane's origin is the first edge's start.
            const double middle = text.GetInnerLoc().x + width / 2;
            EXPECT_NEAR(middle, 33, 0.02 * width) << height << finish;
        }
    }
}

/// Points all along a leader.
std::vector<ANK_PNT32> pointsOf(const Ank_Leader& leader) {
    constexpr int kPieces = 200;
    const Ank_CurveEntity& curve = *leader.GetAllCurve().front();
    const auto* line = dynamic_cast<const Ank_PolyLine*>(&curve);
    const auto* arc = dynamic_cast<const Ank_Ellipse*>(&curve);
    std::vector<ANK_PNT32> points;
    for (int i = 0; i <= kPieces; ++i) {
        const float t = static_cast<float>(i) / kPieces;
        if (line != nullptr) {
            const ANK_PNT32 from = line->GetPoints().front();
            const ANK_PNT32 to = line->GetPoints().back();
            points.push_back({from.x + t * (to.x - from.x), from.y + t * (to.y - from.y), 0});
        } else if (arc != nullptr) {
            float start = 0;
            float end = 0;
            float radius = 0;
            arc->GetParameter(start, end);
            arc->GetRadius(radius, radius);
            const float angle = start + t * static_cast<float>(host::sweepOf(*arc));
            points.push_back({arc->GetCenterPoint().x + radius * std::cos(angle),
                              arc->GetCenterPoint().y + radius * std::sin(angle), 0});
        }
    }
    return points;
}

json distanceOfPoints(const json& from, const json& to, const json& text) {
    return {{"call", "PMICreateCntToCnt"},
            {"points", {from, from, to, to, from, from}},
            {"text", text},
            {"height", 5}};
}

/// Seen from above, where the planes of all these have the model's axes.
TEST(FinishText, StandsOffItsLeaders) {
    constexpr double kGap = 1.5;
    json annotations = everyKind();
    annotations.push_back(distanceOfPoints({0, 0, 0}, {0, 60, 0}, {0, 20, 0}));
    annotations.push_back(distanceOfPoints({0, 0, 0}, {60, 60, 0}, {20, 20, 0}));
    annotations.push_back(distanceOfPoints({60, 0, 0}, {0, 60, 0}, {40, 20, 0}));
    annotations.push_back(distanceOfPoints({0, 0, 0}, {60, 0, 0}, {30, -20, 0})); // a V
    annotations.push_back(diameter(20, {5, 12, 0}));
    annotations.push_back(diameter(20, {-30, 20, 0}));
    annotations.push_back(diameter(20, {2, -30, 0}));
    for (const json& annotation : annotations) {
        const Built built = buildOne(annotation, {{"gap", kGap}});
        if (built->measuringCall() == nullptr) {
            continue;
        }
        const Ank_Text& text = *textsOf(built->pmi).front();
        ANK_DIR32 x{1, 0, 0};
        ANK_DIR32 y{0, 1, 0};
        if (!built->pmi.GetParallelScreen()) {
            text.GetInnerXYAxis(x, y);
        }
        const ANK_PNT32 foot = text.GetInnerLoc();
        float height = 0;
        text.GetCharWidthHeight(height, height);
        double nearest = HUGE_VAL;
        for (const Ank_Leader* leader : built->pmi.GetLeaders()) {
            for (const ANK_PNT32& p : pointsOf(*leader)) {
                const double along = (p.x - foot.x) * x.x + (p.y - foot.y) * x.y;
                const double up = (p.x - foot.x) * y.x + (p.y - foot.y) * y.y;
                const double aside = std::max({-along, along - widthOfDigits(text), 0.0});
                const double above = std::max({-up, up - 0.729 * height, 0.0});
                nearest = std::min(nearest, std::hypot(aside, above));
            }
        }
        // Signs and degrees are narrower or wider than the digit that they are taken for.
        EXPECT_GE(nearest, kGap - 0.6) << annotation;
        EXPECT_LE(nearest, kGap + 0.6) << annotation;
    }
}

TEST(FinishText, OfSeveralLinesRunsDownwardsInItsBox) {
    const Built built =
        buildOne(distanceOfEdges(60, 30, 5), {{"label", {"111.11", "{}"}}, {"gap", 2}});
    const std::vector<Ank_Text*> lines = textsOf(built->pmi);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_NEAR(lines[0]->GetInnerLoc().y, 20 + 2 + 5, 1e-5);
    EXPECT_NEAR(lines[1]->GetInnerLoc().y, 20 + 2, 1e-5);
    const ANK_BOX32 box = built->pmi.GetComText().front()->GetOuterBox();
    EXPECT_NEAR(box.first.x, lines[0]->GetInnerLoc().x, 1e-5);
    EXPECT_NEAR(box.second.x - box.first.x, widthOfDigits(*lines[0]), 0.01);
    EXPECT_NEAR(box.first.y - box.second.y, 5 + 0.729 * 5, 0.01);
}

// Views -------------------------------------------------------------------------------------------

host::Matrix viewAlong(const Vec3& toViewer, const Vec3& upwards) {
    const Vec3 z = host::unit(toViewer);
    const Vec3 x = host::unit(host::cross(upwards, z));
    const Vec3 y = host::cross(z, x);
    host::Matrix view{};
    for (std::size_t i = 0; i < 3; ++i) {
        view[4 * i] = x[i];
        view[4 * i + 1] = y[i];
        view[4 * i + 2] = z[i];
    }
    view[15] = 1;
    return view;
}

/// The 26 views onto the faces, edges and corners of a cube, and 1000 random ones.
std::vector<host::Matrix> manyViews() {
    std::vector<host::Matrix> views;
    for (int i = 0; i < 27; ++i) {
        const int row = i / 3 % 3;
        const int layer = i / 9;
        const Vec3 from{i % 3 - 1.0, row - 1.0, layer - 1.0};
        if (host::dot(from, from) > 0) {
            const bool vertical = from[0] == 0 && from[1] == 0;
            views.push_back(viewAlong(from, vertical ? Vec3{0, 1, 0} : Vec3{0, 0, 1}));
        }
    }
    std::mt19937 random(15);
    std::normal_distribution<double> number;
    const auto direction = [&] { return Vec3{number(random), number(random), number(random)}; };
    for (int i = 0; i < 1000; ++i) {
        views.push_back(viewAlong(direction(), direction()));
    }
    return views;
}

TEST(FinishReadable, FromEverySide) {
    constexpr double kRounding = 2e-6;
    json kinds = everyKind();
    for (json& annotation : kinds) {
        annotation["display"] = true;
    }
    // An updated dimension whose text lies in the plane, mirrored.
    json updated = example("PMIUpdateDimesion");
    updated["display"] = true;
    updated.erase("screenParallel");
    kinds.push_back(updated);
    const std::string annotations = R"(, "annotations": )" + kinds.dump() + "}";
    int inPlane = 0;
    for (const host::Matrix& view : manyViews()) {
        for (const Built& built : buildText(R"({"finish": {"readable": true}, "view": )" +
                                            json(view).dump() + annotations)) {
            if (built->pmi.GetParallelScreen()) {
                continue;
            }
            const auto& plane = built->pmi.GetDefPlane().m;
            const auto onScreen = [&](const ANK_DIR32& d) {
                Vec3 model{};
                for (std::size_t i = 0; i < 3; ++i) {
                    model[i] = d.x * plane[0][i] + d.y * plane[1][i] + d.z * plane[2][i];
                }
                return host::Vec2{model[0] * view[0] + model[1] * view[4] + model[2] * view[8],
                                  model[0] * view[1] + model[1] * view[5] + model[2] * view[9]};
            };
            for (const Ank_Text* text : textsOf(built->pmi)) {
                ANK_DIR32 x;
                ANK_DIR32 y;
                text->GetInnerXYAxis(x, y);
                const host::Vec2 right = onScreen(x);
                const host::Vec2 up = onScreen(y);
                ++inPlane;
                EXPECT_GE(right.x * up.y - right.y * up.x, -kRounding) << built->calls[0].call;
                EXPECT_GE(right.x, -kRounding) << built->calls[0].call;
                EXPECT_FALSE(std::abs(right.x) <= kRounding / 4 && right.y < -kRounding);
            }
        }
    }
    EXPECT_GT(inPlane, 1026 * 8);
}

/// The block covers what it covered: here seen from behind, where its text ran to the left.
TEST(FinishReadable, LeavesTheBlockWhereItIs) {
    json annotation{{"display", true},
                    {"calls",
                     {{{"call", "PMICreateNote3D"},
                       {"lines", {"111", "11"}},
                       {"text", {10, 20, 0}},
                       {"height", 4}}}}};
    const host::Matrix behind = viewAlong({0, 0, -1}, {0, 1, 0});
    const auto built =
        build({{"view", behind}, {"finish", {{"readable", true}}}, {"annotations", {annotation}}});
    const std::vector<Ank_Text*> lines = textsOf(built.front()->pmi);
    ANK_DIR32 x;
    ANK_DIR32 y;
    lines[0]->GetInnerXYAxis(x, y);
    EXPECT_EQ(x.x, -1);
    EXPECT_EQ(y.y, 1);
    // Three digits of 1303/2048 em and 1.1 between them; the lines keep their heights.
    const double width = 3 * (4 * 1303.0 / 2048 + 1.1);
    EXPECT_NEAR(lines[0]->GetInnerLoc().x, 10 + width, 1e-4);
    EXPECT_NEAR(lines[1]->GetInnerLoc().x, 10 + width, 1e-4);
    EXPECT_NEAR(lines[0]->GetInnerLoc().y, 20, 1e-5);
    EXPECT_NEAR(lines[1]->GetInnerLoc().y, 16, 1e-5);
}

// Labels ------------------------------------------------------------------------------------------

TEST(FinishLabel, ShowsTheNumberInItsForms) {
    const json length = distanceOfEdges(800.125, 30, 5);
    const json circle = diameter(6, {20, 0, 0});
    const std::tuple<json, std::string, std::string> cases[] = {
        {length, "4X {} ±0.1", "4X 800.13 ±0.1"},
        {length, "{.0}|{.1}|{.3}|{.9}", "800|800.1|800.125|800.125000000"},
        // 31.50098... inches
        {length, "{.2in}|{.3in}|{/16in}|{ft}|{/16ft}", "31.50|31.501|31 8/16|2' 7.5\"|2' 7 8/16\""},
        {length, "{{{.1}}}", "{800.1}"},
        {length, "{//16in}|{//2ft}|{//1000in}", "31 1/2|2' 7 1/2\"|31 501/1000"},
        {distanceOfEdges(25.4, 30, 5), "{//16in}|{/16in}|{//16ft}", "1|1|0' 1\""},
        {circle, "{} {.1}", "⌀12.00 12.0"},
    };
    for (const auto& [annotation, label, shown] : cases) {
        json finished = annotation;
        finished["finish"] = {{"label", label}};
        const json dump = json::parse(
            host::dumpScene(json{{"annotations", {finished}}}.dump()))["annotations"][0];
        EXPECT_EQ(dump["annotation"]["textBlocks"][0]["texts"][0]["text"], shown);
        EXPECT_EQ(dump["measured"]["kind"], "length");
        const double value = annotation == circle ? 12 : annotation == length ? 800.125 : 25.4;
        EXPECT_NEAR(dump["measured"]["value"].get<double>(), value, 1e-4);
    }
}

TEST(FinishLabel, ShowsAnglesInTheirUnits) {
    // 59.7 seconds are rounded to a full minute, and that is carried.
    const std::tuple<double, std::string> cases[] = {{45, "0.785|45° 0' 0\""},
                                                     {22.51, "0.393|22° 30' 36\""},
                                                     {30 - 0.3 / 3600, "0.524|30° 0' 0\""}};
    for (const auto& [degrees, shown] : cases) {
        const double radians = degrees * std::numbers::pi / 180;
        json angle = example("PMICreateAngleDim");
        angle["edge2"]["end"] = {60 * std::cos(radians), 60 * std::sin(radians), 0};
        angle["locate"] = {40, 2, 0};
        angle["finish"] = {{"label", "{.3rad}|{dms}"}};
        const auto built = std::move(build({{"annotations", {angle}}}).front());
        EXPECT_EQ(host::toUtf8(textsOf(built->pmi)[0]->GetText()), shown);
    }
}

TEST(FinishLabel, OfAScenePassesByWhatCannotShowIt) {
    const json scene{{"finish", {{"label", "{.1in}"}}}, {"annotations", everyKind()}};
    const json kinds = everyKind();
    const auto built = build(scene);
    for (std::size_t i = 0; i < built.size(); ++i) {
        const host::CallResult* call = built[i]->measuringCall();
        const bool isLength = call != nullptr && call->measured.quantity == host::Quantity::Length;
        const Built bare = std::move(build({{"annotations", {kinds[i]}}}).front());
        EXPECT_EQ(textsOf(built[i]->pmi)[0]->GetText() != textsOf(bare->pmi)[0]->GetText(),
                  isLength)
            << kinds[i];
    }
}

// Mistakes ----------------------------------------------------------------------------------------

TEST(FinishMistake, IsToldInOneLine) {
    const std::string fields =
        "expected {}, {.0} to {.9}, {.0in} to {.9in}, {/2in} to {/1000in}, {//2in} to {//1000in}, "
        "{ft}, {/2ft} to {/1000ft}, {//2ft} to {//1000ft}, {.0rad} to {.9rad} or {dms}";
    const std::string arrow = "expected \"fit\" or a length above 0";
    const std::pair<json, std::string> cases[] = {
        {{{"arrow", -1}}, "finish.arrow: " + arrow},
        {{{"arrow", 0}}, "finish.arrow: " + arrow},
        {{{"arrow", "fits"}}, "finish.arrow: " + arrow},
        {{{"arrow", true}}, "finish.arrow: " + arrow},
        {{{"gap", -0.5}}, "finish.gap: expected a distance of at least 0"},
        {{{"gap", "1"}}, "finish.gap: expected a number, got a text"},
        {{{"readable", 1}}, "finish.readable: expected true or false, got a number"},
        {{{"label", "{.99}"}}, "finish.label: " + fields},
        {{{"label", "{.10}"}}, "finish.label: " + fields},
        {{{"label", "{.-1}"}}, "finish.label: " + fields},
        {{{"label", "{/in}"}}, "finish.label: " + fields},
        {{{"label", "{mm}"}}, "finish.label: " + fields},
        {{{"label", "{.2ft}"}}, "finish.label: " + fields},
        {{{"label", "{/8rad}"}}, "finish.label: " + fields},
        {{{"label", "{//8}"}}, "finish.label: " + fields},
        {{{"label", "{///8in}"}}, "finish.label: " + fields},
        {{{"label", "{.}"}}, "finish.label: " + fields},
        {{{"label", {"{}", "{"}}}, "finish.label[1]: " + fields},
        {{{"label", "}"}}, "finish.label: " + fields},
        {{{"label", ""}}, "finish.label: expected a text that is not empty"},
        {{{"label", json::array()}}, "finish.label: expected at least one line"},
        {{{"labels", "{}"}}, "finish: \"labels\" is not known here"},
        {7, "finish: expected an object, got a number"},
    };
    const auto messageOf = [](const json& scene) -> std::string {
        try {
            host::drawScene(scene.dump());
        } catch (const host::SceneError& error) {
            return error.what();
        }
        return "no mistake";
    };
    for (const auto& [finish, message] : cases) {
        json own = distanceOfEdges(60, 30, 5);
        own["finish"] = finish;
        EXPECT_EQ(messageOf({{"annotations", {own}}}).rfind("annotations[0]." + message, 0), 0U)
            << messageOf({{"annotations", {own}}});
        EXPECT_EQ(messageOf({{"annotations", json::array()}, {"finish", finish}}).rfind(message, 0),
                  0U);
    }
    json note = example("PMICreateNote3D");
    note["finish"] = {{"label", "{}"}};
    EXPECT_EQ(messageOf({{"annotations", {note}}}),
              "annotations[0].finish.label: there is no value that it could stand in place of");
    json angle = example("PMICreateAngleDim");
    angle["finish"] = {{"label", {"{}", "{.1in}"}}};
    EXPECT_EQ(messageOf({{"annotations", {angle}}}),
              "annotations[0].finish.label: an angle cannot be in inches or feet");
    json length = distanceOfEdges(60, 30, 5);
    length["finish"] = {{"label", "{dms}"}};
    EXPECT_EQ(messageOf({{"annotations", {length}}}),
              "annotations[0].finish.label: a length cannot be in radians or degrees");
    EXPECT_EQ(messageOf({{"annotations", json::array()}, {"lines", "din"}}),
              "lines: expected \"iso\"");
}

// Lines -------------------------------------------------------------------------------------------

TEST(Lines, HaveTheWidthsOfIso128OnTheSheet) {
    json scene{{"lines", "iso"}, {"annotations", {distanceOfEdges(800, 300, 20)}}};
    scene["edges"] = {
        {{"type", "line"}, {"start", {0, 0, 0}}, {"end", {800, 0, 0}}},
        {{"type", "line"}, {"start", {0, 9, 0}}, {"end", {800, 9, 0}}, {"hidden", true}}};
    const std::string picture = host::drawScene(scene.dump());
    EXPECT_NE(picture.find("data-scale=\"1:5\""), std::string::npos);
    // Five times 0.5 and 0.25 mm; dashes of 12 widths with gaps of 3
    for (const char* rule : {".edge{fill:none;stroke-linejoin:round;stroke-width:2.500;",
                             ".hidden{fill:none;stroke-linejoin:round;stroke-width:1.250;",
                             "stroke-dasharray:15.000 3.750",
                             ".curve{fill:none;stroke-linejoin:round;stroke-width:1.250;",
                             ".extension{fill:none;stroke-linejoin:round;stroke-width:1.250;",
                             "class=\"edge hidden\" d=\"M0.000 -9.000"}) {
        EXPECT_NE(picture.find(rule), std::string::npos) << rule << '\n' << picture;
    }
}

TEST(Finish, SpacingStandsBetweenTheCharactersOfEveryText) {
    const json note = {{"display", true},
                       {"calls",
                        {{{"call", "PMICreateNote3D"},
                          {"lines", {"DEBURR", "ALL"}},
                          {"text", {0, 0, 0}},
                          {"height", 5}}}}};
    const auto widthOf = [&note](const json& finish) {
        json annotation = note;
        annotation["finish"] = finish;
        const std::string picture = host::drawScene(json{{"annotations", {annotation}}}.dump());
        const std::string name = "textLength=\"";
        const std::size_t at = picture.find(name);
        return at == std::string::npos ? -1 : std::stod(picture.substr(at + name.size()));
    };
    for (const double spacing : {0.0, 0.4}) {
        const Built built = buildOne(note, {{"spacing", spacing}});
        EXPECT_EQ(textsOf(built->pmi).size(), 2U);
        for (const Ank_Text* text : textsOf(built->pmi)) {
            EXPECT_FLOAT_EQ(text->GetCharSpacing(), static_cast<float>(spacing));
        }
    }
    // Six letters, each with its distance to the next
    EXPECT_NEAR(widthOf({{"spacing", 0.5}}) - widthOf({{"spacing", 0}}), 6 * 0.5, 1e-2);
    EXPECT_THROW(buildOne(note, {{"spacing", -0.1}}), host::SceneError);
}

} // namespace
