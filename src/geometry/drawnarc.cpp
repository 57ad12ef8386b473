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

DrawnArc drawnArc(const ANK_PNT32& center, float radiusX, float radiusY, float startAngle,
                  float endAngle, const ANK_DIR32& normal) {
    constexpr double turn = 2.0 * std::numbers::pi;
    const double start = startAngle;
    double end = endAngle;
    // Counter-clockwise about a normal that points away from the viewer, the angle falls.
    if (normal.z < 0.0F) {
        end -= end > start ? turn * std::ceil((end - start) / turn) : 0.0;
    } else {
        end += end < start ? turn * std::ceil((start - end) / turn) : 0.0;
    }
    DrawnArc drawn{center, radiusX, radiusY, start, end};
    drawn.count = pointCount(drawn.largerRadius() * std::abs(end - start));
    return drawn;
}

DrawnArc drawnArc(const Ank_Ellipse& arc) {
    const ANK_PNT32 center = arc.GetCenterPoint();
    float radiusX = 0.0F;
    float radiusY = 0.0F;
    arc.GetRadius(radiusX, radiusY);
    ANK_PNT32 start{};
    ANK_PNT32 end{};
    arc.GetCoordinatePnt(start, end);
    return drawnArc(center, radiusX, radiusY, angleAt(center, start), angleAt(center, end),
                    arc.GetNormal());
}

const Ank_Ellipse* arcCurveOf(const Ank_Leader* leader) {
    const auto curves = leader == nullptr ? std::vector<Ank_CurveEntity*>() : leader->GetAllCurve();
    return curves.empty() ? nullptr : asEllipse(curves.front());
}

} // namespace dorvale
