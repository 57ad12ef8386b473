#include "host/step/write/livepage.h"

#include "host/step/write/write.h"

namespace host::step {
namespace {

/// Where the viewer's page looks for a part of its own.
constexpr std::string_view kPlace = R"(<script type="application/json" id="part">)";

/// JSON that a script element can hold: nothing in it ends the element.
std::string embedded(const nlohmann::ordered_json& json) {
    const std::string text =
        json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        if (c == '<') {
            escaped += "\\u003c";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

} // namespace

std::string livePageOf(const Drawing& drawing, const Body& body, const std::string& viewer) {
    const std::size_t place = viewer.find(kPlace);
    if (place == std::string::npos || viewer.find(kPlace, place + 1) != std::string::npos) {
        throw StepError("is not the viewer's page, which ./dev viewer makes");
    }
    nlohmann::ordered_json scene = sceneOf(drawing.sheets, body, drawing.model);
    if (drawing.model.title.empty()) {
        scene["title"] = drawing.file;
    }
    std::string page = viewer;
    return page.insert(place + kPlace.size(),
                       embedded({{"scene", std::move(scene)}, {"report", reportJson(drawing)}}));
}

} // namespace host::step
