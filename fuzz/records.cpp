// Records of a STEP file, as a damaged one may give them: every dimension has a fate, and every
// view is a scene that the host takes. Damaged bytes on the pipe are refused.
#include "host/scene/build.h"
#include "host/step/write/report.h"
#include "host/step/write/write.h"
#include "target.h"

namespace {

using namespace host::step;
using host::Vec3;

/// Numbers that geometry trips over, among plain ones.
double takeNumber(Input& in) {
    constexpr double kPlain[] = {0, 1, -1, 0.5, 10, 25.4, 100, 12.7};
    const auto kind = in.take<std::uint8_t>();
    switch (kind % 32) {
    case 0:
        return in.take<double>();
    case 1:
        return 1e300;
    case 2:
        return -1e9;
    case 3:
        return 1e-12;
    default:
        return kPlain[kind % std::size(kPlain)] + static_cast<double>(kind >> 6);
    }
}

Vec3 takeVector(Input& in) {
    const double x = takeNumber(in);
    const double y = takeNumber(in);
    return {x, y, takeNumber(in)};
}

Vec3 takeDirection(Input& in) {
    constexpr Vec3 kAxes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, -1}};
    const auto kind = in.take<std::uint8_t>();
    return kind < 200 ? kAxes[kind % std::size(kAxes)] : host::unit(takeVector(in));
}

std::vector<Vec3> takePoints(Input& in) {
    std::vector<Vec3> points(in.take<std::uint8_t>() % 6);
    for (Vec3& point : points) {
        point = takeVector(in);
    }
    return points;
}

template <class Kind> Kind takeKind(Input& in, Kind last) {
    return static_cast<Kind>(in.take<std::uint8_t>() % (static_cast<int>(last) + 1));
}

Edge takeEdge(Input& in) {
    Edge edge;
    edge.kind = takeKind(in, CurveKind::Other);
    edge.start = takeVector(in);
    edge.end = takeVector(in);
    edge.centre = takeVector(in);
    edge.axis = takeDirection(in);
    edge.radius = takeNumber(in);
    edge.length = takeNumber(in);
    edge.points = takePoints(in);
    return edge;
}

Face takeFace(Input& in) {
    Face face;
    face.entity = in.take<std::uint8_t>();
    face.kind = takeKind(in, SurfaceKind::Other);
    face.origin = takeVector(in);
    face.axis = takeDirection(in);
    face.radius = takeNumber(in);
    face.minorRadius = takeNumber(in);
    face.halfAngle = takeNumber(in) / 16;
    face.hollow = in.take<std::uint8_t>() % 2 == 1;
    face.edges.resize(in.take<std::uint8_t>() % 3);
    for (Edge& edge : face.edges) {
        edge = takeEdge(in);
    }
    face.points = takePoints(in);
    return face;
}

Feature takeFeature(Input& in) {
    Feature feature;
    feature.faces.resize(in.take<std::uint8_t>() % 4);
    for (Face& face : feature.faces) {
        face = takeFace(in);
    }
    feature.edges.resize(in.take<std::uint8_t>() % 3);
    for (Edge& edge : feature.edges) {
        edge = takeEdge(in);
    }
    feature.points.resize(in.take<std::uint8_t>() % 2);
    for (Vec3& point : feature.points) {
        point = takeVector(in);
    }
    return feature;
}

std::optional<double> takeOptional(Input& in) {
    return in.take<std::uint8_t>() % 4 == 0 ? std::nullopt : std::optional(takeNumber(in));
}

Dimension takeDimension(Input& in) {
    constexpr const char* kNames[] = {"linear distance", "diameter",     "radius",
                                      "thickness",       "curve length", "spherical radius"};
    Dimension dimension;
    dimension.entity = in.take<std::uint8_t>();
    dimension.kind = takeKind(in, DimensionKind::AngularLocation);
    dimension.name = kNames[in.take<std::uint8_t>() % std::size(kNames)];
    dimension.nominal = takeOptional(in);
    dimension.upper = takeOptional(in);
    dimension.lower = takeOptional(in);
    constexpr const char* kFits[] = {"", "", "H7", "{7", "}", "{.9}"};
    dimension.fit = kFits[in.take<std::uint8_t>() % std::size(kFits)];
    dimension.limits = in.take<std::uint8_t>() % 4 == 0;
    dimension.unitSize = in.take<std::uint8_t>() % 8 == 0 ? takeNumber(in) : 1;
    // None is loose enough for many to agree by chance.
    dimension.decimals = in.take<std::uint8_t>() % 2 == 0 ? std::optional(0) : std::nullopt;
    dimension.modifier = takeKind(in, Modifier::Basic);
    dimension.first = takeFeature(in);
    dimension.second = takeFeature(in);
    return dimension;
}

Model takeModel(Input& in) {
    Model model;
    model.dimensions.resize(in.take<std::uint8_t>() % 6);
    for (Dimension& dimension : model.dimensions) {
        dimension = takeDimension(in);
    }
    model.planes.resize(in.take<std::uint8_t>() % 3);
    for (Face& plane : model.planes) {
        plane = takeFace(in);
        plane.kind = SurfaceKind::Plane;
    }
    model.hull = takePoints(in);
    return model;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const std::string_view bytes(reinterpret_cast<const char*>(data), size);
        require(packModel(unpackModel(bytes)) == bytes);
    } catch (const StepError&) {
        // Not a model's bytes.
    }
    Input in(data, size);
    const Drawing drawing = makeDrawing("part.stp", takeModel(in));
    require(drawing.outcomes.size() == drawing.model.dimensions.size());
    require(!reportText(drawing).empty());
    require(!reportJson(drawing).dump().empty());
    std::size_t shown = 0;
    for (const Sheet& sheet : drawing.sheets) {
        const host::Scene scene(sceneOf(sheet, {}, drawing.model).dump());
        for (std::size_t i = 0; i < scene.annotationCount(); ++i) {
            host::BuiltAnnotation built;
            host::buildAnnotation(scene, i, built);
        }
        shown += sheet.annotations.size();
    }
    require(shown + static_cast<std::size_t>(countOf(drawing, Fate::Refused)) ==
            drawing.outcomes.size());
    return 0;
}
