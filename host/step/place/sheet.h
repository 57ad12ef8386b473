/// @file
/// A view while it is filled: where the part is, and which texts and lines stand already.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "host/geometry/edges.h"
#include "host/step/place/views.h"

namespace host::step {

/// A rectangle on paper, turned or not.
class Plate {
public:
    /// From its middle: half its width along a unit direction, half its height across.
    Plate(Vec2 middle, Vec2 along, double halfWidth, double halfHeight)
        : middle_(middle), along_(along), halfWidth_(halfWidth), halfHeight_(halfHeight) {}

    bool overlaps(const Plate& other) const;
    bool meets(Vec2 start, Vec2 end) const;
    Plate widened(double by) const { return {middle_, along_, halfWidth_ + by, halfHeight_ + by}; }
    std::array<Vec2, 4> corners() const;

private:
    bool separatedBy(const Plate& other) const;

    Vec2 middle_;
    Vec2 along_;
    double halfWidth_;
    double halfHeight_;
};

struct PaperLine {
    Vec2 start;
    Vec2 end;
};

bool crossing(const PaperLine& a, const PaperLine& b);

/// An annotation that has found its place; points in the model.
struct Annotation {
    /// Which dimension, by its place in the model's list.
    std::size_t dimension = 0;
    Shown shown = Shown::Note;
    std::vector<std::string> text;
    bool boxed = false;
    Vec3 locate{};
    /// Of a distance, and of an angle.
    std::array<LineEdge, 2> edges{};
    std::array<Vec3, 2> picks{};
    /// The second end of a point's distance.
    Vec3 point{};
    Circle circle;
    /// Of a note.
    std::optional<Vec3> target;
};

/// A view with its annotations.
struct Sheet {
    View view;
    /// The part, on paper.
    Range across;
    Range upwards;
    /// In front of everything.
    double depth = 0;
    double textHeight = 1;

    std::vector<Plate> texts;
    /// Of dimensions and leaders; of extension lines.
    std::vector<PaperLine> lines;
    std::vector<PaperLine> extensions;
    std::vector<Annotation> annotations;

    /// How wide a dimension's text is, and a note's, which the library writes wider.
    double widthOf(const std::vector<std::string>& text) const;
    double noteWidthOf(const std::string& text) const;
    /// From the foot of the last line to the capitals of the first.
    double heightOf(const std::vector<std::string>& text) const;
    bool isOnPart(const Plate& text) const;
    bool isFree(const Plate& text) const;
    /// How far everything reaches, the part included.
    Range reach(Vec2 direction) const;
};

} // namespace host::step
