#include "host/finish/gap.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/finish/leaders.h"

namespace host {
namespace {

/// A leader where it meets the text, in the text's frame.
struct End {
    Vec2 point;
    /// Along the leader, away from the text.
    Vec2 back;
};

Vec2 turnedLeft(Vec2 a) { return {-a.y, a.x}; }

std::optional<Vec2> tryUnit(Vec2 a) {
    const double size = length(a);
    return size > 0 ? std::optional((1 / size) * a) : std::nullopt;
}

/// The leaders of an annotation as its text sees them.
struct Leaders {
    std::vector<End> straight;
    std::vector<ArcLeader> arcs;
};

Leaders leadersOf(const Ank_PMI& pmi, const TextFrame& frame) {
    Leaders leaders;
    for (const Ank_Leader* leader : pmi.GetLeaders()) {
        if (const auto arc = arcLeaderOf(*leader)) {
            leaders.arcs.push_back(*arc);
            continue;
        }
        const std::vector<Vec3> points = straightLeaderOf(*leader);
        if (points.size() < 2) {
            continue;
        }
        const Vec2 end = frame.at(points.back());
        if (const auto back = tryUnit(frame.at(points[points.size() - 2]) - end)) {
            leaders.straight.push_back({end, *back});
        }
    }
    return leaders;
}

/// The corner of a box that lies furthest back along a direction.
Vec2 rearCorner(const TextBox& box, Vec2 direction) {
    return {direction.x >= 0 ? box.low.x : box.high.x, direction.y >= 0 ? box.low.y : box.high.y};
}

/// How far a box has to move along a direction to stand the gap beyond a line across it.
double wayBeyond(const TextBox& box, Vec2 point, Vec2 direction, double gap) {
    return gap - dot(rearCorner(box, direction) - point, direction);
}

/// Of text along a line through `point`.
Vec2 above(const TextBox& box, Vec2 point, double gap) { return {0, gap - (box.low.y - point.y)}; }

/// Beyond the end of a leader.
Vec2 beyondEnd(const TextBox& box, const End& end, double gap) {
    // Less steep than 75 degrees
    constexpr double kSteep = 0.26;
    const Vec2 beyond = -1 * end.back;
    const Vec2 toMiddle = end.point - box.middle();
    if (std::abs(beyond.x) < kSteep) {
        return {toMiddle.x,
                beyond.y > 0 ? end.point.y + gap - box.low.y : end.point.y - gap - box.high.y};
    }
    return {beyond.x > 0 ? end.point.x + gap - box.low.x : end.point.x - gap - box.high.x,
            toMiddle.y};
}

/// Beside a line that runs across the text: to the side that takes less, or upwards where that
/// takes hardly more.
Vec2 beside(const TextBox& box, const End& end, double gap) {
    Vec2 up = turnedLeft(end.back);
    up = up.y < 0 ? -1 * up : up;
    const double upwards = wayBeyond(box, end.point, up, gap);
    const double downwards = wayBeyond(box, end.point, -1 * up, gap);
    return upwards <= downwards + box.height() ? upwards * up : -downwards * up;
}

Vec2 offStraight(const TextBox& box, const std::vector<End>& ends, double gap, bool centered) {
    // Sines of the angles up to which leaders and text count as parallel
    constexpr double kAlong = 1e-3;
    constexpr double kParallel = 0.1;
    const End& end = ends.front();
    Vec2 back{};
    bool alongText = true;
    bool parallel = true;
    for (const End& other : ends) {
        back = back + other.back;
        alongText = alongText && std::abs(other.back.y) <= kAlong;
        parallel = parallel && std::abs(cross(other.back, end.back)) <= kParallel;
    }
    const bool endsAtText =
        parallel && dot(back, end.back) > 0.5 * static_cast<double>(ends.size());
    if (endsAtText && !centered) {
        return beyondEnd(box, end, gap);
    }
    if (alongText) {
        return above(box, end.point, gap);
    }
    if (parallel) {
        return beside(box, end, gap);
    }
    const Vec2 apex = tryUnit(-1 * back).value_or(Vec2{0, 1});
    return wayBeyond(box, end.point, apex, gap) * apex;
}

/// Text along an arc of its plane stands on it with its foot, outside or inside.
Vec2 offTangent(const TextBox& box, Vec2 center, double radius, double gap) {
    const double left = box.low.x - center.x;
    const double right = box.high.x - center.x;
    const double foot = box.low.y - center.y;
    const auto heightAt = [](double r, double x) {
        return std::sqrt(std::max(r * r - x * x, 0.0));
    };
    const double nearest = std::clamp(0.0, left, right);
    const double furthest = std::max(std::abs(left), std::abs(right));
    if (foot >= 0) {
        return {0, heightAt(radius + gap, nearest) - foot};
    }
    if (radius - gap > furthest) {
        return {0, -heightAt(radius - gap, furthest) - foot};
    }
    return {0, -heightAt(radius + gap, nearest) - box.height() - foot};
}

Vec2 offArcs(const TextBox& box, const ArcLeader& arc, const TextFrame& frame, bool inPlane,
             double gap) {
    // The cosine of the angle up to which text counts as running along the tangent
    constexpr double kAlong = 0.9;
    const Vec2 center = frame.at(arc.center);
    const Vec3 end = arc.at(arc.sweep);
    const Vec2 point = frame.at(end);
    const Vec3 radial = unit(end - arc.center);
    if (inPlane && std::abs(frame.at(radial).y) >= kAlong) {
        return offTangent(box, center, arc.radius, gap);
    }
    const auto tangent = tryUnit(frame.at(Vec3{-radial[1], radial[0], 0}));
    if (!tangent) {
        return above(box, point, gap);
    }
    const Vec2 aside = turnedLeft(*tangent);
    const Vec2 outwards = dot(aside, point - center) < 0 ? -1 * aside : aside;
    return wayBeyond(box, point, outwards, gap) * outwards;
}

} // namespace

std::optional<Vec2> moveOffLeaders(const Ank_PMI& pmi, const TextBlock& block, double gap,
                                   bool centered) {
    const TextFrame& frame = block.frame();
    const Leaders leaders = leadersOf(pmi, frame);
    const TextBox box = block.box();
    if (!leaders.arcs.empty()) {
        return offArcs(box, leaders.arcs.front(), frame, !pmi.GetParallelScreen(), gap);
    }
    if (!leaders.straight.empty()) {
        return offStraight(box, leaders.straight, gap, centered);
    }
    return std::nullopt;
}

} // namespace host
