#include "host/step/place/sheet.h"

#include <algorithm>

#include "host/finish/font.h"
#include "host/system/utf8.h"

namespace host::step {
namespace {

/// The library makes a dimension's characters less wide than high, and those of a note as wide.
constexpr double kDimensionWidth = 1 / 1.41421356;
/// Between texts, as a part of their height.
constexpr double kTextMargin = 0.25;

double turn(Vec2 a, Vec2 b, Vec2 c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

double advanceOfLine(const std::string& line) {
    double width = 0;
    for (const wchar_t c : toWide(line)) {
        width += advanceOf(c);
    }
    return width;
}

} // namespace

std::array<Vec2, 4> Plate::corners() const {
    const Vec2 x = halfWidth_ * along_;
    const Vec2 y = halfHeight_ * leftOf(along_);
    return {middle_ - x - y, middle_ + x - y, middle_ + x + y, middle_ - x + y};
}

bool Plate::separatedBy(const Plate& other) const {
    for (const auto& [axis, half] :
         {std::pair{other.along_, other.halfWidth_}, {leftOf(other.along_), other.halfHeight_}}) {
        double low = HUGE_VAL;
        double high = -HUGE_VAL;
        for (const Vec2& corner : corners()) {
            const double at = dot(corner - other.middle_, axis);
            low = std::min(low, at);
            high = std::max(high, at);
        }
        if (low >= half || high <= -half) {
            return true;
        }
    }
    return false;
}

bool Plate::overlaps(const Plate& other) const {
    return !separatedBy(other) && !other.separatedBy(*this);
}

bool Plate::meets(Vec2 start, Vec2 end) const {
    const Vec2 way = end - start;
    const double size = length(way);
    return overlaps({0.5 * (start + end), size > 0 ? (1 / size) * way : Vec2{1, 0}, size / 2, 0});
}

bool crossing(const PaperLine& a, const PaperLine& b) {
    return turn(a.start, a.end, b.start) * turn(a.start, a.end, b.end) < 0 &&
           turn(b.start, b.end, a.start) * turn(b.start, b.end, a.end) < 0;
}

double Sheet::widthOf(const std::vector<std::string>& text) const {
    double width = 0;
    for (const std::string& line : text) {
        width = std::max(width, advanceOfLine(line));
    }
    return width * kDimensionWidth * textHeight;
}

double Sheet::noteWidthOf(const std::string& text) const {
    return advanceOfLine(text) * textHeight;
}

double Sheet::heightOf(const std::vector<std::string>& text) const {
    const auto more = static_cast<double>(std::max<std::size_t>(text.size(), 1) - 1);
    return (kCapitalHeight + more) * textHeight;
}

bool Sheet::isOnPart(const Plate& text) const {
    return text.overlaps(
        {{across.middle(), upwards.middle()}, {1, 0}, across.size() / 2, upwards.size() / 2});
}

bool Sheet::isFree(const Plate& text) const {
    const Plate roomy = text.widened(kTextMargin * textHeight);
    return !isOnPart(roomy) && std::none_of(texts.begin(), texts.end(), [&](const Plate& other) {
        return roomy.overlaps(other);
    });
}

Range Sheet::reach(Vec2 direction) const {
    Range range{HUGE_VAL, -HUGE_VAL};
    const auto add = [&](Vec2 p) {
        range.low = std::min(range.low, dot(p, direction));
        range.high = std::max(range.high, dot(p, direction));
    };
    for (const double x : {across.low, across.high}) {
        for (const double y : {upwards.low, upwards.high}) {
            add({x, y});
        }
    }
    for (const Plate& text : texts) {
        for (const Vec2& corner : text.corners()) {
            add(corner);
        }
    }
    for (const PaperLine& line : lines) {
        add(line.start);
        add(line.end);
    }
    return range;
}

} // namespace host::step
