/// @file
/// The command line of pmi-host.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/drawing/draw.h"
#include "host/output/dump.h"
#include "host/output/gallery.h"
#include "host/system/files.h"
#include "host/system/platform.h"

namespace {

namespace fs = std::filesystem;

constexpr int kFailure = 2;

/// What the user asked for.
struct Options {
    std::string scene;
    std::optional<std::string> view;
    std::string output;
    std::string directory;
    std::string scenes = DORVALE_SCENES;
    bool png = false;
};

/// A line on a terminal that counts annotations, and goes away with its object.
class ProgressLine {
public:
    ProgressLine() : shown_(host::stderrIsTerminal()) {}
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine() {
        if (written_) {
            std::cerr << "\r\x1b[K" << std::flush;
        }
    }

    host::Progress counter() {
        if (!shown_) {
            return {};
        }
        return [this](std::size_t done, std::size_t all) { count(done, all); };
    }

private:
    void count(std::size_t done, std::size_t all) {
        constexpr std::size_t kEvery = 1000;
        if (done % kEvery != 0) {
            return;
        }
        std::cerr << '\r' << done << " of " << all << " annotations" << std::flush;
        written_ = true;
    }

    bool shown_;
    bool written_ = false;
};

/// Runs one scene's part of a command; what is wrong with the scene is told with its file.
template <class Work> auto ofScene(const fs::path& path, Work work) {
    try {
        return work(host::readSceneFile(path));
    } catch (const host::SceneError& error) {
        throw host::SceneError(path.string() + ": " + error.what());
    } catch (const std::bad_alloc&) {
        throw host::SceneError(path.string() + ": needs more memory than there is");
    }
}

/// The scene as it is to be looked at.
host::Scene sceneSeen(const Options& options, const std::string& text) {
    host::Scene scene(text);
    if (options.view) {
        scene.useView(*options.view);
    }
    return scene;
}

void writePng(const fs::path& svg) {
    const fs::path png = fs::path(svg).replace_extension(".png");
    const fs::path temporary = host::temporaryFor(png);
    if (!host::convertToPng(svg, temporary)) {
        std::error_code ignored;
        fs::remove(temporary, ignored);
        throw host::FileError(png.string() + ": cannot be written");
    }
    host::moveInto(temporary, png);
}

/// Whether PNGs are asked for and can be made; says so where they cannot.
bool makesPng(const Options& options) {
    if (!options.png || host::canConvertToPng()) {
        return options.png;
    }
    std::cerr << "pmi-host: no PNG: rsvg-convert is not installed\n";
    return false;
}

void dump(const Options& options) {
    const std::string text = ofScene(options.scene, [&options](const std::string& scene) {
        ProgressLine progress;
        return host::dumpScene(sceneSeen(options, scene), progress.counter());
    });
    if (!options.output.empty()) {
        host::writeFile(options.output, text);
        return;
    }
    host::makeStdoutBinary();
    if (!std::cout.write(text.data(), static_cast<std::streamsize>(text.size())).flush()) {
        throw host::FileError("standard output: cannot be written");
    }
}

void draw(const Options& options) {
    const std::string svg = ofScene(options.scene, [&options](const std::string& scene) {
        ProgressLine progress;
        return host::drawScene(sceneSeen(options, scene), progress.counter());
    });
    host::writeFile(options.output, svg);
    if (makesPng(options)) {
        writePng(options.output);
    }
}

/// The scenes of a directory, by name.
std::vector<fs::path> findScenes(const fs::path& directory) {
    std::error_code error;
    const fs::directory_iterator entries(directory, error);
    if (error) {
        throw host::FileError(directory.string() + ": cannot be read");
    }
    std::vector<fs::path> scenes;
    for (const fs::directory_entry& entry : entries) {
        if (entry.path().extension() == ".json") {
            scenes.push_back(entry.path());
        }
    }
    std::sort(scenes.begin(), scenes.end());
    return scenes;
}

void gallery(const Options& options) {
    std::vector<host::GalleryPicture> pictures;
    for (const fs::path& path : findScenes(options.scenes)) {
        pictures.push_back(ofScene(path, [&path](std::string scene) {
            return host::makePicture(path.stem().string(), std::move(scene));
        }));
    }
    const fs::path directory = options.directory;
    const bool withPng = makesPng(options);
    std::error_code error;
    fs::create_directories(directory, error);
    if (error) {
        throw host::FileError(directory.string() + ": cannot be made");
    }
    for (const host::GalleryPicture& picture : pictures) {
        const fs::path svg = directory / (picture.name + ".svg");
        host::writeFile(svg, picture.svg);
        if (withPng) {
            writePng(svg);
        }
    }
    host::writeFile(directory / "index.html", host::galleryPage(pictures, withPng));
    std::cout << (directory / "index.html").string() << '\n';
}

void addView(CLI::App& command, Options& options) {
    command.add_option(
        "--view", options.view,
        "The name of the view instead of the scene's own: top, front, right, bottom, "
        "back, left, iso, or one of its \"views\"");
}

void addCommands(CLI::App& app, Options& options) {
    CLI::App* dumpCommand = app.add_subcommand("dump", "Print a scene's annotations as JSON");
    dumpCommand->add_option("SCENE", options.scene, "The scene's file")->required();
    dumpCommand->add_option("-o,--output", options.output, "A file to write instead");
    addView(*dumpCommand, options);
    dumpCommand->callback([&options] { dump(options); });

    CLI::App* drawCommand = app.add_subcommand("draw", "Draw a scene as SVG");
    drawCommand->add_option("SCENE", options.scene, "The scene's file")->required();
    drawCommand->add_option("-o,--output", options.output, "The picture")->required();
    addView(*drawCommand, options);
    drawCommand->add_flag("--png", options.png, "Make a PNG beside it");
    drawCommand->callback([&options] { draw(options); });

    CLI::App* galleryCommand = app.add_subcommand("gallery", "Draw all scenes and a page of them");
    galleryCommand->add_option("DIR", options.directory, "The gallery's directory")->required();
    galleryCommand->add_option("--scenes", options.scenes, "The directory of the scenes")
        ->capture_default_str();
    galleryCommand->add_flag("--png", options.png, "Make PNGs too");
    galleryCommand->callback([&options] { gallery(options); });
}

} // namespace

int main(int argc, char** argv) {
    try {
        CLI::App app("pmi-host: builds the annotations of a scene and draws them");
        app.require_subcommand(1);
        Options options;
        addCommands(app, options);
        try {
            app.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            return app.exit(error) == 0 ? 0 : kFailure;
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return kFailure;
    }
}
