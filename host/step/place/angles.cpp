// Angles on arcs about their vertex, and lengths of arcs, with the text outside the part.
#include <algorithm>

#include "host/step/place/place.h"

namespace host::step {
namespace {

constexpr int kMostTrials = 1000;

/// The directions of a cone's generators, or of one and its axis, once the view is known.
void turnIntoView(Corner& corner, const View& view) {
    const Vec3 aside = unit(cross(view.towardsViewer, corner.axis));
    corner.normal = view.towardsViewer;
    for (const std::size_t i : {0U, 1U}) {
        corner.directions[i] =
            std::cos(corner.turns[i]) * corner.axis + std::sin(corner.turns[i]) * aside;
    }
}

struct AngleTrial {
    double radius = 0;
    Vec2 direction{};
    /// How far it is from where the sides are.
    double price = 0;
};

/// Places an arc about a centre from one side to another, and the text on it.
class ArcPlacer {
public:
    ArcPlacer(Sheet& sheet, const Item& item) : sheet_(sheet), item_(item) {
        if (item.outcome->geometry.shown == Shown::ArcLength) {
            takeArc(item.outcome->geometry.circles.front());
        } else {
            takeCorner(item.outcome->geometry.corner);
        }
        vertex_ = sheet.view.onPaper(corner_.vertex);
    }

    void place() {
        const Vec2 ahead = sheet_.view.onPaper(ahead_);
        const AngleTrial front = nearestFree(ahead);
        if (item_.outcome->geometry.shown == Shown::ArcLength) {
            add(front);
            return;
        }
        const AngleTrial back = nearestFree(-1.0 * ahead);
        // The opposite angle shows the same value, at the price of long extensions.
        constexpr double kPrice = 4;
        add(back.price * kPrice + back.radius < front.price ? back : front);
    }

private:
    void takeCorner(const Corner& corner) {
        corner_ = corner;
        if (corner_.turnsAbout) {
            turnIntoView(corner_, sheet_.view);
        }
        ahead_ = unit(corner_.directions[0] + corner_.directions[1]);
    }

    /// The arc's ends are the sides, and its text stands beyond its middle.
    void takeArc(const Circle& circle) {
        circle_ = circle;
        corner_.vertex = circle.centre;
        const Vec3 x = unit(circle.start - circle.centre);
        const Vec3 y = cross(circle.axis, x);
        const double sweep = sweepTo(circle.end - circle.centre, x, y);
        corner_.directions[0] = x;
        corner_.directions[1] = unit(circle.end - circle.centre);
        for (Range& range : corner_.ranges) {
            range = {circle.radius, circle.radius};
        }
        ahead_ = std::cos(sweep / 2) * x + std::sin(sweep / 2) * y;
    }

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

    /// The free place along a ray from the vertex that is nearest to where the sides are.
    AngleTrial nearestFree(Vec2 direction) const {
        const double step = 0.5 * sheet_.textHeight;
        const double least = 5 * sheet_.textHeight;
        double sides = 0;
        for (const Range& range : corner_.ranges) {
            sides += std::max(visibleRange(range).middle(), 0.0) / 2;
        }
        for (int i = 0; i < kMostTrials; ++i) {
            for (const double sign : {1.0, -1.0}) {
                const AngleTrial trial{sides + sign * i * step, direction, i * step};
                if (trial.radius >= least && fits(trial)) {
                    return trial;
                }
            }
        }
        return {sides + kMostTrials * step, direction, kMostTrials * step};
    }

    void add(const AngleTrial& trial) {
        const View& view = sheet_.view;
        sheet_.texts.push_back(plate(trial));
        Annotation annotation;
        annotation.dimension = item_.dimension;
        annotation.shown = item_.outcome->geometry.shown;
        annotation.text = item_.outcome->text;
        annotation.boxed = item_.outcome->boxed;
        annotation.circle = circle_;
        annotation.locate = corner_.vertex + view.inModel(trial.radius * trial.direction, 0);
        const double sign = dot(trial.direction, view.onPaper(ahead_)) < 0 ? -1 : 1;
        for (const std::size_t i : {0U, 1U}) {
            const Vec3& direction = corner_.directions[i];
            const Range range = visibleRange(corner_.ranges[i]);
            annotation.edges[i] = {corner_.vertex + range.low * direction,
                                   corner_.vertex + range.high * direction};
            annotation.picks[i] = corner_.vertex + range.high * direction;
            const Vec2 way = sign * view.onPaper(direction);
            sheet_.extensions.push_back({vertex_ + range.high * way, vertex_ + trial.radius * way});
            addArc(way, trial);
        }
        sheet_.annotations.push_back(std::move(annotation));
    }

    /// From a side to the text, in chords.
    void addArc(Vec2 way, const AngleTrial& trial) {
        constexpr int kChords = 6;
        const double from = std::atan2(way.y, way.x);
        const double turn = std::atan2(cross(way, trial.direction), dot(way, trial.direction));
        const auto at = [&](int i) {
            const double angle = from + turn * i / kChords;
            return vertex_ + trial.radius * Vec2{std::cos(angle), std::sin(angle)};
        };
        for (int i = 0; i < kChords; ++i) {
            sheet_.lines.push_back({at(i), at(i + 1)});
        }
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
    Circle circle_;
    Vec3 ahead_{};
    Vec2 vertex_;
};

} // namespace

void placeAngles(Sheet& sheet, const std::vector<Item>& items) {
    for (const Item& item : items) {
        ArcPlacer(sheet, item).place();
    }
}

} // namespace host::step
