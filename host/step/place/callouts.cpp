// Radii, diameters and notes: text that stands outside the part, with a leader.
#include <algorithm>

#include "host/step/place/place.h"
#include "host/step/text.h"

namespace host::step {
namespace {

// What speaks against a place, in text heights of leader.
constexpr double kOtherSide = 8;
constexpr double kUnusualSide = 12;
constexpr double kBehindRow = 3;
constexpr double kCrossesText = 200;
constexpr double kCrossesLeader = 40;
constexpr double kCrossesLine = 1.5;
/// A leader that runs nearly level or upright looks like an edge.
constexpr double kLevel = 4;

/// Of the column and the row from what stands already, and between two of them, in text heights.
constexpr double kColumnGap = 2.5;
constexpr double kRowPitch = 2.2;
constexpr int kRows = 4;
constexpr int kMoreRows = 60;

enum class Place { Right, Above, Left, Below };

/// A place for a text: where its leader ends.
struct Slot {
    Place place = Place::Right;
    Vec2 end{};
    int row = 0;
};

/// What a leader can start from.
struct Anchor {
    Vec2 centre{};
    double radius = 0;
    const Circle* circle = nullptr;
};

class CalloutPlacer {
public:
    explicit CalloutPlacer(Sheet& sheet) : sheet_(sheet), height_(sheet.textHeight) {
        across_ = sheet.reach({1, 0});
        upwards_ = sheet.reach({0, 1});
    }

    void place(const Item& item) {
        double least = HUGE_VAL;
        Anchor anchor;
        Slot slot;
        for (const Anchor& candidate : anchorsOf(item)) {
            for (const Slot& at : slots()) {
                if (!isOpen(candidate, at.end) || !sheet_.isFree(plate(item, candidate, at))) {
                    continue;
                }
                const double price = cost(item, candidate, at);
                if (price < least) {
                    least = price;
                    anchor = candidate;
                    slot = at;
                }
            }
        }
        if (!(least < HUGE_VAL)) {
            lastResort(item, anchor, slot);
        }
        add(item, anchor, slot);
    }

private:
    std::vector<Anchor> anchorsOf(const Item& item) const {
        constexpr std::size_t kMost = 12;
        const Geometry& geometry = item.outcome->geometry;
        std::vector<Anchor> anchors;
        if (geometry.shown == Shown::Note) {
            return {{sheet_.view.onPaper(*geometry.target), 0, nullptr}};
        }
        for (const Circle& circle : geometry.circles) {
            if (anchors.size() < kMost &&
                (circle.anyAxis || parallel(circle.axis, sheet_.view.towardsViewer))) {
                anchors.push_back({sheet_.view.onPaper(circle.centre), circle.radius, &circle});
            }
        }
        return anchors;
    }

    /// Every place, near or far: a grid in the column and in the row, and in those across from them
    /// for arcs that are open to nowhere else.
    std::vector<Slot> slots() const {
        std::vector<Slot> all;
        const double gap = kColumnGap * height_;
        constexpr double kMostSteps = 300;
        const double size = std::max(across_.size(), upwards_.size());
        const double step = std::max(0.55 * height_, size / kMostSteps);
        double v = upwards_.low - 6 * height_;
        while (v < upwards_.high + 8 * height_) {
            all.push_back({Place::Right, {across_.high + gap, v}, 0});
            all.push_back({Place::Left, {across_.low - gap, v}, 0});
            v += step;
        }
        for (int row = 0; row < kRows; ++row) {
            const double out = row * kRowPitch * height_;
            double u = across_.low - 8 * height_;
            while (u < across_.high + 8 * height_) {
                all.push_back({Place::Above, {u, upwards_.high + gap + out}, row});
                all.push_back({Place::Below, {u, upwards_.low - gap - out}, row});
                u += step;
            }
        }
        return all;
    }

    static bool isNote(const Item& item) { return item.outcome->geometry.shown == Shown::Note; }

    double widthOf(const Item& item) const {
        const std::vector<std::string>& text = item.outcome->text;
        return isNote(item) ? sheet_.noteWidthOf(oneLine(text)) : sheet_.widthOf(text);
    }

    double heightOf(const Item& item) const {
        return isNote(item) ? sheet_.heightOf({""}) : sheet_.heightOf(item.outcome->text);
    }

    /// Beyond the end of its leader, level with it; above or below the end of a steep one.
    Plate plate(const Item& item, const Anchor& anchor, const Slot& slot) const {
        constexpr double kSteep = 0.26;
        const double halfWidth = widthOf(item) / 2;
        const double halfHeight = heightOf(item) / 2;
        const double gap = kTextGap * height_;
        const Vec2 way = slot.end - anchor.centre;
        const bool steep = std::abs(way.x) < kSteep * length(way);
        const Vec2 off = steep ? Vec2{0, std::copysign(gap + halfHeight, way.y)}
                               : Vec2{std::copysign(gap + halfWidth, way.x), 0};
        return {slot.end + off, {1, 0}, halfWidth, halfHeight};
    }

    /// Whether a leader from the text to the circle's centre meets the arc that is there.
    bool isOpen(const Anchor& anchor, Vec2 text) const {
        if (anchor.circle == nullptr) {
            return true;
        }
        const Circle& circle = *anchor.circle;
        if (length(text - anchor.centre) < 1.2 * anchor.radius) {
            return false;
        }
        if (circle.anyAxis || length(circle.start - circle.end) < 1e-9) {
            return true;
        }
        const Vec3 way = sheet_.view.inModel(text - anchor.centre, 0);
        const Vec3 x = circle.start - circle.centre;
        const Vec3 y = cross(circle.axis, x);
        constexpr double kFromEnds = 0.05;
        const double sweep = sweepTo(circle.end - circle.centre, x, y);
        const double at = sweepTo(way, x, y);
        return at > kFromEnds * sweep && at < (1 - kFromEnds) * sweep;
    }

    static PaperLine leader(const Anchor& anchor, Vec2 text) {
        const Vec2 way = text - anchor.centre;
        const double size = length(way);
        return {size > 0 ? anchor.centre + anchor.radius / size * way : anchor.centre, text};
    }

    Place preferred(const Anchor& anchor) const {
        return anchor.centre.x >= sheet_.across.middle() - 1e-6 * height_ ? Place::Right
                                                                          : Place::Above;
    }

    double cost(const Item& item, const Anchor& anchor, const Slot& slot) const {
        const PaperLine line = leader(anchor, slot.end);
        double price = length(line.end - line.start) / height_;
        if (slot.place != preferred(anchor)) {
            price += slot.place == Place::Right || slot.place == Place::Above ? kOtherSide
                                                                              : kUnusualSide;
        }
        price += kBehindRow * slot.row;
        const Vec2 way = line.end - line.start;
        const double slope = std::abs(way.y) / (std::abs(way.x) + 1e-9 * height_);
        if (slope < 0.12 || slope > 8) {
            price += kLevel;
        }
        const auto meets = [&](const Plate& text) { return text.meets(line.start, line.end); };
        price += kCrossesText * static_cast<double>(
                                    std::count_if(sheet_.texts.begin(), sheet_.texts.end(), meets));
        for (const PaperLine& other : leaders_) {
            price += crossing(other, line) ? kCrossesLeader : 0;
        }
        for (const PaperLine& other : sheet_.lines) {
            price += crossing(other, line) ? kCrossesLine : 0;
        }
        // Nor may a text stand on lines.
        const Plate own = plate(item, anchor, slot);
        using Lines = const std::vector<PaperLine>*;
        for (const Lines list :
             {Lines(&sheet_.lines), Lines(&sheet_.extensions), Lines(&leaders_)}) {
            for (const PaperLine& other : *list) {
                price += own.meets(other.start, other.end) ? kCrossesText : 0;
            }
        }
        return price;
    }

    /// Further and further out above everything: there it is free.
    void lastResort(const Item& item, Anchor& anchor, Slot& slot) const {
        const std::vector<Anchor> anchors = anchorsOf(item);
        if (!anchors.empty()) {
            anchor = anchors.front();
        }
        for (int row = 0; row < kMoreRows; ++row) {
            slot = {
                Place::Above,
                {across_.low, upwards_.high + (kColumnGap + (kRows + row) * kRowPitch) * height_},
                row};
            if (sheet_.isFree(plate(item, anchor, slot))) {
                return;
            }
        }
    }

    void add(const Item& item, const Anchor& anchor, const Slot& slot) {
        const Geometry& geometry = item.outcome->geometry;
        const PaperLine line = leader(anchor, slot.end);
        sheet_.texts.push_back(plate(item, anchor, slot));
        sheet_.lines.push_back(line);
        leaders_.push_back(line);
        Annotation annotation;
        annotation.dimension = item.dimension;
        annotation.shown = geometry.shown;
        annotation.text = item.outcome->text;
        if (isNote(item)) {
            annotation.text = {oneLine(item.outcome->text)};
        }
        annotation.boxed = item.outcome->boxed;
        double depth = sheet_.depth;
        if (anchor.circle != nullptr) {
            annotation.circle = *anchor.circle;
            if (annotation.circle.anyAxis) {
                turnToViewer(annotation.circle);
            }
            depth = dot(annotation.circle.centre, sheet_.view.towardsViewer);
        } else if (geometry.target) {
            annotation.target = geometry.target;
            depth = dot(*geometry.target, sheet_.view.towardsViewer);
        }
        annotation.locate = sheet_.view.inModel(slot.end, depth);
        sheet_.annotations.push_back(std::move(annotation));
    }

    void turnToViewer(Circle& circle) const {
        circle.axis = sheet_.view.towardsViewer;
        circle.start = circle.end = circle.centre + circle.radius * sheet_.view.right;
    }

    Sheet& sheet_;
    double height_;
    Range across_;
    Range upwards_;
    std::vector<PaperLine> leaders_;
};

} // namespace

void placeCallouts(Sheet& sheet, const std::vector<Item>& items) {
    CalloutPlacer placer(sheet);
    for (const Item& item : items) {
        placer.place(item);
    }
}

} // namespace host::step
