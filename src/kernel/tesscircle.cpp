#include "kernel/tesscircle.h"

#include <algorithm>

#include "geometry/drawnarc.h"

namespace dorvale {

bool CTessCircle::GetCircleDrawData(std::vector<Ank_Leader*> leaders, std::vector<double>& starts,
                                    std::vector<double>& ends, double& value,
                                    std::vector<int>& counts) {
    starts.assign(leaders.size(), 0.0);
    ends.assign(leaders.size(), 0.0);
    counts.assign(leaders.size(), 0);
    value = 0.0;
    bool anyArc = false;
    for (std::size_t i = 0; i < leaders.size(); ++i) {
        if (const Ank_Ellipse* arc = arcCurveOf(leaders[i])) {
            const DrawnArc drawn = drawnArc(*arc);
            starts[i] = drawn.start;
            ends[i] = drawn.end;
            counts[i] = drawn.count;
            value = std::max(value, drawn.largerRadius());
            anyArc = true;
        }
    }
    return anyArc;
}

bool CTessCircle::GetCircleDiscretization(const Ank_Ellipse* arc, double start, double end,
                                          double /*value*/, int count,
                                          std::vector<ANK_PNT32>& points) {
    if (arc == nullptr || count < 1) {
        return false;
    }
    DrawnArc drawn = drawnArc(*arc);
    drawn.start = start;
    drawn.end = end;
    drawn.count = count;
    points.reserve(points.size() + static_cast<std::size_t>(count));
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
    const DrawnArc drawn = drawnArc(*arc);
    return GetCircleDiscretization(arc, drawn.start, drawn.end, drawn.largerRadius(),
                                   count > 0 ? count : drawn.count, points);
}

} // namespace dorvale
