#include "host/step/derive/derive.h"

#include <algorithm>
#include <cmath>

#include "host/step/text.h"

namespace host::step {
namespace {

/// Whether a dimension that names no face names curves instead, as a thread that is drawn on does.
bool namesCurves(const Dimension& dimension) {
    const auto isCurves = [](const std::string& kind) {
        return kind.find("CurveSet") != std::string::npos ||
               kind.find("Wireframe") != std::string::npos;
    };
    const auto any = [&](const Feature& feature) {
        return std::any_of(feature.others.begin(), feature.others.end(), isCurves);
    };
    return any(dimension.first) || any(dimension.second);
}

std::string withoutFace(const Dimension& dimension) {
    if (namesCurves(dimension)) {
        return "it names curves without a face, as a cosmetic thread does";
    }
    const std::vector<std::string>& others = dimension.first.others;
    return others.empty() ? "it names no face and no edge"
                          : "it names no face and no edge, only " + others.front();
}

bool isAngular(const Dimension& dimension) {
    return dimension.kind == DimensionKind::AngularSize ||
           dimension.kind == DimensionKind::AngularLocation;
}

std::optional<Geometry> geometryOf(const Dimension& dimension, const Model& model) {
    if (isAngular(dimension)) {
        return deriveAngle(dimension);
    }
    if (dimension.name.find("curve") != std::string::npos) {
        if (auto arc = deriveArcLength(dimension)) {
            return arc;
        }
    }
    if (dimension.kind == DimensionKind::Size) {
        if (auto round = deriveRound(dimension)) {
            return round;
        }
    }
    return deriveDistance(dimension, model);
}

/// A point of the feature, and the way out of the part there.
void pointTo(const Feature& feature, Geometry& note) {
    if (!feature.faces.empty()) {
        const Face& face = feature.faces.front();
        if (!face.points.empty()) {
            note.target =
                face.kind == SurfaceKind::Plane ? middleOf(face.points) : face.points.front();
        }
        if (face.kind == SurfaceKind::Plane) {
            note.targetNormal = face.axis;
        }
    } else if (!feature.edges.empty() && !feature.edges.front().points.empty()) {
        const std::vector<Vec3>& points = feature.edges.front().points;
        note.target = points[points.size() / 2];
    } else if (!feature.points.empty()) {
        note.target = feature.points.front();
    }
}

/// Past this, in millimetres, there is nothing to draw.
constexpr double kFarthest = 1e8;

bool canBeDrawn(const Vec3& v) {
    return std::abs(v[0]) < kFarthest && std::abs(v[1]) < kFarthest && std::abs(v[2]) < kFarthest;
}

bool canBeDrawn(const Geometry& geometry) {
    const auto shown = [](const Vec3& v) { return canBeDrawn(v); };
    const auto sideShown = [&](const Side& side) {
        return shown(side.point) && shown(side.axis) &&
               std::all_of(side.reach.begin(), side.reach.end(), shown);
    };
    const auto circleShown = [&](const Circle& circle) {
        return shown(circle.centre) && shown(circle.axis) && shown(circle.start) &&
               shown(circle.end) && circle.radius > 0 && circle.radius < kFarthest;
    };
    const Corner& corner = geometry.corner;
    const auto rangeShown = [&](const Range& range) { return shown({range.low, range.high, 0}); };
    return shown(geometry.direction) &&
           std::all_of(std::begin(geometry.sides), std::end(geometry.sides), sideShown) &&
           std::all_of(geometry.circles.begin(), geometry.circles.end(), circleShown) &&
           shown(corner.vertex) && shown(corner.normal) && shown(corner.directions[0]) &&
           shown(corner.directions[1]) && shown(corner.axis) &&
           std::all_of(std::begin(corner.ranges), std::end(corner.ranges), rangeShown) &&
           shown(geometry.targetNormal) && (!geometry.target || shown(*geometry.target));
}

/// Makes a note of what was to be drawn. What it adds to the text stands in brackets.
void makeNote(const Dimension& dimension, std::string reason, const std::string& added,
              Outcome& outcome) {
    const std::optional<double> measured = outcome.geometry.measured;
    outcome.text = {oneLine(outcome.text) + (added.empty() ? "" : " (" + added + ")")};
    outcome.fate = Fate::Noted;
    outcome.reason = std::move(reason);
    outcome.geometry = Geometry();
    outcome.geometry.measured = measured;
    pointTo(dimension.first.empty() ? dimension.second : dimension.first, outcome.geometry);
    if (!canBeDrawn(outcome.geometry)) {
        outcome.geometry = Geometry();
        outcome.geometry.measured = measured;
    }
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
    if (auto geometry = geometryOf(dimension, model)) {
        outcome.geometry = std::move(*geometry);
    }
    outcome.text = valueText(dimension, outcome.geometry.places);
    if (dimension.first.empty() && dimension.second.empty()) {
        makeNote(dimension, withoutFace(dimension),
                 namesCurves(dimension) ? "cosmetic thread" : dimension.name, outcome);
    } else if (outcome.geometry.shown == Shown::Note) {
        makeNote(dimension, "there is no rule for a " + dimension.name + " of what it names", "",
                 outcome);
    } else if (const auto measured = outcome.geometry.measured;
               !measured || !agrees(dimension, *measured)) {
        contradict(dimension, measured, outcome);
    } else if (!canBeDrawn(outcome.geometry)) {
        makeNote(dimension, "what it names lies too far out to be drawn", "", outcome);
    }
    return outcome;
}

void contradict(const Dimension& dimension, std::optional<double> measured, Outcome& outcome) {
    if (!measured) {
        makeNote(dimension, "what it names gives no number", "", outcome);
        return;
    }
    constexpr int kMoreDecimals = 2;
    const int decimals = decimalsOf(dimension) + kMoreDecimals;
    const std::string part = fixedText(*measured, decimals);
    const std::string file = fixedText(dimension.nominal.value_or(0), decimals);
    makeNote(dimension,
             "the part measures " + part + " " + dimension.unit + " where the file says " + file +
                 " " + dimension.unit,
             "part: " + part, outcome);
}

} // namespace host::step
