/// @file
/// What JavaScript calls: it writes a scene and the name of a view into the module's memory and has
/// it drawn.

#include <cstdint>
#include <new>
#include <string>
#include <string_view>

#include "host/drawing/draw.h"

#define DORVALE_EXPORT(name) extern "C" __attribute__((visibility("default"), export_name(#name)))

namespace {

std::string input;
std::string output;

/// How a drawing has ended.
enum class Outcome : std::uint32_t { Drawn, Refused, OutOfMemory };

/// UTF-8 that stands until the next call.
struct Result {
    Outcome outcome;
    const char* text;
    std::size_t size;
};

Result result;

const Result* finish(Outcome outcome, std::string text) {
    output = std::move(text);
    result = {outcome, output.data(), output.size()};
    return &result;
}

} // namespace

/// Makes room for the next scene and what follows it; null where there is none.
DORVALE_EXPORT(reserve) char* reserve(std::size_t bytes) {
    try {
        input.clear();
        output.clear();
        input.resize(bytes);
        return input.data();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

/// Draws the scene that stands in the reserved room, seen through the view of which the name
/// follows it; without a name, as the scene says. Gives the picture, or one line on what is wrong.
DORVALE_EXPORT(draw) const Result* drawScene(std::size_t sceneBytes, std::size_t viewBytes) {
    try {
        const std::string view = input.substr(sceneBytes, viewBytes);
        host::Scene scene(std::string_view(input).substr(0, sceneBytes));
        input = {};
        if (!view.empty()) {
            scene.useView(view);
        }
        return finish(Outcome::Drawn, host::drawScene(scene));
    } catch (const host::SceneError& error) {
        return finish(Outcome::Refused, error.what());
    } catch (const std::bad_alloc&) {
        return finish(Outcome::OutOfMemory, {});
    }
}
