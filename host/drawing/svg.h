/// @file
/// Pictures as SVG. One user unit is one millimetre of the model, y runs downwards, and numbers
/// have three decimals, so that the same picture is the same file everywhere.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/geometry/vectors.h"
#include "host/scene/lines.h"

namespace host {

/// Three decimals, never -0.
std::string svgNumber(double value);

/// Text as it may stand in XML: between tags and in attributes.
std::string xmlText(std::string_view utf8);

/// What a picture covers, on paper.
class Extent {
public:
    void add(Vec2 p);
    void add(const Extent& other);
    bool empty() const { return low_.x > high_.x; }
    Vec2 low() const { return low_; }
    Vec2 high() const { return high_; }

private:
    Vec2 low_{HUGE_VAL, HUGE_VAL};
    Vec2 high_{-HUGE_VAL, -HUGE_VAL};
};

/// Lines and curves on paper. A path that no picture can show stays out of it.
class Path {
public:
    void moveTo(Vec2 p);
    void lineTo(Vec2 p);
    /// Part of an ellipse: center + cos t * x + sin t * y, from one t to another.
    void arc(Vec2 center, Vec2 x, Vec2 y, double start, double end);
    void close() { data_ += 'Z'; }

    /// Whether every point can stand in a picture.
    bool drawable() const { return drawable_; }
    const std::string& data() const { return data_; }
    const Extent& extent() const { return extent_; }

private:
    void append(char command, Vec2 p);
    void append(Vec2 p);

    std::string data_;
    Extent extent_;
    bool drawable_ = true;
};

/// Text on paper: where its base line starts, and what its em square's sides become.
struct PlacedText {
    std::string text;
    std::string font;
    Vec2 start;
    Vec2 right;
    Vec2 up;
    /// The em square's height in the model.
    double height;
    /// Added to each character, in em.
    double spacing;
    /// How wide the text is in any font, in em.
    std::optional<double> width;
};

class Svg {
public:
    /// Opens a group; `attributes` starts with a blank.
    void open(const std::string& className, const std::string& attributes = "");
    void close();
    void path(const std::string& className, const Path& path, const std::string& attributes = "");
    void text(const PlacedText& text);
    /// Says that the picture has hidden edges: paths of the class `hidden`.
    void useHiddenEdges() { hasHidden_ = true; }
    /// Widens the picture without drawing.
    void cover(const Extent& extent) { extent_.add(extent); }

    /// The finished file.
    std::string finish(const std::string& title, LineStyle lines) const;

private:
    std::string body_;
    std::string indent_ = "  ";
    Extent extent_;
    bool hasHidden_ = false;
};

} // namespace host
