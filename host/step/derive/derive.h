/// @file
/// From a dimension's record to what is drawn of it: the call, its geometry, its text, and what
/// becomes of a dimension that cannot be drawn.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "host/step/derive/elements.h"
#include "host/step/records.h"

namespace host::step {

/// Which annotation shows a dimension.
enum class Shown { Distance, PointDistance, Diameter, Radius, ArcLength, Angle, Note };

/// One end of a distance.
struct Side {
    Vec3 point{};
    /// How far what it belongs to reaches.
    std::vector<Vec3> reach;
    /// Along an axis, where it is one: best seen end-on.
    Vec3 axis{};
};

/// Two sides of an angle that meet in a vertex.
struct Corner {
    Vec3 vertex{};
    Vec3 normal{};
    /// From the vertex along each side.
    std::array<Vec3, 2> directions{};
    /// From where to where each side's feature reaches, measured from the vertex.
    std::array<Range, 2> ranges{};
    /// Of a cone, any normal square to its axis will do; each side is turned from the axis by so
    /// many radians.
    bool turnsAbout = false;
    Vec3 axis{};
    std::array<double, 2> turns{};
};

/// A dimension's geometry, in the model.
struct Geometry {
    Shown shown = Shown::Note;
    /// As the geometry has it, in the dimension's unit.
    std::optional<double> measured;
    /// Of a distance: the way it is measured, and its ends.
    Vec3 direction{};
    std::array<Side, 2> sides;
    /// Of a diameter, a radius or an arc's length: each of them would do.
    std::vector<Circle> circles;
    Corner corner;
    /// What a note points to; nothing for a note at the part's corner.
    std::optional<Vec3> target;
    /// Out of the part at the target.
    Vec3 targetNormal{};
    /// How many features are alike.
    int places = 1;
};

enum class Fate { Drawn, Noted, Refused };

struct Outcome {
    Fate fate = Fate::Refused;
    /// Why it is not drawn.
    std::string reason;
    /// Its lines of text.
    std::vector<std::string> text;
    bool boxed = false;
    Geometry geometry;
};

Outcome derive(const Dimension& dimension, const Model& model);

/// Makes a note of a dimension whose nominal the part contradicts, or that gives no number.
void contradict(const Dimension& dimension, std::optional<double> measured, Outcome& outcome);

/// How far the measured number may be from the nominal, in the dimension's unit.
double allowance(const Dimension& dimension);
bool agrees(const Dimension& dimension, double measured);

/// What `derive` is made of: each gives its best answer, agreeing with the nominal or not, or
/// nothing where it has no rule.
std::optional<Geometry> deriveDistance(const Dimension& dimension, const Model& model);
std::optional<Geometry> deriveRound(const Dimension& dimension);
std::optional<Geometry> deriveAngle(const Dimension& dimension);
std::optional<Geometry> deriveArcLength(const Dimension& dimension);

} // namespace host::step
