// The measured curves as values. A curve that is missing, or of another kind than asked for, counts
// as one whose numbers are all zero, which every generator can work with.
#pragma once

#include "geometry/lines.h"
#include "model/values.h"

namespace dorvale {

struct Arc {
    Vec3 center;
    Vec3 normal;
    double radius = 0.0;
    Vec3 start;
    Vec3 end;
};

inline bool isOfType(const Ank_CurveEntity* curve, AnkCurveTypeEnum type) {
    return curve != nullptr && curve->GetCurveType() == type;
}

/// The curve as an arc, or null.
inline const Ank_Ellipse* asEllipse(const Ank_CurveEntity* curve) {
    return isOfType(curve, kArcCurve) ? static_cast<const Ank_Ellipse*>(curve) : nullptr;
}

inline Segment segmentOf(const Ank_CurveEntity* curve) {
    if (!isOfType(curve, kLineCurve)) {
        return {};
    }
    const auto& line = static_cast<const Ank_Line&>(*curve);
    return {widen(line.GetStartPoint()), widen(line.GetEndPoint())};
}

/// The first of the two radii counts.
inline Arc arcOf(const Ank_CurveEntity* curve) {
    const Ank_Ellipse* ellipse = asEllipse(curve);
    if (ellipse == nullptr) {
        return {};
    }
    float radius = 0.0F;
    float unused = 0.0F;
    ellipse->GetRadius(radius, unused);
    ANK_PNT32 start{};
    ANK_PNT32 end{};
    ellipse->GetCoordinatePnt(start, end);
    return {widen(ellipse->GetCenterPoint()), widen(ellipse->GetNormal()), radius, widen(start),
            widen(end)};
}

/// The point that a curve stands for: an arc's centre, a line's start, a polyline's first point.
inline Vec3 pointOf(const Ank_CurveEntity* curve) {
    if (isOfType(curve, kPolylineCurve)) {
        const auto& points = static_cast<const Ank_PolyLine&>(*curve).GetPoints();
        return points.empty() ? Vec3{} : widen(points.front());
    }
    return isOfType(curve, kArcCurve) ? arcOf(curve).center : segmentOf(curve).start;
}

} // namespace dorvale
