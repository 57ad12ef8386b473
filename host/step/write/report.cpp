#include "host/step/write/report.h"

#include <algorithm>

#include "host/output/json.h"
#include "host/step/text.h"
#include "host/step/write/verify.h"

namespace host::step {
namespace {

using nlohmann::ordered_json;

const char* kindName(DimensionKind kind) {
    switch (kind) {
    case DimensionKind::Size:
        return "size";
    case DimensionKind::Location:
        return "location";
    case DimensionKind::AngularSize:
        return "angular size";
    case DimensionKind::AngularLocation:
        return "angular location";
    }
    return "";
}

/// Without what is left over of a number that was counted in binary.
ordered_json optionalNumber(const std::optional<double>& value) {
    constexpr double kSteps = 1e9;
    constexpr double kLargest = 1e6;
    if (!value) {
        return nullptr;
    }
    return number(std::abs(*value) < kLargest ? std::round(*value * kSteps) / kSteps : *value);
}

ordered_json dimensionJson(const Drawing& drawing, std::size_t i) {
    const Dimension& dimension = drawing.model.dimensions[i];
    const Outcome& outcome = drawing.outcomes[i];
    ordered_json json;
    json["entity"] = dimension.entity;
    json["kind"] = kindName(dimension.kind);
    json["name"] = dimension.name;
    json["nominal"] = optionalNumber(dimension.nominal);
    json["unit"] = dimension.unit;
    json["upper"] = optionalNumber(dimension.upper);
    json["lower"] = optionalNumber(dimension.lower);
    json["text"] = oneLine(outcome.text);
    json["fate"] = fateName(outcome.fate);
    json["reason"] = outcome.reason;
    json["views"] = viewsOf(drawing, i);
    return json;
}

std::string padded(std::string text, std::size_t width) {
    const auto length =
        static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
            return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
        }));
    // What is wider than its column still ends before the next one.
    text.append(width > length ? width - length : 2, ' ');
    return text;
}

std::string dimensionLine(const Drawing& drawing, std::size_t i) {
    const Dimension& dimension = drawing.model.dimensions[i];
    const Outcome& outcome = drawing.outcomes[i];
    std::string views;
    for (const std::string& view : viewsOf(drawing, i)) {
        views += (views.empty() ? "" : ",") + view;
    }
    const std::string unit = dimension.unit == "deg" ? "" : dimension.unit;
    std::string line = padded('#' + std::to_string(dimension.entity), 8) +
                       padded(fateName(outcome.fate), 9) + padded(views, 8) +
                       padded(oneLine(outcome.text) + (unit.empty() ? "" : " " + unit), 28) +
                       dimension.name;
    if (!outcome.reason.empty()) {
        line += ": " + outcome.reason;
    }
    return line + '\n';
}

/// Turns into notes what the library measures otherwise than the file says; whether there were any.
bool contradictedByLibrary(Drawing& drawing) {
    bool any = false;
    for (const Sheet& sheet : drawing.sheets) {
        for (const Annotation& annotation : sheet.annotations) {
            const Dimension& dimension = drawing.model.dimensions[annotation.dimension];
            Outcome& outcome = drawing.outcomes[annotation.dimension];
            if (annotation.shown == Shown::Note) {
                continue;
            }
            const auto measured = measuredByLibrary(annotation, sheet, drawing.model);
            if (measured && agrees(dimension, *measured)) {
                continue;
            }
            contradict(dimension, measured, outcome);
            any = true;
        }
    }
    return any;
}

} // namespace

Drawing makeDrawing(std::string file, Model model) {
    Drawing drawing;
    drawing.file = std::move(file);
    drawing.model = std::move(model);
    for (const Dimension& dimension : drawing.model.dimensions) {
        drawing.outcomes.push_back(derive(dimension, drawing.model));
    }
    drawing.sheets = place(drawing.outcomes, drawing.model.hull);
    if (contradictedByLibrary(drawing)) {
        drawing.sheets = place(drawing.outcomes, drawing.model.hull);
    }
    return drawing;
}

std::string unitOf(const Model& model) {
    std::map<std::string, int> votes;
    for (const Dimension& dimension : model.dimensions) {
        if (!dimension.unit.empty() && dimension.unit != "deg") {
            ++votes[dimension.unit];
        }
    }
    const auto most =
        std::max_element(votes.begin(), votes.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == votes.end() ? model.unit : most->first;
}

std::vector<std::string> viewsOf(const Drawing& drawing, std::size_t dimension) {
    std::vector<std::string> views;
    for (const Sheet& sheet : drawing.sheets) {
        for (const Annotation& annotation : sheet.annotations) {
            if (annotation.dimension == dimension) {
                views.push_back(sheet.view.name);
            }
        }
    }
    return views;
}

const char* fateName(Fate fate) {
    switch (fate) {
    case Fate::Drawn:
        return "drawn";
    case Fate::Noted:
        return "noted";
    case Fate::Refused:
        return "refused";
    }
    return "";
}

int countOf(const Drawing& drawing, Fate fate) {
    return static_cast<int>(
        std::count_if(drawing.outcomes.begin(), drawing.outcomes.end(),
                      [fate](const Outcome& outcome) { return outcome.fate == fate; }));
}

ordered_json reportJson(const Drawing& drawing) {
    ordered_json json;
    json["file"] = drawing.file;
    json["unit"] = unitOf(drawing.model);
    json["dimensions"] = ordered_json::array();
    for (std::size_t i = 0; i < drawing.outcomes.size(); ++i) {
        json["dimensions"].push_back(dimensionJson(drawing, i));
    }
    json["counts"] = {
        {"dimensions", drawing.outcomes.size()},  {"drawn", countOf(drawing, Fate::Drawn)},
        {"noted", countOf(drawing, Fate::Noted)}, {"refused", countOf(drawing, Fate::Refused)},
        {"tolerances", drawing.model.tolerances}, {"datums", drawing.model.datums}};
    if (!drawing.remarks.empty()) {
        json["remarks"] = drawing.remarks;
    }
    return json;
}

std::string countsText(const std::map<std::string, int>& counts) {
    std::string text;
    for (const auto& [name, count] : counts) {
        text += (text.empty() ? "" : ", ") + name + ' ' + std::to_string(count);
    }
    return text;
}

std::string reportText(const Drawing& drawing) {
    std::string text;
    for (std::size_t i = 0; i < drawing.outcomes.size(); ++i) {
        text += dimensionLine(drawing, i);
    }
    const std::size_t all = drawing.outcomes.size();
    text += std::to_string(all) + (all == 1 ? " dimension" : " dimensions");
    if (all > 0) {
        text += ": " + std::to_string(countOf(drawing, Fate::Drawn)) + " drawn, " +
                std::to_string(countOf(drawing, Fate::Noted)) + " noted, " +
                std::to_string(countOf(drawing, Fate::Refused)) + " refused";
    }
    text += '\n';
    if (!drawing.model.tolerances.empty()) {
        text += "geometric tolerances, not drawn: " + countsText(drawing.model.tolerances) + '\n';
    }
    if (!drawing.model.datums.empty()) {
        text += "datums, not drawn: " + countsText(drawing.model.datums) + '\n';
    }
    for (const std::string& remark : drawing.remarks) {
        text += remark + '\n';
    }
    return text;
}

} // namespace host::step
