// Angles on arcs about their vertex, with the text outside the part.
#include <algorithm>

#include "host/step/place.h"

namespace host::step {
namespace {

constexpr int kMostTrials = 400;

/// The directions of a cone's generators, or of one and its axis, once the view is known.
void turnIntoView(Corner& corner, const View& view) {
    const Vec3 aside = unit(cross(view.towardsViewer, corner.axis));
    corner.normal = view.towardsViewer;
    for (const std::size_t i : {0U, 1U})
        corner.directions[i] =
            std::cos(corner.turns[i]) * corner.axis + std::sin(corner.turns[i]) * aside;
}

struct AngleTrial {
    double radius = 0;
    Vec2 direction{};
};

class AnglePlacer {
public:
    AnglePlacer(Sheet& sheet, const Item& item) : sheet_(sheet), item_(item) {
        corner_ = item.outcome->geometry.corner;
        if (corner_.turnsAbout)
            turnIntoView(corner_, sheet.view);
        vertex_ = sheet.view.onPaper(corner_.vertex);
    }

    void place() {
        const Vec3 bisector = unit(corner_.directions[0] + corner_.directions[1]);
        const Vec2 ahead = sheet_.view.onPaper(bisector);
        const AngleTrial front = outside(ahead);
        const AngleTrial back = outside(-1.0 * ahead);
        // The opposite angle shows the same value, at the price of longer extensions.
        constexpr double kPrice = 1.5;
        add(back.radius * kPrice < front.radius ? back : front);
    }

private:
    Plate plate(const AngleTrial& trial) const {
        const Vec2 at = vertex_ + trial.radius * trial.direction;
        const double width = sheet_.widthOf(item_.outcome->text);
        const double height = sheet_.textHeight;
        // The text starts at its point and may run to either side of it along the arc.
        return {at, leftOf(trial.direction), width + 0.5 * height, 1.5 * height};
    }

    bool fits(const AngleTrial& trial) const {
        const Plate text = plate(trial);
        const auto meetsText = [&](const PaperLine& line) {
            return text.meets(line.start, line.end);
        };
        return sheet_.isFree(text) &&
               std::none_of(sheet_.lines.begin(), sheet_.lines.end(), meetsText) &&
               std::none_of(sheet_.extensions.begin(), sheet_.extensions.end(), meetsText);
    }

    /// The nearest free place along a ray from the vertex.
    AngleTrial outside(Vec2 direction) const {
        const double step = sheet_.textHeight;
        AngleTrial trial{5 * step, direction};
        for (int i = 0; i < kMostTrials && !fits(trial); ++i)
            trial.radius += step;
        return trial;
    }

    void add(const AngleTrial& trial) {
        const View& view = sheet_.view;
        sheet_.texts.push_back(plate(trial));
        Annotation annotation;
        annotation.dimension = item_.dimension;
        annotation.shown = Shown::Angle;
        annotation.text = item_.outcome->text;
        annotation.boxed = item_.outcome->boxed;
        annotation.locate = corner_.vertex +
                            view.inModel(trial.radius * trial.direction, 0);
        const double sign =
            dot(trial.direction, view.onPaper(corner_.directions[0] + corner_.directions[1])) < 0 ? -1 : 1;
        for (const std::size_t i : {0U, 1U}) {
            const Vec3& direction = corner_.directions[i];
            const Range range = visibleRange(corner_.ranges[i]);
            annotation.edges[i] = {corner_.vertex + range.low * direction,
                                   corner_.vertex + range.high * direction};
            annotation.picks[i] = corner_.vertex + range.high * direction;
            const Vec2 way = sign * view.onPaper(direction);
            sheet_.extensions.push_back(
                {vertex_ + range.high * way, vertex_ + trial.radius * way});
            sheet_.lines.push_back({vertex_ + trial.radius * way,
                                    vertex_ + trial.radius * trial.direction});
        }
        sheet_.annotations.push_back(std::move(annotation));
    }

    /// Of a side that lies behind the vertex nothing is in front of it: a stub stands for it.
    Range visibleRange(const Range& range) const {
        const double stub = sheet_.textHeight;
        const double low = std::max(range.low, 0.0);
        return {low, std::max(range.high, low + stub)};
    }

    Sheet& sheet_;
    Item item_;
    Corner corner_;
    Vec2 vertex_;
};

} // namespace

void placeAngles(Sheet& sheet, const std::vector<Item>& items) {
    for (const Item& item : items)
        AnglePlacer(sheet, item).place();
}

} // namespace host::step
