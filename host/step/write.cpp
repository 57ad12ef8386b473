#include "host/step/write.h"

#include "host/output/json.h"
#include "host/step/place.h"

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
    scene["finish"] = {
        {"arrow", "fit"}, {"gap", number(kTextGap * sheet.textHeight)}, {"readable", true}};
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

} // namespace host::step
