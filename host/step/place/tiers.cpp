// Distances in tiers outside the part, and angles on arcs outside it.
#include <algorithm>
#include <map>

#include "host/step/place/place.h"

namespace host::step {
namespace {

/// Of the first tier from the part, and of each further one, in text heights.
constexpr double kFirstTier = 2.5;
constexpr double kNextTier = 2.4;
constexpr int kMostTiers = 400;
/// Half the length of the edge that stands for an axis seen end-on, in text heights.
constexpr double kCentreMark = 0.5;

/// A distance on paper, along a direction that runs to the right or upwards.
struct Measure {
    Item item;
    Vec2 along{};
    /// Square to it, away from the part.
    Vec2 outwards{};
    /// Where the measured ends lie along the direction, and their reach outwards.
    std::array<double, 2> ends{};
    std::array<Range, 2> reach{};

    double low() const { return std::min(ends[0], ends[1]); }
    double high() const { return std::max(ends[0], ends[1]); }
    double size() const { return high() - low(); }
};

Vec2 towardsReader(Vec2 direction) {
    const bool backwards =
        direction.x < -1e-9 || (std::abs(direction.x) <= 1e-9 && direction.y < 0);
    return backwards ? -1.0 * direction : direction;
}

Range reachOf(const Side& side, const Sheet& sheet, Vec2 outwards) {
    const Vec2 middle = sheet.view.onPaper(side.point);
    const double mark = kCentreMark * sheet.textHeight;
    Range reach{dot(middle, outwards) - mark, dot(middle, outwards) + mark};
    // Seen end-on an axis is a point, however wide what turns about it is.
    const bool endOn = length(side.axis) > 0 && parallel(side.axis, sheet.view.towardsViewer);
    if (endOn || side.reach.empty()) {
        return reach;
    }
    Range full{HUGE_VAL, -HUGE_VAL};
    for (const Vec3& point : side.reach) {
        const double at = dot(sheet.view.onPaper(point), outwards);
        full.low = std::min(full.low, at);
        full.high = std::max(full.high, at);
    }
    return full.size() > mark ? full : reach;
}

Measure measureOf(const Item& item, const Sheet& sheet) {
    const Geometry& geometry = item.outcome->geometry;
    Measure measure;
    measure.item = item;
    measure.along = towardsReader(sheet.view.onPaper(geometry.direction));
    measure.outwards = leftOf(measure.along);
    double middle = 0;
    for (std::size_t i = 0; i < 2; ++i) {
        measure.ends[i] = dot(sheet.view.onPaper(geometry.sides[i].point), measure.along);
        measure.reach[i] = reachOf(geometry.sides[i], sheet, measure.outwards);
        middle += measure.reach[i].middle() / 2;
    }
    const Vec2 centre{sheet.across.middle(), sheet.upwards.middle()};
    if (middle < dot(centre, measure.outwards) - 1e-6 * sheet.textHeight) {
        measure.outwards = -1.0 * measure.outwards;
        for (Range& reach : measure.reach) {
            reach = {-reach.high, -reach.low};
        }
    }
    return measure;
}

/// How far the part reaches in a direction.
double partReach(const Sheet& sheet, Vec2 direction) {
    double reach = -HUGE_VAL;
    for (const double x : {sheet.across.low, sheet.across.high}) {
        for (const double y : {sheet.upwards.low, sheet.upwards.high}) {
            reach = std::max(reach, dot(Vec2{x, y}, direction));
        }
    }
    return reach;
}

/// A dimension line on a tier with its text somewhere along it.
struct Trial {
    double offset = 0;
    double textAt = 0;
};

class Tiers {
public:
    explicit Tiers(Sheet& sheet) : sheet_(sheet) {}

    void place(const Measure& measure, const std::vector<double>& laterStations) {
        for (int tier = 0; tier < kMostTiers; ++tier) {
            const double offset = partReach(sheet_, measure.outwards) +
                                  (kFirstTier + tier * kNextTier) * sheet_.textHeight;
            for (const bool strict : {true, false}) {
                for (const double textAt : positions(measure)) {
                    const Trial trial{offset, textAt};
                    if (!fits(measure, trial, strict ? laterStations : std::vector<double>())) {
                        continue;
                    }
                    add(measure, trial);
                    return;
                }
            }
        }
        add(measure,
            {partReach(sheet_, measure.outwards) + kMostTiers * kNextTier * sheet_.textHeight,
             (measure.low() + measure.high()) / 2});
    }

private:
    double width(const Measure& measure) const {
        return sheet_.widthOf(measure.item.outcome->text);
    }

    /// In the middle; else nearer to one end; else beyond one.
    std::vector<double> positions(const Measure& measure) const {
        constexpr int kSteps = 4;
        const double middle = (measure.low() + measure.high()) / 2;
        const double half = width(measure) / 2;
        const double room = measure.size() / 2 - half;
        std::vector<double> list{middle};
        for (int step = 1; step <= kSteps && room > 0; ++step) {
            for (const double sign : {1.0, -1.0}) {
                list.push_back(middle + sign * room * step / kSteps);
            }
        }
        const double beyond = half + 1.5 * sheet_.textHeight;
        list.push_back(measure.high() + beyond);
        list.push_back(measure.low() - beyond);
        return list;
    }

    static Vec2 at(const Measure& measure, double along, double outwards) {
        return along * measure.along + outwards * measure.outwards;
    }

    Plate plate(const Measure& measure, const Trial& trial) const {
        const double height = sheet_.heightOf(measure.item.outcome->text);
        const Vec2 foot = at(measure, trial.textAt, trial.offset) +
                          (kTextGap * sheet_.textHeight + height / 2) * leftOf(measure.along);
        return {foot, measure.along, width(measure) / 2, height / 2};
    }

    static PaperLine dimensionLine(const Measure& measure, const Trial& trial) {
        return {at(measure, std::min(measure.low(), trial.textAt), trial.offset),
                at(measure, std::max(measure.high(), trial.textAt), trial.offset)};
    }

    static PaperLine extension(const Measure& measure, const Trial& trial, std::size_t end) {
        return {at(measure, measure.ends[end], std::min(measure.reach[end].high, trial.offset)),
                at(measure, measure.ends[end], trial.offset)};
    }

    bool fits(const Measure& measure, const Trial& trial,
              const std::vector<double>& laterStations) const {
        const double height = sheet_.textHeight;
        const Plate text = plate(measure, trial);
        const PaperLine own[] = {extension(measure, trial, 0), extension(measure, trial, 1)};
        if (!sheet_.isFree(text) || text.meets(own[0].start, own[0].end) ||
            text.meets(own[1].start, own[1].end)) {
            return false;
        }
        const auto meetsText = [&](const PaperLine& line) {
            return text.meets(line.start, line.end);
        };
        if (std::any_of(sheet_.lines.begin(), sheet_.lines.end(), meetsText) ||
            std::any_of(sheet_.extensions.begin(), sheet_.extensions.end(), meetsText)) {
            return false;
        }
        // Dimension lines on one tier keep apart, arrows included.
        const PaperLine line = dimensionLine(measure, trial);
        const Vec2 middle = 0.5 * (line.start + line.end);
        const double size = dot(line.end - line.start, measure.along);
        const Plate lane(middle, measure.along, size / 2 + 0.2 * height, 0.9 * height);
        const auto isParallel = [&](const PaperLine& other) {
            const Vec2 way = other.end - other.start;
            return std::abs(dot(way, measure.outwards)) < 1e-6 * length(way) &&
                   lane.meets(other.start, other.end);
        };
        if (std::any_of(sheet_.lines.begin(), sheet_.lines.end(), isParallel)) {
            return false;
        }
        const auto crossesLine = [&](const Plate& other) {
            return other.meets(line.start, line.end) || other.meets(own[0].start, own[0].end) ||
                   other.meets(own[1].start, own[1].end);
        };
        if (std::any_of(sheet_.texts.begin(), sheet_.texts.end(), crossesLine)) {
            return false;
        }
        const double half = width(measure) / 2 + 0.2 * height;
        return std::none_of(laterStations.begin(), laterStations.end(), [&](double station) {
            return std::abs(station - trial.textAt) < half;
        });
    }

    void add(const Measure& measure, const Trial& trial) {
        sheet_.texts.push_back(plate(measure, trial));
        sheet_.lines.push_back(dimensionLine(measure, trial));
        for (const std::size_t end : {0U, 1U}) {
            sheet_.extensions.push_back(extension(measure, trial, end));
        }
        sheet_.annotations.push_back(annotation(measure, trial));
    }

    /// Both edges at one depth, running outwards.
    Annotation annotation(const Measure& measure, const Trial& trial) const {
        const View& view = sheet_.view;
        const auto model = [&](double along, double outwards) {
            return view.inModel(at(measure, along, outwards), sheet_.depth);
        };
        Annotation result;
        result.dimension = measure.item.dimension;
        result.shown = measure.item.outcome->geometry.shown;
        result.text = measure.item.outcome->text;
        result.boxed = measure.item.outcome->boxed;
        result.locate = model(trial.textAt, trial.offset);
        for (const std::size_t end : {0U, 1U}) {
            const Range& reach = measure.reach[end];
            result.edges[end] = {model(measure.ends[end], reach.low),
                                 model(measure.ends[end], reach.high)};
        }
        result.point = model(measure.ends[1], measure.reach[1].middle());
        return result;
    }

    Sheet& sheet_;
};

/// Lengths on one side of the part run in one direction.
std::vector<std::vector<Measure>> bySide(std::vector<Measure> measures) {
    std::vector<std::vector<Measure>> sides;
    for (Measure& measure : measures) {
        const auto same = [&](const std::vector<Measure>& side) {
            return dot(side.front().outwards, measure.outwards) > 1 - 1e-6;
        };
        const auto found = std::find_if(sides.begin(), sides.end(), same);
        if (found != sides.end()) {
            found->push_back(measure);
        } else {
            sides.push_back({measure});
        }
    }
    return sides;
}

} // namespace

void placeDistances(Sheet& sheet, const std::vector<Item>& items) {
    std::vector<Measure> measures;
    measures.reserve(items.size());
    for (const Item& item : items) {
        measures.push_back(measureOf(item, sheet));
    }
    for (std::vector<Measure>& side : bySide(std::move(measures))) {
        std::stable_sort(side.begin(), side.end(),
                         [](const Measure& a, const Measure& b) { return a.size() < b.size(); });
        for (std::size_t i = 0; i < side.size(); ++i) {
            std::vector<double> later;
            for (std::size_t j = i + 1; j < side.size(); ++j) {
                later.insert(later.end(), std::begin(side[j].ends), std::end(side[j].ends));
            }
            Tiers(sheet).place(side[i], later);
        }
    }
}

} // namespace host::step
