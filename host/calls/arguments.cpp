#include "host/calls/arguments.h"

#include <algorithm>

namespace host {
namespace {

ANK_PNT32 toPoint(const Vec3& p) {
    return {static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2])};
}

ANK_DIR32 toDirection(const Vec3& d) {
    return {static_cast<float>(d[0]), static_cast<float>(d[1]), static_cast<float>(d[2])};
}

std::unique_ptr<Ank_CurveEntity> makeCurve(const LineEdge& edge) {
    auto line = std::make_unique<Ank_Line>();
    line->SetStartPoint(toPoint(edge.start));
    line->SetEndPoint(toPoint(edge.end));
    return line;
}

std::unique_ptr<Ank_CurveEntity> makeCurve(const ArcEdge& edge) {
    const Vec3 z = unit(edge.normal);
    const Vec3 x = unit(edge.start - edge.center);
    const Vec3 y = cross(z, x);
    const auto radius = static_cast<float>(edge.radius);
    const auto sweep = static_cast<float>(sweepTo(edge.end - edge.center, x, y));
    auto arc = std::make_unique<Ank_Ellipse>();
    arc->SetCenterPoint(toPoint(edge.center));
    arc->SetNormal(toDirection(edge.normal));
    arc->SetOriginDir(toDirection(x));
    arc->SetXYZDir(toDirection(x), toDirection(y), toDirection(z));
    arc->SetRadius(radius, radius);
    arc->SetParameter(0, sweep);
    arc->SetDomain(0, sweep);
    arc->SetCoordiantePnt(toPoint(edge.start), toPoint(edge.end));
    return arc;
}

std::unique_ptr<Ank_CurveEntity> makeCurve(const Vec3& point) {
    auto polyline = std::make_unique<Ank_PolyLine>();
    polyline->SetPoints({toPoint(point)});
    return polyline;
}

} // namespace

Curve Arguments::curve(const char* name, Shapes shapes, Need need) {
    const std::optional<Shape> given = shape(name, shapes, need);
    if (!given) {
        return {};
    }
    curves_.push_back(std::visit([](const auto& edge) { return makeCurve(edge); }, *given));
    return {given, curves_.back().get()};
}

Placement Arguments::placement() {
    Placement placement;
    const Vec3 place = point("locate");
    std::copy(place.begin(), place.end(), placement.locate.point);
    placement.height = number("height");
    placement.view = view();
    std::copy(placement.view.placement.begin(), placement.view.placement.end(),
              placement.locate.viewMatrix);
    placement.status = status();
    return placement;
}

} // namespace host
