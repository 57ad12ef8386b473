#include "geometry/drawnarc.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "geometry/curves.h"
#include "geometry/wholepart.h"

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

ANK_PNT32 DrawnArc::point(int i) const {
    const double angle = count > 1 ? start + (end - start) * i / (count - 1) : start;
    return point32(static_cast<float>(center.x + radiusX * std::cos(angle)),
                   static_cast<float>(center.y + radiusY * std::sin(angle)), center.z);
}

double DrawnArc::largerRadius() const { return std::max(radiusX, radiusY); }

DrawnArc drawnArc(const Ank_Ellipse& arc) {
    DrawnArc drawn{arc.GetCenterPoint()};
    arc.GetRadius(drawn.radiusX, drawn.radiusY);
    ANK_PNT32 first{};
    ANK_PNT32 second{};
    arc.GetCoordinatePnt(first, second);
    const double start = angleAt(drawn.center, first);
    double end = angleAt(drawn.center, second);
    constexpr double turn = 2.0 * std::numbers::pi;
    // Counter-clockwise about a normal that points away from the viewer, the angle falls.
    if (arc.GetNormal().z < 0.0F) {
        end -= end > start ? turn * std::ceil((end - start) / turn) : 0.0;
    } else {
        end += end < start ? turn * std::ceil((start - end) / turn) : 0.0;
    }
    drawn.start = start;
    drawn.end = end;
    drawn.count = pointCount(drawn.largerRadius() * std::abs(end - start));
    return drawn;
}

const Ank_Ellipse* arcCurveOf(const Ank_Leader* leader) {
    const auto curves = leader == nullptr ? std::vector<Ank_CurveEntity*>() : leader->GetAllCurve();
    return curves.empty() ? nullptr : asEllipse(curves.front());
}

} // namespace dorvale
