#include "builders/leaders.h"

#include "builders/ownership.h"

namespace dorvale {

namespace {

/// An arrow is this many times as long as wide.
constexpr double kArrowProportion = 3.0;

/// From the points' differences in single precision; two equal points give 0/0 as it is.
ANK_DIR32 directionOf(const ANK_PNT32& from, const ANK_PNT32& to) {
    const Vec3 v = widen(direction32(to.x - from.x, to.y - from.y, to.z - from.z));
    return toDirection32(v / length(v));
}

} // namespace

std::unique_ptr<Ank_Leader> makeLeader(const Points& points, const ANK_PNT32& tip,
                                       AnkTermTypeEnum terminator) {
    std::unique_ptr<Ank_PolyLine> curve = makePolyline(points);
    if (!curve) {
        return nullptr;
    }
    auto leader = std::make_unique<Ank_Leader>();
    curve->SetUsageType(kLeaderCurve);
    curve->SetCurveDispStat(true);
    give(std::move(curve), [&](Ank_PolyLine* taken) { leader->SetCurve(taken); });
    leader->SetLeaderType(kStraightLeader);
    float size[2] = {static_cast<float>(kArrowLength),
                     static_cast<float>(kArrowLength / kArrowProportion)};
    leader->SetTerminator(terminator, size, tip, directionOf(points[0], points[1]));
    return leader;
}

std::unique_ptr<Ank_Leader> makeArcLeader(std::unique_ptr<Ank_Ellipse> arc) {
    auto leader = std::make_unique<Ank_Leader>();
    arc->SetUsageType(kLeaderCurve);
    arc->SetCurveDispType(kDimensionDisplay);
    arc->SetCurveDispStat(true);
    give(std::move(arc), [&](Ank_Ellipse* taken) { leader->SetCurve(taken); });
    leader->SetLeaderType(kArcLeader);
    return leader;
}

bool setArcTerminator(Ank_Leader& leader, const DrawnArc& arc) {
    if (arc.start == arc.end) {
        return false;
    }
    const ANK_PNT32 tip = arc.point(0);
    const Vec3 chord = widen(arc.point(1)) - widen(tip);
    const double arrow = length(chord);
    float size[2] = {static_cast<float>(arrow), static_cast<float>(arrow / kArrowProportion)};
    leader.SetTerminator(kArrow, size, tip, toDirection32(orZero(unit(chord))));
    return true;
}

void setArcTerminators(const std::vector<Ank_Leader*>& leaders) {
    for (Ank_Leader* leader : leaders) {
        const Ank_Ellipse* arc = arcCurveOf(leader);
        if (arc != nullptr && !setArcTerminator(*leader, drawnArc(*arc))) {
            return;
        }
    }
}

} // namespace dorvale
