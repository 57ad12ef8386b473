#include "host/step/derive.h"

#include <algorithm>
#include <cmath>

#include "host/step/text.h"

namespace host::step {
namespace {

/// What a dimension that names no face says on the drawing: a thread's curve set, for one.
std::string withoutFace(const Dimension& dimension) {
    std::vector<std::string> others = dimension.first.others;
    others.insert(others.end(), dimension.second.others.begin(), dimension.second.others.end());
    const bool curves = std::any_of(others.begin(), others.end(), [](const std::string& kind) {
        return kind.find("CurveSet") != std::string::npos ||
               kind.find("Wireframe") != std::string::npos;
    });
    if (curves)
        return "it names curves without a face, as a cosmetic thread does";
    return others.empty() ? "it names no face and no edge"
                          : "it names no face and no edge, only " + others.front();
}

bool isAngular(const Dimension& dimension) {
    return dimension.kind == DimensionKind::AngularSize ||
           dimension.kind == DimensionKind::AngularLocation;
}

std::optional<Geometry> geometryOf(const Dimension& dimension, const Model& model) {
    if (isAngular(dimension))
        return deriveAngle(dimension);
    if (dimension.name.find("curve") != std::string::npos)
        if (auto arc = deriveArcLength(dimension))
            return arc;
    if (dimension.kind == DimensionKind::Size)
        if (auto round = deriveRound(dimension))
            return round;
    return deriveDistance(dimension, model);
}

/// A point of the feature, and the way out of the part there.
void pointTo(const Feature& feature, Geometry& note) {
    if (!feature.faces.empty()) {
        const Face& face = feature.faces.front();
        if (!face.points.empty())
            note.target = face.kind == SurfaceKind::Plane ? middleOf(face.points) : face.points.front();
        if (face.kind == SurfaceKind::Plane)
            note.targetNormal = face.axis;
    } else if (!feature.edges.empty() && !feature.edges.front().points.empty()) {
        const std::vector<Vec3>& points = feature.edges.front().points;
        note.target = points[points.size() / 2];
    } else if (!feature.points.empty()) {
        note.target = feature.points.front();
    }
}

bool isFinite(const Vec3& v) {
    return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]);
}

void note(const Dimension& dimension, std::string reason, Outcome& outcome) {
    const std::optional<double> measured = outcome.geometry.measured;
    outcome.fate = Fate::Noted;
    outcome.reason = std::move(reason);
    outcome.geometry = Geometry();
    outcome.geometry.measured = measured;
    pointTo(dimension.first.empty() ? dimension.second : dimension.first, outcome.geometry);
    if (outcome.geometry.target && !isFinite(*outcome.geometry.target))
        outcome.geometry.target.reset();
}

std::string disagreement(const Dimension& dimension, double measured) {
    constexpr int kMoreDecimals = 2;
    const int decimals = decimalsOf(dimension);
    return "the part measures " + fixedText(measured, decimals + kMoreDecimals) + " " +
           dimension.unit + " where the file says " +
           fixedText(*dimension.nominal, decimals + kMoreDecimals) + " " + dimension.unit;
}

} // namespace

double allowance(const Dimension& dimension) {
    const double nominal = std::abs(dimension.nominal.value_or(0));
    // What is left over of a number that was counted in binary does not decide.
    const double slack = 1e-9 * std::max(1.0, nominal);
    return slack + (dimension.decimals ? 0.5 * std::pow(10, -*dimension.decimals) : 1e-3 * nominal);
}

bool agrees(const Dimension& dimension, double measured) {
    return std::abs(measured - dimension.nominal.value_or(0)) <= allowance(dimension);
}

Outcome derive(const Dimension& dimension, const Model& model) {
    Outcome outcome;
    if (!dimension.nominal || !std::isfinite(*dimension.nominal)) {
        outcome.reason = "no value";
        return outcome;
    }
    outcome.boxed = dimension.modifier == Modifier::Basic;
    outcome.fate = Fate::Drawn;
    if (auto geometry = geometryOf(dimension, model))
        outcome.geometry = std::move(*geometry);
    const Geometry& geometry = outcome.geometry;
    if (dimension.first.empty() && dimension.second.empty())
        note(dimension, withoutFace(dimension), outcome);
    else if (geometry.shown == Shown::Note)
        note(dimension, "there is no rule for a " + dimension.name + " of what it names", outcome);
    else if (!agrees(dimension, *geometry.measured))
        note(dimension, disagreement(dimension, *geometry.measured), outcome);
    outcome.text = valueText(dimension, outcome.geometry.places);
    return outcome;
}

} // namespace host::step
