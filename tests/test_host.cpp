// Scenes that cannot be drawn, and how the viewer says so.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/drawing/draw.h"
#include "host/output/dump.h"

namespace {

namespace fs = std::filesystem;

std::string annotated(const std::string& call) { return R"({"annotations": [{)" + call + "}]}"; }
std::string distance(const std::string& rest) {
    return annotated(R"("call": "PMICreateCntToCnt", "text": [0,0,0], )" + rest);
}
std::string edge(const std::string& rest) {
    return R"({"annotations": [], "edges": [{"id": "a", "type": "line", "start": [0,0,0], )" +
           rest + "]}";
}

/// The view from above, +y to the right.
const std::string kTurned = "[0,-1,0,0, 1,0,0,0, 0,0,1,0, 0,0,0,1]";
std::string views(const std::string& list) {
    return R"({"annotations": [], "views": [)" + list + "]}";
}

const std::string kVertices = "AAAAAAAAAAAAAAAAAABwQgAAAAAAAAAAAAAAAAAAIEIAAAAA";
const std::string kTriangle = "AAAAAAEAAAACAAAA";
std::string mesh(const std::string& positions, const std::string& triangles,
                 const std::string& faces) {
    return R"({"annotations": [], "mesh": {"positions": ")" + positions + R"(", "triangles": ")" +
           triangles + R"(", "faces": )" + faces + "}}";
}

struct BadScene {
    std::string scene;
    std::string message;
};

TEST(BadScene, IsRefusedInOneLine) {
    const std::string points = R"("points": [[0,0,0],[0,0,0],[0,0,0],[0,0,0],[0,0,0])";
    const BadScene cases[] = {
        {"", "line 1, column 1: not JSON: unexpected end of input"},
        {"{\"annotations\":\n [", "line 2, column 3: not JSON: unexpected end of input"},
        {R"({"annotations": []} x)", "line 1, column 21: not JSON"},
        {"[]", "expected an object, got a list"},
        {"{}", "\"annotations\" is missing"},
        {R"({"annotations": {}})", "annotations: expected a list, got an object"},
        {R"({"annotations": [7]})", "annotations[0]: expected an object, got a number"},
        {"{\"annotations\": [], \"title\": \"\xff\"}", "line 1, column 31: not UTF-8"},
        {"{\"annotations\": [], \"title\": \"\xe2\x82", "not UTF-8"},
        {R"({"annotations": [], "title": "\ud800"})", "not JSON: invalid string"},
        {"{\"annotations\": " + std::string(100000, '['), "nested more than 64 levels deep"},
        {R"({"annotations": [], "view": "rear"})",
         "view: expected top, front, right, bottom, back"},
        {R"({"annotations": [], "view": [1,0,0]})", "the scene's views, or 16 numbers"},
        {R"({"annotations": [], "version": 2})",
         "version: this program reads scenes up to version 1, got 2"},
        {R"({"annotations": [], "version": 0})", "version: expected at least 1, got 0"},
        {views(R"({"name": "a", "matrix": [1]})"), "views[0].matrix: expected 16 numbers"},
        {views(R"({"name": "left", "matrix": )" + kTurned + "}"),
         "views[0].name: a standard view has this name"},
        {views(R"({"name": "a", "matrix": )" + kTurned + R"(}, {"name": "a", "matrix": )" +
               kTurned + "}"),
         "views[1].name: another view has the same name"},
        // 3 vertices and one triangle of them, each with one thing changed.
        {mesh("AAA", kTriangle, "[1]"), "mesh.positions: expected base64 in groups of 4"},
        {mesh("AA=AAAAA", kTriangle, "[1]"),
         "mesh.positions: expected base64, got another character at 3"},
        {mesh("AAAAAAAA", kTriangle, "[1]"),
         "mesh.positions: expected 12 bytes of each 3 numbers, got 6"},
        {mesh("AAAAAAAAAAAAAMB/", kTriangle, "[1]"),
         "mesh.positions: vertex 0: expected numbers of at most 1e9"},
        {mesh(kVertices, "AAAAAAEAAAADAAAA", "[1]"),
         "mesh.triangles: triangle 0: expected one of 3 vertices, got vertex 3"},
        {mesh(kVertices, kTriangle, R"([1], "curves": "AAAAAAEAAAACAAAA")"),
         "mesh.curves: expected 8 bytes of each 2 numbers, got 12"},
        {mesh(kVertices, kTriangle, R"([1], "curves": "AAAAAAMAAAA=")"),
         "mesh.curves: piece 0: expected one of 3 vertices, got vertex 3"},
        {mesh(kVertices, kTriangle, "[1, 1]"), "mesh.faces: expected 1 triangles in all, got 2"},
        {mesh(kVertices, kTriangle, "[1, 0]"),
         "mesh.faces[1]: expected at least 1 triangle, got 0"},
        {R"({"annotations": [], "titel": ""})",
         "\"titel\" is not known here; \"title\" may be meant"},
        {R"({"annotatoins": []})",
         "\"annotations\" is missing; \"annotatoins\" may be meant for it"},
        {annotated(R"("views": ["rear"], "calls": [])"),
         "annotations[0].views[0]: expected top, front, right, bottom, back"},
        {annotated(R"("call": "PMICreateRadiusDim")"),
         "there is no call \"PMICreateRadiusDim\"; \"PMICreateRadiusDim3D\" may be meant"},
        {edge(R"("end": [1,0]})"), "edges[0].end: expected 3 numbers, got 2"},
        {edge(R"("end": "nowhere"})"), "edges[0].end: there is no point \"nowhere\""},
        {edge(R"("end": [1,0,1e10]})"), "edges[0].end[2]: expected a number of at most 1e9"},
        {edge(R"("end": [1,0,1e999]})"), "a number is too large"},
        {edge(R"("end": [1,0,0]}, {"id": "a", "type": "line", "start": [0,0,0], "end": [1,0,0]})"),
         "edges[1]: another edge has the id \"a\""},
        {annotated(R"("call": "PMICreateNothing")"),
         "annotations[0].call: there is no call \"PMICreateNothing\""},
        {distance(points + R"(], "height": 5)"),
         "annotations[0].points: expected 6 points of 3 numbers, got 5"},
        {distance(points + ",[0,0,0]]"), "annotations[0]: \"height\" is missing"},
        {distance(points + R"(,[0,0,0]], "height": 5, "status": 1.5)"),
         "annotations[0].status: expected a whole number"},
        {distance(points + R"(,[0,0,0]], "height": 5, "status": 3000000000)"),
         "annotations[0].status: expected a whole number of 32 bits"},
        {annotated(R"("call": "PMICreateRadiusDim3D", "circle": "rim")"),
         "annotations[0].circle: there is no edge \"rim\""},
        {annotated(R"("calls": [{"call": "PMICreateRadiusDim3D", "circle":
                      {"type": "line", "start": [0,0,0], "end": [1,0,0]}}])"),
         "annotations[0].calls[0].circle: expected an arc, got a line"},
        {annotated(R"("call": "FillEnvelope", "backgroundColour": "#12345g")"),
         "annotations[0].backgroundColour: expected a colour"}};
    for (const BadScene& bad : cases) {
        for (const bool drawn : {false, true}) {
            try {
                drawn ? host::drawScene(bad.scene) : host::dumpScene(bad.scene);
                ADD_FAILURE() << "accepted: " << bad.scene;
            } catch (const host::SceneError& error) {
                const std::string message = error.what();
                EXPECT_NE(message.find(bad.message), std::string::npos)
                    << message << "\nfor " << bad.message;
                EXPECT_EQ(message.find('\n'), std::string::npos) << message;
            }
        }
    }
}

TEST(Warning, NamesWhatThePictureDoesNotShow) {
    const std::string radius = R"("call": "PMICreateRadiusDim3D", "circle":
        {"type": "arc", "centre": [0,0,0], "normal": [0,0,1], "radius": 5}, "height": )";
    const std::string scene = "{\"annotations\": [{" + radius + R"(3, "locate": [9,0,0]}, {)" +
                              radius +
                              R"(3, "locate": [9,0,0], "kindCode": 1}, {"display": true, )" +
                              radius + R"(3, "locate": [9,0,0], "kindCode": 1}]})";
    std::vector<std::string> warnings;
    host::drawScene(scene, {}, [&warnings](const std::string& line) { warnings.push_back(line); });
    EXPECT_EQ(warnings, (std::vector<std::string>{
                            "annotations[1]: shows nothing: it is not displayed (\"display\")",
                            "annotations[2]: shows nothing: it is empty"}));
}

/// Two edges, and a distance that is measured in the scene's view.
std::string lookedAt(const std::string& rest) {
    return R"({"edges": [{"id": "base", "type": "line", "start": [0,0,0], "end": [60,0,0]},
                         {"id": "side", "type": "line", "start": [0,0,0], "end": [0,40,0]}],
               "annotations": [{"call": "PMICreateArcDim3D", "curve": "side",
                                "locate": [-15,20,0], "height": 5}])" +
           rest + "}";
}

TEST(Scene, IsLookedAtThroughANamedView) {
    const std::string turned = R"(, "views": [{"name": "turned", "matrix": )" + kTurned + "}]";
    host::Scene scene(lookedAt(turned));
    EXPECT_EQ(host::drawScene(scene), host::drawScene(lookedAt("")));
    for (const char* view : {"turned", "left", "top"}) {
        const std::string named = std::string(R"(, "view": ")") + view + '"';
        scene.useView(view);
        EXPECT_EQ(host::drawScene(scene), host::drawScene(lookedAt(turned + named))) << view;
        EXPECT_EQ(host::dumpScene(scene), host::dumpScene(lookedAt(turned + named))) << view;
    }
    scene.useView("turned");
    // +x runs downwards, which is the way of y on paper, and +y to the right.
    const std::string picture = host::drawScene(scene);
    EXPECT_NE(picture.find("M0.000 0.000L0.000 60.000"), std::string::npos) << picture;
    EXPECT_NE(picture.find("M0.000 0.000L40.000 0.000"), std::string::npos) << picture;
    EXPECT_THROW(scene.useView("rear"), host::SceneError);
}

TEST(Scene, LeavesOutWhatBelongsToOtherViews) {
    const auto note = [](const std::string& text, const std::string& views) {
        return R"({"display": true, "views": )" + views +
               R"(, "calls": [{"call": "PMICreateNote3D", "lines": [")" + text +
               R"("], "text": [0,0,0], "height": 5}]})";
    };
    const std::string text = R"({"views": [{"name": "turned", "matrix": )" + kTurned +
                             R"(}], "annotations": [)" + note("PLAN", R"(["top", "turned"])") +
                             ',' + note("SIDE", R"(["left"])") + "]}";
    struct Case {
        const char* view;
        bool plan;
        bool side;
    };
    for (const Case& c : {Case{"top", true, false},
                          {"turned", true, false},
                          {"left", false, true},
                          {"iso", false, false}}) {
        host::Scene scene(text);
        scene.useView(c.view);
        std::vector<std::string> warnings;
        const std::string picture =
            host::drawScene(scene, {}, [&](const std::string& line) { warnings.push_back(line); });
        EXPECT_EQ(picture.find("PLAN") != std::string::npos, c.plan) << c.view;
        EXPECT_EQ(picture.find("SIDE") != std::string::npos, c.side) << c.view;
        EXPECT_TRUE(warnings.empty());
    }
    const std::string matrix = R"({"view": )" + kTurned + ',';
    const std::string picture = host::drawScene(matrix + text.substr(1));
    EXPECT_NE(picture.find("PLAN"), std::string::npos);
    EXPECT_NE(picture.find("SIDE"), std::string::npos);
}

TEST(Scene, IsDrawnAndDumpedTheSameWithAMesh) {
    const std::string bare = lookedAt("");
    const std::string part = R"({"positions": ")" + kVertices + R"(", "triangles": ")" + kTriangle +
                             R"(", "faces": [1]})";
    const std::string meshed = lookedAt(R"(, "version": 1, "mesh": )" + part);
    EXPECT_EQ(host::drawScene(meshed), host::drawScene(bare));
    EXPECT_EQ(host::dumpScene(meshed), host::dumpScene(bare));
}

// A shell of Windows takes the paths of this build for switches.
#ifndef _WIN32

std::string contentOf(const fs::path& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

TEST(Program, LeavesTheOutputAloneWhereTheSceneIsBad) {
    const fs::path directory = fs::path(DORVALE_DRAWN) / "program";
    const std::string scene = (directory / "scene.json").string();
    const std::string output = (directory / "output").string();
    const std::string errors = (directory / "errors").string();
    const std::string arguments = " " + scene + " -o " + output;
    fs::create_directories(directory);
    std::ofstream(output) << "as it was";
    const auto exitCode = [&](const char* command) {
        std::string line(PMI_HOST);
        line.append(" ").append(command).append(arguments).append(" 2> ").append(errors);
        return std::system(line.c_str()) / 256; // NOLINT(concurrency-mt-unsafe)
    };
    for (const char* command : {"draw", "dump"}) {
        std::ofstream(scene) << R"({"annotations": [7]})";
        EXPECT_EQ(exitCode(command), 2);
        EXPECT_EQ(contentOf(errors),
                  scene + ": annotations[0]: expected an object, got a number\n");
        fs::remove(scene);
        EXPECT_EQ(exitCode(command), 2);
        EXPECT_EQ(contentOf(errors), scene + ": cannot be read: No such file or directory\n");
    }
    EXPECT_EQ(exitCode("dream"), 2);
    EXPECT_EQ(contentOf(output), "as it was");
    std::ofstream(scene) << R"({"annotations": []})";
    EXPECT_EQ(exitCode("draw"), 0);
    EXPECT_EQ(contentOf(errors), "");
    EXPECT_NE(contentOf(output).find("<svg"), std::string::npos);
    // Without a file to write, the same picture goes to the standard output.
    const std::string printed = output + ".printed";
    const std::string print = std::string(PMI_HOST) + " draw " + scene + " > " + printed;
    EXPECT_EQ(std::system(print.c_str()), 0); // NOLINT(concurrency-mt-unsafe)
    EXPECT_EQ(contentOf(printed), contentOf(output));
}

#endif

} // namespace
