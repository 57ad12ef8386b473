#include "host/step/sheet.h"

#include <algorithm>

namespace host::step {
namespace {

/// Of a character, as a part of its height, wide ones included.
constexpr double kCharacterWidth = 0.68;
/// Between texts, as a part of their height.
constexpr double kTextMargin = 0.25;

double turn(Vec2 a, Vec2 b, Vec2 c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

std::size_t characterCount(const std::string& utf8) {
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
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
        if (low >= half || high <= -half)
            return true;
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
    std::size_t longest = 0;
    for (const std::string& line : text)
        longest = std::max(longest, characterCount(line));
    return static_cast<double>(longest) * kCharacterWidth * textHeight;
}

bool Sheet::isOnPart(const Plate& text) const {
    return text.overlaps({{across.middle(), upwards.middle()}, {1, 0}, across.size() / 2, upwards.size() / 2});
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
    for (const double x : {across.low, across.high})
        for (const double y : {upwards.low, upwards.high})
            add({x, y});
    for (const Plate& text : texts)
        for (const Vec2& corner : text.corners())
            add(corner);
    for (const PaperLine& line : lines) {
        add(line.start);
        add(line.end);
    }
    return range;
}

} // namespace host::step
