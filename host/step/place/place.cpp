#include "host/step/place/place.h"

#include <algorithm>

#include "host/step/text.h"

namespace host::step {
namespace {

/// The text's height, as a part of the part's largest side.
constexpr double kTextHeight = 1.0 / 40;
constexpr double kSmallestPart = 1e-3;

double largestSide(const std::vector<Vec3>& hull) {
    double size = 0;
    for (const Vec3& axis : {Vec3{1, 0, 0}, Vec3{0, 1, 0}, Vec3{0, 0, 1}}) {
        size = std::max(size, rangeAlong(hull, axis).size());
    }
    return std::max(size, kSmallestPart);
}

Sheet emptySheet(const View& view, const std::vector<Vec3>& hull) {
    Sheet sheet;
    sheet.view = view;
    sheet.across = rangeAlong(hull, view.right);
    sheet.upwards = rangeAlong(hull, view.up);
    sheet.depth = rangeAlong(hull, view.towardsViewer).high;
    sheet.textHeight = kTextHeight * largestSide(hull);
    return sheet;
}

bool isCallout(const Geometry& geometry) {
    switch (geometry.shown) {
    case Shown::Diameter:
    case Shown::Radius:
        return true;
    case Shown::Note:
        return geometry.target.has_value();
    default:
        return false;
    }
}

bool isOnArc(const Geometry& geometry) {
    return geometry.shown == Shown::Angle || geometry.shown == Shown::ArcLength;
}

/// A part that reaches beyond what a scene can hold is not looked at.
std::vector<Vec3> drawable(const std::vector<Vec3>& hull) {
    constexpr double kFarthest = 1e8;
    std::vector<Vec3> points;
    for (const Vec3& p : hull) {
        if (std::abs(p[0]) < kFarthest && std::abs(p[1]) < kFarthest &&
            std::abs(p[2]) < kFarthest) {
            points.push_back(p);
        }
    }
    return points;
}

} // namespace

std::vector<Sheet> place(const std::vector<Outcome>& outcomes, const std::vector<Vec3>& hull) {
    const std::vector<Vec3> part = drawable(hull);
    const ViewPlan plan = planViews(outcomes, part);
    std::vector<Sheet> sheets;
    for (std::size_t view = 0; view < plan.views.size(); ++view) {
        Sheet& sheet = sheets.emplace_back(emptySheet(plan.views[view], part));
        std::vector<Item> distances;
        std::vector<Item> angles;
        std::vector<Item> callouts;
        std::vector<Item> cornerNotes;
        for (std::size_t i = 0; i < outcomes.size(); ++i) {
            if (plan.viewOf[i] != static_cast<int>(view)) {
                continue;
            }
            const Geometry& geometry = outcomes[i].geometry;
            auto& list = isCallout(geometry)             ? callouts
                         : geometry.shown == Shown::Note ? cornerNotes
                         : isOnArc(geometry)             ? angles
                                                         : distances;
            list.push_back({i, &outcomes[i]});
        }
        placeDistances(sheet, distances);
        placeAngles(sheet, angles);
        placeCallouts(sheet, callouts);
        placeCornerNotes(sheet, cornerNotes);
    }
    return sheets;
}

void placeCornerNotes(Sheet& sheet, const std::vector<Item>& items) {
    constexpr double kBelow = 2.5;
    double foot = sheet.reach({0, 1}).low - kBelow * sheet.textHeight;
    for (const Item& item : items) {
        Annotation note;
        note.dimension = item.dimension;
        note.text = {oneLine(item.outcome->text)};
        note.boxed = item.outcome->boxed;
        const double width = sheet.noteWidthOf(note.text.front());
        const double height = sheet.heightOf(note.text);
        const Vec2 start{sheet.across.low, foot - height};
        note.locate = sheet.view.inModel(start, sheet.depth);
        sheet.texts.push_back({start + Vec2{width / 2, height / 2}, {1, 0}, width / 2, height / 2});
        sheet.annotations.push_back(std::move(note));
        foot -= height + sheet.textHeight;
    }
}

} // namespace host::step
