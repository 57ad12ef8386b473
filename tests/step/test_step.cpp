// pmi-step on parts whose dimensions are known: what it reports, what it draws, and how it says
// that a file cannot be read.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/drawing/draw.h"
#include "host/drawing/projection.h"
#include "host/finish/font.h"
#include "host/scene/build.h"
#include "host/scene/scene.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

const fs::path kParts = STEP_PARTS;
const fs::path kGolden = STEP_GOLDEN;
const fs::path kDrawn = STEP_DRAWN;
constexpr const char* kNames[] = {"plate", "shaft", "bracket", "pin", "assembly", "blank"};

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void write(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

/// What a run of the program gave.
struct Result {
    int status = 0;
    std::string out;
    std::string err;
};

Result run(const std::string& arguments, const std::string& name) {
    const fs::path folder = kDrawn / "runs";
    fs::create_directories(folder);
    const fs::path out = folder / (name + ".out");
    const fs::path err = folder / (name + ".err");
    const std::string line = std::string(PMI_STEP) + ' ' + arguments + " >'" + out.string() +
                             "' 2>'" + err.string() + "'";
    const int status = std::system(line.c_str()); // NOLINT(concurrency-mt-unsafe)
    return {status / 256, contentOf(out), contentOf(err)};
}

std::string quoted(const fs::path& path) {
    std::string text = "'";
    text += path.string();
    text += '\'';
    return text;
}

fs::path partFile(const std::string& name) { return kParts / (name + ".stp"); }

json reportOf(const std::string& name) {
    return json::parse(run("report --json " + quoted(partFile(name)), name).out);
}

std::size_t lineCount(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

/// One line that names the file.
void expectRefusal(const Result& refused, const std::string& says) {
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(lineCount(refused.err), 1) << refused.err;
    EXPECT_NE(refused.err.find(says), std::string::npos) << refused.err;
}

/// Compares with what was approved; leaves what there is now beside the build.
void expectGolden(const std::string& actual, const fs::path& name) {
    write(kDrawn / name, actual);
    EXPECT_TRUE(actual == contentOf(kGolden / name))
        << "differs: " << (kDrawn / name).string() << " and " << (kGolden / name).string();
}

/// A part's views, drawn.
fs::path drawnPart(const std::string& name) {
    fs::path folder = kDrawn / "views" / name;
    fs::remove_all(folder);
    const Result drawn =
        run("draw " + quoted(partFile(name)) + " -o " + quoted(folder), name + "_draw");
    EXPECT_LE(drawn.status, 1) << drawn.err;
    EXPECT_EQ(drawn.err, "");
    return folder;
}

std::vector<fs::path> filesIn(const fs::path& folder, const std::string& extension) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == extension) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

class Part : public testing::TestWithParam<const char*> {};

TEST_P(Part, IsReportedAndDrawnAsApproved) {
    const std::string name = GetParam();
    const Result report = run("report --json " + quoted(partFile(name)), name);
    expectGolden(report.out, name + ".json");
    const fs::path folder = drawnPart(name);
    for (const fs::path& picture : filesIn(folder, ".svg")) {
        expectGolden(contentOf(picture), name + "_" + picture.filename().string());
    }
}

TEST_P(Part, CountsEveryDimensionOnce) {
    const json report = reportOf(GetParam());
    std::map<std::string, int> fates;
    for (const json& dimension : report["dimensions"]) {
        const std::string fate = dimension["fate"];
        ++fates[fate];
        EXPECT_EQ(dimension["reason"].get<std::string>().empty(), fate == "drawn") << dimension;
        EXPECT_EQ(dimension["views"].size(), fate == "refused" ? 0 : 1) << dimension;
    }
    const json& counts = report["counts"];
    EXPECT_EQ(counts["dimensions"], report["dimensions"].size());
    for (const char* fate : {"drawn", "noted", "refused"}) {
        EXPECT_EQ(counts[fate], fates[fate]) << fate;
    }
}

/// A line of text on paper, or a line of the part.
struct Box {
    host::Vec2 low{HUGE_VAL, HUGE_VAL};
    host::Vec2 high{-HUGE_VAL, -HUGE_VAL};
    std::string what;

    void add(host::Vec2 p) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    bool overlaps(const Box& other) const {
        return low.x < other.high.x && other.low.x < high.x && low.y < other.high.y &&
               other.low.y < high.y;
    }
};

/// The texts of an annotation as they are drawn, by the font's own widths.
void addTexts(const host::BuiltAnnotation& built, const host::Scene& scene,
              std::vector<Box>& boxes) {
    const host::Projection plane(built.pmi.GetDefPlane(), scene.view());
    for (const Ank_ComText* block : built.pmi.GetComText()) {
        Box box;
        for (const Ank_Text* text : block->GetTexts()) {
            ANK_DIR32 x;
            ANK_DIR32 y;
            text->GetInnerXYAxis(x, y);
            const bool upright = built.pmi.GetParallelScreen();
            const host::Vec2 right = upright ? host::Vec2{1, 0} : plane.offset(host::vectorOf(x));
            const host::Vec2 up = upright ? host::Vec2{0, 1} : plane.offset(host::vectorOf(y));
            const host::Vec2 start = plane.point(host::vectorOf(text->GetInnerLoc()));
            const double height = host::charSizeOf(*text).height * host::kCapitalHeight;
            for (const double along : {0.0, host::widthOf(*text)}) {
                for (const double above : {0.0, height}) {
                    box.add(start + along * right + above * up);
                }
            }
            // Read upright or from the right, never mirrored.
            EXPECT_GT(right.x * up.y - right.y * up.x, 0) << built.name;
            EXPECT_GT(right.x + 1e-3 * right.y, 0) << built.name;
        }
        box.what = built.name;
        boxes.push_back(box);
    }
}

TEST_P(Part, HasNoTextOverAnotherOrOverThePart) {
    const fs::path folder = drawnPart(GetParam());
    for (const fs::path& file : filesIn(folder, ".json")) {
        const host::Scene scene(contentOf(file));
        const host::Projection paper(scene.view());
        Box part;
        for (const host::ModelEdge& edge : scene.edges()) {
            if (const auto* line = std::get_if<host::LineEdge>(&edge.edge)) {
                part.add(paper.point(line->start));
                part.add(paper.point(line->end));
            }
        }
        std::vector<Box> texts;
        for (std::size_t i = 0; i < scene.annotationCount(); ++i) {
            host::BuiltAnnotation built;
            host::buildAnnotation(scene, i, built);
            addTexts(built, scene, texts);
        }
        for (std::size_t i = 0; i < texts.size(); ++i) {
            EXPECT_FALSE(texts[i].overlaps(part)) << file << ' ' << texts[i].what;
            for (std::size_t j = i + 1; j < texts.size(); ++j) {
                EXPECT_FALSE(texts[i].overlaps(texts[j]))
                    << file << ' ' << texts[i].what << ' ' << texts[j].what;
            }
        }
    }
}

/// How far a point of the paper is from an arc of the part that is seen round.
double distanceTo(const host::ArcEdge& arc, const host::Projection& paper, host::Vec2 point) {
    using host::operator+, host::operator-, host::operator*;
    const host::Vec3 x = arc.start - arc.center;
    const host::Vec3 y = host::cross(arc.normal, x);
    const double sweep = host::sweepTo(arc.end - arc.center, x, y);
    double least = HUGE_VAL;
    constexpr int kPieces = 1000;
    for (int i = 0; i <= kPieces; ++i) {
        const double at = sweep * i / kPieces;
        const host::Vec2 offset = paper.offset(std::cos(at) * x + std::sin(at) * y);
        least = std::min(least, length(paper.point(arc.center) + offset - point));
    }
    return least;
}

TEST_P(Part, HasRadiiThatPointAtAnArcOfThePicture) {
    for (const fs::path& file : filesIn(drawnPart(GetParam()), ".json")) {
        const host::Scene scene(contentOf(file));
        const host::Projection paper(scene.view());
        for (std::size_t i = 0; i < scene.annotationCount(); ++i) {
            host::BuiltAnnotation built;
            host::buildAnnotation(scene, i, built);
            constexpr int kRadius = 6;
            // The circle of a torus's centres is seen nowhere.
            if (built.pmi.GetType() != kRadius || built.name == "#1557") {
                continue;
            }
            const host::Projection plane(built.pmi.GetDefPlane(), scene.view());
            AnkTermTypeEnum type{};
            float size[2] = {};
            ANK_PNT32 tip;
            ANK_DIR32 direction;
            built.pmi.GetLeaders().at(0)->GetTerminator(type, size, tip, direction);
            double least = HUGE_VAL;
            for (const host::ModelEdge& edge : scene.edges()) {
                if (const auto* arc = std::get_if<host::ArcEdge>(&edge.edge)) {
                    least =
                        std::min(least, distanceTo(*arc, paper, plane.point(host::vectorOf(tip))));
                }
            }
            EXPECT_LT(least, 0.01) << file << ' ' << built.name;
        }
    }
}

TEST_P(Part, GivesTheSameBytesOnEveryRun) {
    const fs::path folder = drawnPart(GetParam());
    std::map<fs::path, std::string> first;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        first[entry.path()] = contentOf(entry.path());
    }
    EXPECT_EQ(drawnPart(GetParam()), folder);
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        EXPECT_TRUE(first[entry.path()] == contentOf(entry.path())) << entry.path();
    }
}

INSTANTIATE_TEST_SUITE_P(Step, Part, testing::ValuesIn(kNames),
                         [](const auto& part) { return std::string(part.param); });

/// What the drawings of the parts say, found by hand.
struct Known {
    const char* part;
    const char* text;
    const char* fate;
    const char* unit;
    double nominal;
};

TEST(StepReport, HasTheValuesOfTheFile) {
    const Known known[] = {
        {"plate", "120.0 ±0.2", "drawn", "mm", 120},
        {"plate", "80.0 +0.2/-0", "drawn", "mm", 80},
        {"plate", "12.1 / 11.9", "drawn", "mm", 12},
        {"plate", "4X ⌀9 H7", "drawn", "mm", 9},
        {"plate", "(40)", "drawn", "mm", 40},
        {"plate", "2X R6", "drawn", "mm", 6},
        {"plate", "4.0", "drawn", "mm", 4},
        {"plate", "26.0 (part: 25.000)", "noted", "mm", 26},
        {"plate", "⌀10 (cosmetic thread)", "noted", "mm", 10},
        {"shaft", "⌀20 h6", "drawn", "mm", 20},
        {"shaft", "⌀30.00 +0.02/-0.05", "drawn", "mm", 30},
        {"shaft", "S⌀20.0", "drawn", "mm", 20},
        {"shaft", "R2.0", "drawn", "mm", 2},
        {"shaft", "R12.0", "drawn", "mm", 12},
        {"shaft", "90° ±1°", "drawn", "deg", 90},
        {"bracket", "120.0° ±0.5°", "drawn", "deg", 120},
        {"bracket", "CR0.25 ±0.01", "drawn", "in", 0.25},
        {"bracket", "2X ⌀0.281 +0.005/-0.003", "drawn", "in", 0.281},
        {"bracket", "⌒0.262", "drawn", "in", 0.262},
        {"pin", "10.0° ±0.1°", "drawn", "deg", 10},
        {"pin", "30°", "drawn", "deg", 30},
        {"assembly", "⌀18.0", "drawn", "mm", 18},
    };
    std::map<std::string, json> reports;
    for (const char* name : kNames) {
        reports[name] = reportOf(name);
    }
    for (const Known& expected : known) {
        const json& all = reports[expected.part]["dimensions"];
        const auto found = std::find_if(all.begin(), all.end(), [&](const json& dimension) {
            return dimension["text"] == expected.text;
        });
        ASSERT_NE(found, all.end()) << expected.text;
        EXPECT_EQ((*found)["fate"], expected.fate) << expected.text;
        EXPECT_EQ((*found)["unit"], expected.unit) << expected.text;
        EXPECT_DOUBLE_EQ((*found)["nominal"].get<double>(), expected.nominal);
    }
    EXPECT_EQ(reports["bracket"]["unit"], "in");
    EXPECT_EQ(reports["plate"]["counts"]["tolerances"]["flatness"], 1);
    EXPECT_EQ(reports["plate"]["counts"]["datums"]["datum"], 1);
}

TEST(StepReport, TellsByItsStatusWhetherAnythingWasRefused) {
    const Result plate = run("report " + quoted(partFile("plate")), "plate_text");
    EXPECT_EQ(plate.status, 1);
    EXPECT_NE(plate.out.find("15 dimensions: 12 drawn, 2 noted, 1 refused\n"), std::string::npos);
    EXPECT_NE(plate.out.find("linear distance: no value\n"), std::string::npos);
    const Result blank = run("report " + quoted(partFile("blank")), "blank_text");
    EXPECT_EQ(blank.status, 0);
    EXPECT_EQ(blank.out, "0 dimensions\n");
}

TEST(StepReport, RefusesWhatIsNoPartInOneLine) {
    const fs::path folder = kDrawn / "inputs";
    const std::string plate = contentOf(partFile("plate"));
    std::string noise(5000, ' ');
    std::mt19937 random(5);
    for (char& c : noise) {
        c = static_cast<char>(random() % 256);
    }
    const std::map<std::string, std::string> inputs = {
        {"empty.stp", ""},
        {"cut.stp", plate.substr(0, plate.size() / 3)},
        {"noise.stp", noise},
        {"text.stp", "Dear reader,\nthis is no part.\n"},
        {"nothing.stp", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\nENDSEC;\nEND-ISO-10303-21;\n"},
    };
    for (const auto& [name, bytes] : inputs) {
        write(folder / name, bytes);
        expectRefusal(run("report " + quoted(folder / name), name), name);
    }
    expectRefusal(run("report " + quoted(folder / "missing.stp"), "missing"), "cannot be read");
    expectRefusal(run("report " + quoted(folder), "folder"), "is a directory");
    const fs::path large = folder / "large.stp";
    write(large, "ISO-10303-21;");
    fs::resize_file(large, (std::uintmax_t{256} << 20) + 1);
    expectRefusal(run("report " + quoted(large), "large"), "--force");
    fs::remove(large);
}

TEST(StepDraw, DrawsOneViewOrSaysWhichThereAre) {
    const fs::path folder = kDrawn / "views" / "one";
    fs::remove_all(folder);
    const std::string part = quoted(partFile("plate")) + " -o " + quoted(folder);
    EXPECT_EQ(run("draw --view front " + part, "one").status, 1);
    EXPECT_EQ(filesIn(folder, ".svg"), std::vector{folder / "front.svg"});
    expectRefusal(run("draw --view nowhere " + part, "nowhere"), "only front, top");
    write(folder / "file", "");
    expectRefusal(
        run("draw " + quoted(partFile("blank")) + " -o " + quoted(folder / "file"), "no_folder"),
        "cannot be made");
}

TEST(StepDraw, LinksEveryRowOfItsPageToItsAnnotation) {
    const fs::path folder = drawnPart("plate");
    const std::string page = contentOf(folder / "index.html");
    std::string pictures;
    for (const fs::path& picture : filesIn(folder, ".svg")) {
        pictures += contentOf(picture);
    }
    const json report = reportOf("plate");
    for (const json& dimension : report["dimensions"]) {
        const std::string name =
            "data-name=\"#" + std::to_string(dimension["entity"].get<int>()) + '"';
        EXPECT_NE(page.find("<tr class=\"" + dimension["fate"].get<std::string>() + "\" " + name),
                  std::string::npos);
        EXPECT_EQ(pictures.find(name) != std::string::npos, dimension["fate"] != "refused");
    }
    EXPECT_EQ(page.find("src="), std::string::npos);
    EXPECT_EQ(page.find("@import"), std::string::npos);
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        EXPECT_NE(entry.path().extension(), ".part");
    }
}

/// The viewer's page as far as pages are made from it.
const std::string kViewer =
    "<body>\n<script type=\"application/json\" id=\"part\"></script>\n</body>\n";

/// What a page holds: a scene, and the report.
json dataOf(const std::string& page) {
    const std::size_t start = page.find("id=\"part\">") + std::string("id=\"part\">").size();
    return json::parse(page.substr(start, page.find("</script>", start) - start));
}

Result makePage(const fs::path& part, const fs::path& page, const std::string& name) {
    const fs::path viewer = kDrawn / "pages" / "viewer.html";
    write(viewer, kViewer);
    return run("page " + quoted(part) + " -o " + quoted(page) + " --viewer " + quoted(viewer),
               name);
}

json pageData(const std::string& name) {
    const fs::path page = kDrawn / "pages" / (name + ".html");
    const Result made = makePage(partFile(name), page, name + "_page");
    EXPECT_LE(made.status, 1) << made.err;
    EXPECT_EQ(made.err, "");
    return dataOf(contentOf(page));
}

/// The texts of a picture, in any order.
std::multiset<std::string> textsOf(const std::string& svg) {
    std::multiset<std::string> texts;
    for (std::size_t at = svg.find("<text"); at != std::string::npos; at = svg.find("<text", at)) {
        at = svg.find('>', at) + 1;
        texts.insert(svg.substr(at, svg.find('<', at) - at));
    }
    return texts;
}

TEST_P(Part, HasAPageWithTheSameViews) {
    const json data = pageData(GetParam());
    EXPECT_EQ(data["report"], reportOf(GetParam()));
    const fs::path folder = drawnPart(GetParam());
    // The host reads it, mesh included, and draws in each view what is drawn there alone.
    host::Scene scene(data["scene"].dump());
    for (const fs::path& picture : filesIn(folder, ".svg")) {
        scene.useView(picture.stem().string());
        EXPECT_EQ(textsOf(host::drawScene(scene)), textsOf(contentOf(picture))) << picture;
    }
}

TEST(StepPage, HasTheEdgesOfThePartAndNoSeams) {
    std::map<std::string, int> radii;
    const json plate = pageData("plate");
    for (const json& edge : plate["scene"]["edges"]) {
        if (edge["type"] == "arc") {
            ++radii[edge["radius"].dump()];
        }
    }
    // Four holes and the two ends of the slot, above and below.
    EXPECT_EQ(radii, (std::map<std::string, int>{{"4.5", 8}, {"6.0", 4}})) << json(radii);
    const json shaft = pageData("shaft");
    EXPECT_FALSE(shaft["scene"]["edges"].empty());
    for (const json& edge : shaft["scene"]["edges"]) {
        EXPECT_EQ(edge["type"], "arc") << edge;
    }
}

TEST(StepPage, KnowsTheLinesAndCirclesAmongSplines) {
    const json data = pageData("splines");
    int lines = 0;
    int holes = 0;
    for (const json& edge : data["scene"]["edges"]) {
        if (edge["type"] == "line") {
            ++lines;
            continue;
        }
        ++holes;
        EXPECT_NEAR(edge["radius"].get<double>(), 8, 1e-6);
        EXPECT_NEAR(edge["centre"][0].get<double>(), 20, 1e-6);
        EXPECT_NEAR(edge["centre"][1].get<double>(), 20, 1e-6);
        EXPECT_NEAR(std::abs(edge["normal"][2].get<double>()), 1, 1e-6);
    }
    // Those of the box; above and below. The oblique hole has ellipses.
    EXPECT_EQ(lines, 12);
    EXPECT_EQ(holes, 2);
    EXPECT_FALSE(data["scene"]["mesh"]["curves"].get<std::string>().empty());
}

TEST(StepPage, HoldsAnyTextAndNothingEndsItsScript) {
    const std::string name = "</script><b>\xc3\xa4";
    std::string part = contentOf(partFile("blank"));
    const std::size_t at = part.find("PRODUCT('") + std::string("PRODUCT('").size();
    const std::size_t second = part.find('\'', part.find("','", at) + 3);
    part.replace(at, second - at, "id','" + name);
    const fs::path file = kDrawn / "inputs" / "named.stp";
    write(file, part);
    const fs::path page = kDrawn / "pages" / "named.html";
    ASSERT_EQ(makePage(file, page, "named").status, 0);
    const std::string text = contentOf(page);
    EXPECT_EQ(text.find("</script>"), text.rfind("</script>"));
    EXPECT_EQ(dataOf(text)["scene"]["title"].get<std::string>().substr(0, 9), name.substr(0, 9));
}

TEST(StepPage, SaysWhereTheViewersPageComesFrom) {
    const fs::path page = kDrawn / "pages" / "none.html";
    const std::string part = "page " + quoted(partFile("blank")) + " -o " + quoted(page);
    const fs::path viewer = kDrawn / "pages" / "absent.html";
    expectRefusal(run(part + " --viewer " + quoted(viewer), "absent"), "./dev viewer makes it");
    const fs::path other = kDrawn / "pages" / "other.html";
    write(other, "<html></html>");
    expectRefusal(run(part + " --viewer " + quoted(other), "other"), "is not the viewer's page");
    EXPECT_FALSE(fs::exists(page));
}

/// A file with a few bytes changed, doubled or cut out, mostly among its product data.
std::string mutated(std::string text, std::mt19937& random) {
    const auto below = [&](std::size_t limit) {
        return random() % std::max<std::size_t>(limit, 1);
    };
    for (std::size_t change = 1 + below(8); change > 0; --change) {
        const std::size_t at =
            below(2) == 0 ? below(text.size()) : text.size() - 1 - below(text.size() / 4);
        switch (below(5)) {
        case 0:
            text[at] = static_cast<char>(random() % 256);
            break;
        case 1:
            text[at] = "0123456789#,();$*'."[below(19)];
            break;
        case 2:
            text.erase(at, 1 + below(40));
            break;
        case 3:
            text.insert(at, text.substr(below(text.size()), 1 + below(60)));
            break;
        default: {
            // Another entity in one's place.
            const std::size_t mark = text.find('#', at);
            if (mark != std::string::npos && mark + 4 < text.size()) {
                text.replace(mark + 1, 3, std::to_string(100 + below(900)));
            }
        }
        }
    }
    return text;
}

TEST(StepReport, SurvivesDamagedFiles) {
    constexpr int kFiles = STEP_MUTATIONS;
    std::mt19937 random(20261122);
    const fs::path file = kDrawn / "inputs" / "damaged.stp";
    for (int i = 0; i < kFiles; ++i) {
        const char* part = kNames[random() % std::size(kNames)];
        write(file, mutated(contentOf(partFile(part)), random));
        const Result damaged = run("report " + quoted(file), "damaged");
        ASSERT_TRUE(damaged.status >= 0 && damaged.status <= 2) << i << ' ' << part;
        ASSERT_EQ(lineCount(damaged.err), damaged.status == 2 ? 1 : 0) << i << ' ' << damaged.err;
        ASSERT_EQ(damaged.out.empty(), damaged.status == 2) << i;
    }
}

} // namespace
