#include "builders/curves.h"

#include <cmath>

namespace dorvale {

namespace {

bool equal(const ANK_PNT32& a, const ANK_PNT32& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

} // namespace

std::unique_ptr<Ank_PolyLine> makePolyline(const Points& points) {
    if (points.size() < 2 || (points.size() == 2 && equal(points.front(), points.back()))) {
        return nullptr;
    }
    auto polyline = std::make_unique<Ank_PolyLine>();
    polyline->SetPoints(points);
    polyline->SetDomain(0.0F, 0.0F);
    return polyline;
}

std::unique_ptr<Ank_Line> makeSegment(const Points& points) {
    if (points.size() < 2) {
        return nullptr;
    }
    auto segment = std::make_unique<Ank_Line>();
    segment->SetStartPoint(points[0]);
    segment->SetEndPoint(points[1]);
    return segment;
}

MadeArc makeArc(const ArcShape& shape, const std::optional<Vec3>& normal) {
    const bool given = normal && std::abs(normal->x + normal->y + normal->z) > 0.0;
    const Vec3 axis =
        given ? *normal
              : orZero(normalOf(widen(shape.center), widen(shape.start), widen(shape.end)));
    const float startAngle = angleAt(shape.center, shape.start);
    const float endAngle = angleAt(shape.center, shape.end);
    const ANK_DIR32 used = toDirection32(axis);
    auto arc = std::make_unique<Ank_Ellipse>();
    arc->SetParameter(startAngle, endAngle);
    arc->SetCenterPoint(shape.center);
    arc->SetNormal(used);
    arc->SetOriginDir(direction32(0.0F, 0.0F, 1.0F));
    arc->SetXYZDir(direction32(1.0F, 0.0F, 0.0F), direction32(0.0F, 1.0F, 0.0F),
                   direction32(0.0F, 0.0F, 1.0F));
    arc->SetRadius(shape.radius, shape.radius);
    arc->SetDomain(startAngle, endAngle);
    arc->SetCoordiantePnt(shape.start, shape.end);
    return {std::move(arc), used,
            drawnArc(shape.center, shape.radius, shape.radius, startAngle, endAngle, used)};
}

} // namespace dorvale
