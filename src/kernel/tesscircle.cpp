#include "kernel/tesscircle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "kernel/wholepart.h"
#include "model/records.h"
#include "model/values.h"

namespace dorvale {

namespace {

constexpr int kFewestChords = 3;
constexpr int kMostChords = 1000;

int pointCount(double arcLength) {
    return std::clamp(wholePart(arcLength / kArrowLength + 0.5), kFewestChords, kMostChords) + 1;
}

} // namespace

float angleAt(const ANK_PNT32& center, const ANK_PNT32& point) {
    return std::atan2(point.y - center.y, point.x - center.x);
}

CircleFrame::CircleFrame(const Ank_Ellipse& arc) : center(arc.GetCenterPoint()) {
    arc.GetRadius(radiusX, radiusY);
}

ANK_PNT32 CircleFrame::at(double parameter) const {
    return point32(static_cast<float>(center.x + radiusX * std::cos(parameter)),
                   static_cast<float>(center.y + radiusY * std::sin(parameter)), center.z);
}

double CircleFrame::largerRadius() const { return std::max(radiusX, radiusY); }

ANK_PNT32 CTessCircle::Drawn::point(int i) const {
    return frame.at(count > 1 ? start + (end - start) * i / (count - 1) : start);
}

const Ank_Ellipse* CTessCircle::arcOf(const Ank_Leader* leader) {
    if (leader == nullptr) {
        return nullptr;
    }
    const std::vector<Ank_CurveEntity*> curves = leader->GetAllCurve();
    if (curves.empty() || curves.front() == nullptr ||
        curves.front()->GetCurveType() != kArcCurve) {
        return nullptr;
    }
    return static_cast<const Ank_Ellipse*>(curves.front());
}

CTessCircle::Drawn CTessCircle::drawnPart(const Ank_Ellipse& arc) {
    const CircleFrame frame(arc);
    ANK_PNT32 first{};
    ANK_PNT32 second{};
    arc.GetCoordinatePnt(first, second);
    const double start = angleAt(frame.center, first);
    double end = angleAt(frame.center, second);
    constexpr double turn = 2.0 * std::numbers::pi;
    // Counter-clockwise about a normal that points away from the viewer, the parameter falls.
    if (arc.GetNormal().z < 0.0F) {
        end -= end > start ? turn * std::ceil((end - start) / turn) : 0.0;
    } else {
        end += end < start ? turn * std::ceil((start - end) / turn) : 0.0;
    }
    return {frame, start, end, pointCount(frame.largerRadius() * std::abs(end - start))};
}

bool CTessCircle::GetCircleDrawData(std::vector<Ank_Leader*> leaders, std::vector<double>& starts,
                                    std::vector<double>& ends, double& value,
                                    std::vector<int>& counts) {
    starts.assign(leaders.size(), 0.0);
    ends.assign(leaders.size(), 0.0);
    counts.assign(leaders.size(), 0);
    value = 0.0;
    bool anyArc = false;
    for (std::size_t i = 0; i < leaders.size(); ++i) {
        const Ank_Ellipse* arc = arcOf(leaders[i]);
        if (arc == nullptr) {
            continue;
        }
        const Drawn drawn = drawnPart(*arc);
        starts[i] = drawn.start;
        ends[i] = drawn.end;
        counts[i] = drawn.count;
        value = std::max(value, drawn.frame.largerRadius());
        anyArc = true;
    }
    return anyArc;
}

bool CTessCircle::GetCircleDiscretization(const Ank_Ellipse* arc, double start, double end,
                                          double /*value*/, int count,
                                          std::vector<ANK_PNT32>& points) {
    if (arc == nullptr || count < 1) {
        return false;
    }
    points.reserve(points.size() + static_cast<std::size_t>(count));
    const Drawn drawn{CircleFrame(*arc), start, end, count};
    for (int i = 0; i < count; ++i) {
        points.push_back(drawn.point(i));
    }
    return true;
}

bool CTessCircle::GetCircleDiscretization(const Ank_Ellipse* arc, int count,
                                          std::vector<ANK_PNT32>& points) {
    if (arc == nullptr) {
        return false;
    }
    const Drawn drawn = drawnPart(*arc);
    return GetCircleDiscretization(arc, drawn.start, drawn.end, drawn.frame.largerRadius(),
                                   count > 0 ? count : drawn.count, points);
}

} // namespace dorvale
