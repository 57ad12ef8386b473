/// @file
/// The command line of pmi-step.
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/drawing/draw.h"
#include "host/output/json.h"
#include "host/step/modelprocess.h"
#include "host/step/write/livepage.h"
#include "host/step/write/page.h"
#include "host/step/write/report.h"
#include "host/step/write/write.h"
#include "host/system/console.h"
#include "host/system/files.h"

namespace {

namespace fs = std::filesystem;
using namespace host::step;

constexpr int kSomeRefused = 1;
constexpr int kFailure = 2;
constexpr std::uintmax_t kLargestFile = std::uintmax_t{256} << 20;

struct Options {
    std::string file;
    /// A directory, or the file of a page.
    std::string output;
    std::string view;
    /// The viewer's page.
    std::string viewer;
    bool json = false;
    bool force = false;
    int seconds = 120;
    std::size_t memory = 4096;
};

/// Holds Ctrl-C back, so that what is being written is written whole.
class WholeFiles {
public:
    WholeFiles() {
        sigset_t interrupts;
        sigemptyset(&interrupts);
        sigaddset(&interrupts, SIGINT);
        sigaddset(&interrupts, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &interrupts, &before_);
    }
    WholeFiles(const WholeFiles&) = delete;
    WholeFiles& operator=(const WholeFiles&) = delete;
    ~WholeFiles() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t before_{};
};

struct OutputFile {
    fs::path path;
    std::string bytes;
};

void checkFile(const Options& options) {
    std::error_code error;
    const fs::file_status status = fs::status(options.file, error);
    if (error || !fs::exists(status)) {
        throw StepError("cannot be read");
    }
    if (fs::is_directory(status)) {
        throw StepError("is a directory");
    }
    const std::uintmax_t size = fs::file_size(options.file, error);
    if (error) {
        throw StepError("cannot be read");
    }
    if (size > kLargestFile && !options.force) {
        throw StepError("has more than 256 MiB; --force reads it all the same");
    }
}

std::string textOf(const nlohmann::ordered_json& json) {
    std::string text;
    host::appendText(text, json, 0);
    return text + '\n';
}

/// The sheets that were asked for.
std::vector<const Sheet*> chosenSheets(const Drawing& drawing, const std::string& view) {
    std::vector<const Sheet*> chosen;
    std::string names;
    for (const Sheet& sheet : drawing.sheets) {
        if (view.empty() || sheet.view.name == view) {
            chosen.push_back(&sheet);
        }
        names += (names.empty() ? "" : ", ") + sheet.view.name;
    }
    if (chosen.empty()) {
        throw StepError("there is no view " + view + ", only " + names);
    }
    return chosen;
}

/// Scenes, and with `withPictures` what they look like.
std::vector<OutputFile> filesOf(Drawing& drawing, ModelProcess& process, const Options& options,
                                bool withPictures, host::ProgressLine& progress) {
    std::vector<OutputFile> files;
    std::vector<DrawnView> drawn;
    const fs::path directory = options.output;
    for (const Sheet* sheet : chosenSheets(drawing, options.view)) {
        const std::string& name = sheet->view.name;
        const Picture picture = process.picture(sheet->view.right, sheet->view.up,
                                                progress.doing("finding the lines of " + name));
        if (picture.fromMesh) {
            drawing.remarks.push_back("the lines of " + name +
                                      " come from the part's mesh: the exact ones took too long");
        }
        std::string scene = textOf(sceneOf(*sheet, picture, drawing.model));
        if (withPictures) {
            drawn.push_back({name, host::drawScene(scene)});
            files.push_back({directory / (name + ".svg"), drawn.back().svg});
        }
        files.push_back({directory / (name + ".json"), std::move(scene)});
    }
    if (withPictures) {
        files.push_back({directory / "index.html", pageOf(drawing, drawn)});
    }
    return files;
}

/// The viewer's page as it is installed beside this program, or built with it.
fs::path viewerBeside() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    const fs::path installed = program.parent_path().parent_path() / DORVALE_SHARE / "viewer.html";
    return !error && fs::exists(installed, error) ? installed : fs::path(DORVALE_VIEWER);
}

std::string viewerPage(const Options& options) {
    const fs::path path = options.viewer.empty() ? viewerBeside() : fs::path(options.viewer);
    std::ifstream file(path, std::ios::binary);
    std::string page{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (page.empty()) {
        throw host::FileError(path.string() +
                              ": the viewer's page is not there; ./dev viewer makes it, and "
                              "--viewer names another one");
    }
    return page;
}

OutputFile livePage(const Drawing& drawing, const Body& body, const Options& options,
                    const std::string& viewer) {
    try {
        return {options.output, livePageOf(drawing, body, viewer)};
    } catch (const StepError& error) {
        throw host::FileError(options.viewer + ": " + error.what());
    }
}

void writeAll(const std::vector<OutputFile>& files) {
    const WholeFiles whole;
    const fs::path directory = files.front().path.parent_path();
    std::error_code error;
    if (!directory.empty()) {
        fs::create_directories(directory, error);
    }
    if (error) {
        throw host::FileError(directory.string() + ": cannot be made");
    }
    for (const OutputFile& file : files) {
        host::writeFile(file.path, file.bytes);
    }
}

enum class Task { Report, Scenes, Draw, Page };

int run(const Options& options, Task task) {
    Drawing drawing;
    std::vector<OutputFile> files;
    const std::string viewer = task == Task::Page ? viewerPage(options) : "";
    try {
        checkFile(options);
        host::ProgressLine progress;
        Limits limits;
        limits.time = std::chrono::seconds(options.seconds);
        limits.memory = options.memory;
        ModelProcess process(options.file, limits);
        drawing = makeDrawing(fs::path(options.file).filename().string(),
                              process.model(progress.doing("reading " + options.file)));
        if (task == Task::Page) {
            const Body body = process.body(progress.doing("finding the faces"));
            files.push_back(livePage(drawing, body, options, viewer));
        } else if (task != Task::Report) {
            files = filesOf(drawing, process, options, task == Task::Draw, progress);
        }
    } catch (const StepError& error) {
        throw StepError(options.file + ": " + error.what());
    } catch (const std::bad_alloc&) {
        throw StepError(options.file + ": needs more memory than there is");
    }
    if (task != Task::Report) {
        writeAll(files);
    }
    host::print(options.json ? textOf(reportJson(drawing)) : reportText(drawing));
    if (!options.json && (task == Task::Draw || task == Task::Page)) {
        const fs::path page = options.output;
        host::print((task == Task::Draw ? page / "index.html" : page).string() + '\n');
    }
    return countOf(drawing, Fate::Refused) > 0 ? kSomeRefused : 0;
}

void addOptions(CLI::App& command, Options& options) {
    command.add_option("PART", options.file, "The STEP file")->required();
    command.add_flag("--json", options.json, "Report as JSON");
    command.add_flag("--force", options.force, "Read a file of more than 256 MiB");
    command.add_option("--seconds", options.seconds, "How long reading may take")
        ->check(CLI::Range(1, 86400))
        ->capture_default_str();
    command.add_option("--memory", options.memory, "How many MiB reading may take")
        ->check(CLI::Range(64, 1 << 20))
        ->capture_default_str();
}

void addOutput(CLI::App& command, Options& options, Task task) {
    if (task == Task::Page) {
        command.add_option("-o,--output", options.output, "The page's file")->required();
        command.add_option("--viewer", options.viewer,
                           "The viewer's page, if not the installed one");
        return;
    }
    command.add_option("-o,--output", options.output, "A directory for the result")->required();
    command.add_option("--view", options.view, "Only this view: top, front, ...");
}

} // namespace

int main(int argc, char** argv) {
    try {
        CLI::App app("pmi-step: draws the dimensions of a STEP file");
        app.require_subcommand(1);
        Options options;
        int status = 0;
        const auto add = [&](const char* name, const char* what, Task task) {
            CLI::App* command = app.add_subcommand(name, what);
            addOptions(*command, options);
            if (task != Task::Report) {
                addOutput(*command, options, task);
            }
            command->callback([&options, &status, task] { status = run(options, task); });
        };
        add("report", "Say what becomes of each dimension", Task::Report);
        add("scenes", "Write a scene for each view", Task::Scenes);
        add("draw", "Draw each view, and a page of all", Task::Draw);
        add("page", "Make one page to look at, measure and hand on", Task::Page);
        try {
            app.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            return app.exit(error) == 0 ? 0 : kFailure;
        }
        return status;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return kFailure;
    }
}
