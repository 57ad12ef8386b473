#include "host/finish/leaders.h"

#include <cmath>

#include "host/geometry/arcs.h"

namespace host {
namespace {

const Ank_CurveEntity* curveOf(const Ank_Leader& leader) {
    const std::vector<Ank_CurveEntity*> curves = leader.GetAllCurve();
    return curves.empty() ? nullptr : curves.front();
}

bool isOf(AnkCurveTypeEnum type, const Ank_CurveEntity* curve) {
    return curve != nullptr && curve->GetCurveType() == type;
}

} // namespace

Vec3 ArcLeader::at(double turn) const {
    return center + radius * Vec3{std::cos(start + turn), std::sin(start + turn), 0};
}

std::optional<ArcLeader> arcLeaderOf(const Ank_Leader& leader) {
    const Ank_CurveEntity* curve = curveOf(leader);
    if (!isOf(ANK_CURVE_ARC, curve)) {
        return std::nullopt;
    }
    const auto& arc = static_cast<const Ank_Ellipse&>(*curve);
    float first = 0;
    float second = 0;
    arc.GetRadius(first, second);
    float start = 0;
    float end = 0;
    arc.GetParameter(start, end);
    if (start == end) {
        return std::nullopt;
    }
    return ArcLeader{vectorOf(arc.GetCenterPoint()), first, start, sweepOf(arc)};
}

std::vector<Vec3> straightLeaderOf(const Ank_Leader& leader) {
    const Ank_CurveEntity* curve = curveOf(leader);
    std::vector<Vec3> points;
    if (isOf(ANK_CURVE_LINE, curve)) {
        const auto& line = static_cast<const Ank_Line&>(*curve);
        points = {vectorOf(line.GetStartPoint()), vectorOf(line.GetEndPoint())};
    } else if (isOf(ANK_CURVE_POLYLINE, curve)) {
        for (const ANK_PNT32& point : static_cast<const Ank_PolyLine&>(*curve).GetPoints()) {
            points.push_back(vectorOf(point));
        }
    }
    return points;
}

double lengthOf(const Ank_Leader& leader) {
    if (const auto arc = arcLeaderOf(leader)) {
        return std::abs(arc->sweep) * arc->radius;
    }
    const std::vector<Vec3> points = straightLeaderOf(leader);
    double sum = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        sum += length(points[i] - points[i - 1]);
    }
    return sum;
}

} // namespace host
