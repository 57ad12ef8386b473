/// @file
/// The sides that a part is seen from, and which of them shows a dimension.
#pragma once

#include <string>
#include <vector>

#include "host/step/derive/derive.h"

namespace host::step {

/// A view square to the paper.
struct View {
    std::string name;
    Vec3 right{};
    Vec3 up{};
    Vec3 towardsViewer{};

    Vec2 onPaper(const Vec3& p) const { return {dot(p, right), dot(p, up)}; }
    Vec3 inModel(Vec2 p, double depth) const {
        return p.x * right + p.y * up + depth * towardsViewer;
    }
};

/// Which dimension is seen in which view.
struct ViewPlan {
    std::vector<View> views;
    /// For each outcome, the number of its view; -1 for one that is not shown.
    std::vector<int> viewOf;
};

/// One view for each direction that is needed: circles along their axis from the side that is
/// nearest to the outside, lengths square to theirs, in a view that is used already before a new
/// one. At least one view.
ViewPlan planViews(const std::vector<Outcome>& outcomes, const std::vector<Vec3>& hull);

} // namespace host::step
