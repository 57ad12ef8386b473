#include "host/step/place/views.h"

#include <algorithm>
#include <array>

namespace host::step {
namespace {

/// The principal views, the more usual ones first.
const std::array<View, 6>& principalViews() {
    static const std::array<View, 6> views = {{
        {"front", {1, 0, 0}, {0, 0, 1}, {0, -1, 0}},
        {"top", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {"right", {0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
        {"left", {0, -1, 0}, {0, 0, 1}, {-1, 0, 0}},
        {"bottom", {1, 0, 0}, {0, -1, 0}, {0, 0, -1}},
        {"back", {-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
    }};
    return views;
}

/// Depths that differ by less, as a part of the part's size, are equally near to the outside.
constexpr double kAsNear = 0.02;

View obliqueView(const Vec3& towardsViewer) {
    constexpr Vec3 kUpwards{0, 0, 1};
    constexpr Vec3 kBackwards{0, 1, 0};
    const Vec3 aside =
        cross(parallel(towardsViewer, kUpwards) ? kBackwards : kUpwards, towardsViewer);
    View view;
    view.right = unit(aside);
    view.towardsViewer = towardsViewer;
    view.up = cross(towardsViewer, view.right);
    return view;
}

bool looksAlong(const View& view, const Vec3& direction) {
    return parallel(view.towardsViewer, direction) && dot(view.towardsViewer, direction) > 0;
}

bool isDirection(const Vec3& v) { return std::abs(length(v) - 1) < 1e-3; }

class Planner {
public:
    Planner(const std::vector<Outcome>& outcomes, const std::vector<Vec3>& hull)
        : outcomes_(outcomes), hull_(hull),
          views_(principalViews().begin(), principalViews().end()), votes_(views_.size(), 0),
          viewOf_(outcomes.size(), -1) {
        for (const Vec3& axis : {Vec3{1, 0, 0}, Vec3{0, 1, 0}, Vec3{0, 0, 1}}) {
            size_ = std::max(size_, rangeAlong(hull, axis).size());
        }
    }

    ViewPlan plan() {
        // Twice: only then is it known which views are used anyway.
        for (int pass = 0; pass < 2; ++pass) {
            for (std::size_t i = 0; i < outcomes_.size(); ++i) {
                placeTurned(i);
            }
        }
        for (std::size_t i = 0; i < outcomes_.size(); ++i) {
            placeFree(i);
        }
        for (std::size_t i = 0; i < outcomes_.size(); ++i) {
            placeDistance(i);
        }
        for (std::size_t i = 0; i < outcomes_.size(); ++i) {
            placeNote(i);
        }
        return finished();
    }

private:
    const Geometry& geometry(std::size_t i) const { return outcomes_[i].geometry; }

    void vote(std::size_t i, int view) {
        if (viewOf_[i] >= 0) {
            --votes_[static_cast<std::size_t>(viewOf_[i])];
        }
        viewOf_[i] = view;
        ++votes_[static_cast<std::size_t>(view)];
    }

    int votes(int view) const { return votes_[static_cast<std::size_t>(view)]; }

    /// The view from this side; a new one where there is none.
    int viewFrom(const Vec3& side) {
        for (std::size_t i = 0; i < views_.size(); ++i) {
            if (looksAlong(views_[i], side)) {
                return static_cast<int>(i);
            }
        }
        views_.push_back(obliqueView(side));
        votes_.push_back(0);
        return static_cast<int>(views_.size()) - 1;
    }

    /// What has one axis that it must be looked at along: circles and angles.
    void placeTurned(std::size_t i) {
        const Geometry& shape = geometry(i);
        std::vector<std::pair<double, int>> options;
        // Angles and arcs are seen as well from the one side as from the other.
        const bool eitherSide = shape.shown == Shown::ArcLength;
        for (const Circle& circle : shape.circles) {
            if (!circle.anyAxis && isDirection(circle.axis)) {
                for (const Vec3& side : {circle.axis, -1.0 * circle.axis}) {
                    options.emplace_back(
                        eitherSide ? 0 : rangeAlong(hull_, side).high - dot(circle.centre, side),
                        viewFrom(side));
                }
            }
        }
        if (shape.shown == Shown::Angle && !shape.corner.turnsAbout &&
            isDirection(shape.corner.normal)) {
            for (const Vec3& side : {shape.corner.normal, -1.0 * shape.corner.normal}) {
                options.emplace_back(0, viewFrom(side));
            }
        }
        if (options.empty()) {
            return;
        }
        const double nearest = std::min_element(options.begin(), options.end())->first;
        int best = -1;
        for (const auto& [depth, view] : options) {
            if (depth <= nearest + kAsNear * size_ && (best < 0 || isBetter(i, view, best))) {
                best = view;
            }
        }
        if (best >= 0) {
            vote(i, best);
        }
    }

    /// More used, or more usual; an outcome's own vote does not count.
    bool isBetter(std::size_t i, int view, int other) const {
        const int own = votes(view) - (viewOf_[i] == view ? 1 : 0);
        const int others = votes(other) - (viewOf_[i] == other ? 1 : 0);
        return own != others ? own > others : view < other;
    }

    /// The best of the views that a test lets through.
    template <class Test> int bestView(std::size_t i, const Test& test) const {
        int best = -1;
        for (int view = 0; view < static_cast<int>(views_.size()); ++view) {
            if (test(views_[static_cast<std::size_t>(view)]) &&
                (best < 0 || isBetter(i, view, best))) {
                best = view;
            }
        }
        return best;
    }

    /// Spheres, which look the same from everywhere, and cones, seen from aside.
    void placeFree(std::size_t i) {
        const Geometry& shape = geometry(i);
        if (viewOf_[i] >= 0) {
            return;
        }
        if (!shape.circles.empty()) {
            vote(i, bestView(i, [](const View&) { return true; }));
        } else if (shape.shown == Shown::Angle && shape.corner.turnsAbout &&
                   isDirection(shape.corner.axis)) {
            const Vec3 axis = shape.corner.axis;
            const int view =
                bestView(i, [&](const View& seen) { return square(seen.towardsViewer, axis); });
            vote(i, view >= 0 ? view : viewFrom(unit(cross(axis, Vec3{0, 0, 1}))));
        }
    }

    void placeDistance(std::size_t i) {
        const Geometry& shape = geometry(i);
        const bool isDistance =
            shape.shown == Shown::Distance || shape.shown == Shown::PointDistance;
        if (!isDistance || !isDirection(shape.direction)) {
            return;
        }
        int best = -1;
        double least = HUGE_VAL;
        for (std::size_t view = 0; view < views_.size(); ++view) {
            if (!square(views_[view].towardsViewer, shape.direction)) {
                continue;
            }
            const double cost = distanceCost(shape, view);
            if (cost < least) {
                least = cost;
                best = static_cast<int>(view);
            }
        }
        if (best < 0) {
            const Vec3 helper = std::abs(shape.direction[2]) < 0.9 ? Vec3{0, 0, 1} : Vec3{0, 1, 0};
            best = viewFrom(unit(cross(cross(shape.direction, helper), shape.direction)));
        }
        ++distances_[best];
        vote(i, best);
    }

    /// New views and crowded ones are dear, and so are those that show a hole's axis from aside.
    double distanceCost(const Geometry& shape, std::size_t view) const {
        constexpr double kNewView = 2;
        constexpr double kAxisFromAside = 1;
        constexpr double kEachOther = 0.12;
        constexpr double kUnusual = 0.05;
        double cost = votes_[view] > 0 ? 0 : kNewView;
        for (const Side& side : shape.sides) {
            if (isDirection(side.axis) && !parallel(side.axis, views_[view].towardsViewer)) {
                cost += kAxisFromAside;
            }
        }
        const auto found = distances_.find(static_cast<int>(view));
        cost += kEachOther * (found == distances_.end() ? 0 : found->second);
        return cost + kUnusual * static_cast<double>(view);
    }

    void placeNote(std::size_t i) {
        if (outcomes_[i].fate == Fate::Refused || viewOf_[i] >= 0) {
            return;
        }
        const Vec3& normal = geometry(i).targetNormal;
        const int facing =
            bestView(i, [&](const View& seen) { return dot(seen.towardsViewer, normal) > 0.7; });
        vote(i, facing >= 0 && votes(facing) > 0 ? facing
                                                 : bestView(i, [](const View&) { return true; }));
    }

    /// The views that show anything, or the one that shows most of the part.
    ViewPlan finished() {
        ViewPlan plan;
        std::vector<int> numbers(views_.size(), -1);
        int auxiliaries = 0;
        for (std::size_t i = 0; i < views_.size(); ++i) {
            if (votes_[i] <= 0) {
                continue;
            }
            numbers[i] = static_cast<int>(plan.views.size());
            plan.views.push_back(views_[i]);
            if (plan.views.back().name.empty()) {
                plan.views.back().name = "auxiliary" + std::to_string(++auxiliaries);
            }
        }
        for (const int view : viewOf_) {
            plan.viewOf.push_back(view < 0 ? -1 : numbers[static_cast<std::size_t>(view)]);
        }
        if (plan.views.empty()) {
            plan.views.push_back(*std::max_element(
                views_.begin(), views_.begin() + 3,
                [&](const View& a, const View& b) { return area(a) < area(b) * (1 - 1e-6); }));
        }
        return plan;
    }

    double area(const View& view) const {
        return rangeAlong(hull_, view.right).size() * rangeAlong(hull_, view.up).size();
    }

    const std::vector<Outcome>& outcomes_;
    const std::vector<Vec3>& hull_;
    std::vector<View> views_;
    std::vector<int> votes_;
    std::vector<int> viewOf_;
    std::map<int, int> distances_;
    double size_ = 0;
};

} // namespace

ViewPlan planViews(const std::vector<Outcome>& outcomes, const std::vector<Vec3>& hull) {
    return Planner(outcomes, hull).plan();
}

} // namespace host::step
