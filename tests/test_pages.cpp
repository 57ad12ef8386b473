// What the documentation's pages promise: the examples of docs/scene.md, the table of
// docs/flags.md.
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/drawing/draw.h"
#include "host/scene/arguments.h"
#include "host/scene/build.h"
#include "host/system/files.h"

namespace {

namespace fs = std::filesystem;

/// The annotations that docs/scene.md shows, each as a scene of its own.
std::vector<std::string> examples() {
    std::vector<std::string> scenes;
    const std::string page = host::readSceneFile(fs::path(DORVALE_DOCS) / "scene.md");
    const std::string opening = "```json\n";
    for (std::size_t at = page.find(opening); at != std::string::npos;
         at = page.find(opening, at)) {
        at += opening.size();
        const std::string example = page.substr(at, page.find("```", at) - at);
        const bool isScene = example.find("\"annotations\"") != std::string::npos;
        scenes.push_back(isScene ? example : "{\"annotations\": [" + example + "]}");
    }
    return scenes;
}

TEST(ScenePage, ItsExamplesAreDrawn) {
    EXPECT_GE(examples().size(), host::calls().size());
    for (const std::string& scene : examples()) {
        EXPECT_NE(host::drawScene(scene).find("<text class=\"text\""), std::string::npos) << scene;
    }
}

/// What a call has done to an annotation that had these values before.
struct Before {
    static constexpr auto kType = static_cast<AnkPMITypeEnum>(99);
    static constexpr unsigned kDim = 77;
    static constexpr float kCorner = 99;
    bool flag;

    void putInto(Ank_PMI& pmi) const {
        ANK_MTX32 plane;
        plane.m[3][3] = kCorner;
        pmi.SetType(kType);
        pmi.SetDim(kDim);
        pmi.SetDefPlane(plane);
        pmi.SetDisplay(flag);
        pmi.SetParallelScreen(flag);
    }
};

std::string flagCell(bool afterFalse, bool afterTrue) {
    return afterFalse == afterTrue ? (afterTrue ? "true" : "false") : "-";
}

std::string cells(const std::string& call, const Ank_PMI& wasFalse, const Ank_PMI& wasTrue,
                  const host::CallResult& result) {
    std::ostringstream row;
    row << "| `" << call << "` | ";
    wasTrue.GetType() == Before::kType ? row << '-' : row << wasTrue.GetType();
    row << " | " << flagCell(wasFalse.GetDisplay(), wasTrue.GetDisplay()) << " | "
        << flagCell(wasFalse.GetParallelScreen(), wasTrue.GetParallelScreen()) << " | ";
    wasTrue.GetDim() == Before::kDim ? row << '-' : row << wasTrue.GetDim();
    row << " | " << (wasTrue.GetDefPlane().m[3][3] == Before::kCorner ? "-" : "set") << " | ";
    if (!result.status) {
        row << "none";
    } else if (*result.status == host::kUntouched) {
        row << '-';
    } else {
        row << *result.status;
    }
    row << " |\n";
    return row.str();
}

/// Builds an example and notes what its last call does to the annotation.
void addRow(const std::string& text, std::map<std::string, std::string>& rows) {
    const host::Scene scene(text);
    const host::Object annotation(scene.annotation(0));
    Ank_PMI pmis[2];
    host::CallResult result;
    for (const bool flag : {false, true}) {
        host::Object members(annotation);
        std::vector<host::Value> calls{members.value()};
        if (const auto list = members.find("calls")) {
            calls = list->items();
        }
        for (const host::Value& call : calls) {
            host::Object callMembers(call);
            host::SceneArguments arguments(scene, callMembers);
            Before{flag}.putInto(pmis[flag]);
            result = {};
            result.call = host::findCall(callMembers.at("call").text())->name;
            host::findCall(result.call)->make(arguments, pmis[flag], result);
        }
    }
    rows[result.call] = cells(result.call, pmis[0], pmis[1], result);
}

TEST(FlagsPage, TellsWhatCallsSet) {
    std::map<std::string, std::string> rows;
    for (const std::string& example : examples()) {
        addRow(example, rows);
    }
    std::string table;
    for (const host::Call& call : host::calls()) {
        const bool isEntryPoint = std::string_view(call.name).starts_with("PMI");
        table += isEntryPoint ? rows[call.name] : "";
    }
    const fs::path path = fs::path(DORVALE_DOCS) / "flags.md";
    const std::string page = host::readSceneFile(path);
    const std::size_t from = page.find("| `PMI");
    const std::size_t to = page.find("\n\n", from) + 1;
    if (page.substr(from, to - from) != table) {
        const fs::path made = fs::path(DORVALE_DRAWN) / "flags.md";
        fs::create_directories(made.parent_path());
        host::writeFile(made, page.substr(0, from) + table + page.substr(to));
        ADD_FAILURE() << "its table is another. If that is right: cp " << made.string() << ' '
                      << path.string();
    }
}

} // namespace
