#include "host/step/write/write.h"

#include <algorithm>
#include <bit>

#include "host/geometry/views.h"
#include "host/output/json.h"
#include "host/step/place/place.h"

namespace host::step {
namespace {

using nlohmann::ordered_json;

/// Digits that are left over of a number that was counted in binary are not worth writing.
ordered_json rounded(double value) {
    constexpr double kSteps = 1e7;
    return number(std::round(value * kSteps) / kSteps);
}

ordered_json vector(const Vec3& v) {
    return ordered_json::array({rounded(v[0]), rounded(v[1]), rounded(v[2])});
}

ordered_json line(const LineEdge& edge) {
    return {{"type", "line"}, {"start", vector(edge.start)}, {"end", vector(edge.end)}};
}

ordered_json arc(const Vec3& centre, const Vec3& normal, double radius, const Vec3& start,
                 const Vec3& end) {
    return {{"type", "arc"},
            {"centre", vector(centre)},
            {"normal", vector(normal)},
            {"radius", number(radius)},
            {"start", vector(start)},
            {"end", vector(end)}};
}

ordered_json viewMatrix(const View& view) {
    auto matrix = ordered_json::array();
    for (std::size_t row = 0; row < 3; ++row) {
        for (const Vec3* axis : {&view.right, &view.up, &view.towardsViewer}) {
            matrix.push_back(rounded((*axis)[row]));
        }
        matrix.push_back(0);
    }
    for (const int last : {0, 0, 0, 1}) {
        matrix.push_back(last);
    }
    return matrix;
}

bool canStandInScene(const Edge& edge) {
    constexpr double kFarthest = 1e8;
    const auto isNear = [](const Vec3& p) {
        return std::abs(p[0]) < kFarthest && std::abs(p[1]) < kFarthest &&
               std::abs(p[2]) < kFarthest;
    };
    return isNear(edge.start) && isNear(edge.end) &&
           (edge.kind != CurveKind::Circle ||
            (isNear(edge.centre) && edge.radius > 0 && edge.radius < kFarthest));
}

ordered_json edge(const PictureEdge& drawn) {
    const Edge& shape = drawn.edge;
    ordered_json json = shape.kind == CurveKind::Circle
                            ? arc(shape.centre, shape.axis, shape.radius, shape.start, shape.end)
                            : line({shape.start, shape.end});
    if (drawn.hidden) {
        json["hidden"] = true;
    }
    return json;
}

ordered_json noteCall(const Annotation& annotation, const Sheet& sheet) {
    ordered_json call = {{"call", "PMICreateNote3D"}, {"lines", annotation.text}};
    if (annotation.target) {
        call["leader"] = true;
        call["target"] = vector(*annotation.target);
    }
    call["text"] = vector(annotation.locate);
    call["height"] = number(sheet.textHeight);
    return call;
}

void addGeometry(const Annotation& annotation, const Sheet& sheet, ordered_json& call) {
    const Circle& circle = annotation.circle;
    const auto shape = [&] {
        return arc(circle.centre, circle.axis, circle.radius, circle.start, circle.end);
    };
    switch (annotation.shown) {
    case Shown::Distance:
        call["call"] = "PMICreateLinDistDim3D";
        call["edge1"] = line(annotation.edges[0]);
        call["edge2"] = line(annotation.edges[1]);
        break;
    case Shown::PointDistance:
        call["call"] = "PMICreateLinDotDim3D";
        call["edge"] = line(annotation.edges[0]);
        call["point"] = vector(annotation.point);
        break;
    case Shown::Diameter:
        call["call"] = "PMICreateDiameterDim3D";
        call["circle"] = shape();
        break;
    case Shown::Radius:
        call["call"] = "PMICreateRadiusDim3D";
        call["circle"] = shape();
        break;
    case Shown::ArcLength: {
        call["call"] = "PMICreateArcDim3D";
        call["curve"] = shape();
        const Vec3 x = unit(circle.start - circle.centre);
        const Vec3 y = cross(circle.axis, x);
        call["line1"] = line({circle.centre, circle.centre + x});
        call["line2"] = line({circle.centre, circle.centre + y});
        break;
    }
    case Shown::Angle:
        call["call"] = "PMICreateAngleDim3D";
        // A side that comes second in turn makes no reflex angle of it.
        call["angleMode"] = 1;
        call["edge1"] = line(annotation.edges[0]);
        call["pick1"] = vector(annotation.picks[0]);
        call["edge2"] = line(annotation.edges[1]);
        call["pick2"] = vector(annotation.picks[1]);
        break;
    case Shown::Note:
        break;
    }
    call["locate"] = vector(annotation.locate);
    call["height"] = number(sheet.textHeight);
}

/// A label has fields in braces; the text's own are doubled.
std::string withBracesDoubled(const std::string& text) {
    std::string doubled;
    for (const char c : text) {
        doubled.append(c == '{' || c == '}' ? 2 : 1, c);
    }
    return doubled;
}

ordered_json labelOf(const Annotation& annotation) {
    if (annotation.text.size() == 1) {
        return withBracesDoubled(annotation.text.front());
    }
    auto lines = ordered_json::array();
    for (const std::string& line : annotation.text) {
        lines.push_back(withBracesDoubled(line));
    }
    return lines;
}

/// RFC 4648, section 4.
std::string base64(const std::string& bytes) {
    constexpr const char* kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t bits = 0;
        for (std::size_t k = i; k < i + 3; ++k) {
            bits = bits << 8 | (k < bytes.size() ? static_cast<std::uint8_t>(bytes[k]) : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text += i + k <= bytes.size() ? kDigits[bits >> (18 - 6 * k) & 63U] : '=';
        }
    }
    return text;
}

/// Numbers of 32 bits, the lowest byte first.
template <class T> std::string base64(const std::vector<T>& numbers) {
    static_assert(sizeof(T) == 4);
    std::string bytes;
    bytes.reserve(4 * numbers.size());
    for (const T number : numbers) {
        const auto bits = std::bit_cast<std::uint32_t>(number);
        for (int shift = 0; shift < 32; shift += 8) {
            bytes += static_cast<char>(bits >> shift & 0xFFU);
        }
    }
    return base64(bytes);
}

ordered_json meshOf(const Body& body) {
    ordered_json mesh = {{"positions", base64(body.positions)},
                         {"triangles", base64(body.triangles)},
                         {"faces", body.faces}};
    if (!body.curves.empty()) {
        mesh["curves"] = base64(body.curves);
    }
    return mesh;
}

ordered_json finishOf(const Sheet& sheet) {
    return {{"arrow", "fit"}, {"gap", number(kTextGap * sheet.textHeight)}, {"readable", true}};
}

} // namespace

ordered_json annotationOf(const Annotation& annotation, const Sheet& sheet, const Model& model) {
    std::string name = "#";
    name += std::to_string(model.dimensions[annotation.dimension].entity);
    ordered_json json = {{"name", std::move(name)}};
    auto calls = ordered_json::array();
    if (annotation.shown == Shown::Note) {
        json["display"] = true;
        json["screenParallel"] = true;
        json["finish"] = {{"spacing", 0}};
        calls.push_back(noteCall(annotation, sheet));
    } else {
        json["finish"] = {{"label", labelOf(annotation)}};
        ordered_json call;
        addGeometry(annotation, sheet, call);
        calls.push_back(std::move(call));
    }
    if (annotation.boxed) {
        calls.push_back({{"call", "FillEnvelope"},
                         {"backgroundColour", "#ffffff"},
                         {"frameColour", "#0b3d78"}});
    }
    json["calls"] = std::move(calls);
    return json;
}

ordered_json sceneOf(const Sheet& sheet, const Picture& picture, const Model& model) {
    ordered_json scene;
    scene["title"] = (model.title.empty() ? "" : model.title + ", ") + sheet.view.name;
    scene["kind"] = "STEP";
    scene["view"] = viewMatrix(sheet.view);
    scene["lines"] = "iso";
    scene["finish"] = finishOf(sheet);
    scene["edges"] = ordered_json::array();
    for (const PictureEdge& drawn : picture.edges) {
        if (canStandInScene(drawn.edge)) {
            scene["edges"].push_back(edge(drawn));
        }
    }
    scene["annotations"] = ordered_json::array();
    for (const Annotation& annotation : sheet.annotations) {
        scene["annotations"].push_back(annotationOf(annotation, sheet, model));
    }
    return scene;
}

ordered_json sceneOf(const std::vector<Sheet>& sheets, const Body& body, const Model& model) {
    const auto fullest =
        std::max_element(sheets.begin(), sheets.end(), [](const Sheet& a, const Sheet& b) {
            return a.annotations.size() < b.annotations.size();
        });
    ordered_json scene = {
        {"version", 1}, {"title", model.title}, {"kind", "STEP"}, {"view", fullest->view.name}};
    auto views = ordered_json::array();
    auto annotations = ordered_json::array();
    for (const Sheet& sheet : sheets) {
        if (!host::standardView(sheet.view.name)) {
            views.push_back({{"name", sheet.view.name}, {"matrix", viewMatrix(sheet.view)}});
        }
        for (const Annotation& annotation : sheet.annotations) {
            ordered_json json = annotationOf(annotation, sheet, model);
            json["finish"].update(finishOf(sheet));
            json["views"] = {sheet.view.name};
            annotations.push_back(std::move(json));
        }
    }
    scene["views"] = std::move(views);
    scene["mesh"] = meshOf(body);
    auto edges = ordered_json::array();
    for (const Edge& shape : body.edges) {
        if (canStandInScene(shape)) {
            ordered_json json = edge({shape, /*hidden=*/false});
            json["id"] = "edge " + std::to_string(edges.size() + 1);
            edges.push_back(std::move(json));
        }
    }
    scene["edges"] = std::move(edges);
    scene["annotations"] = std::move(annotations);
    return scene;
}

} // namespace host::step
