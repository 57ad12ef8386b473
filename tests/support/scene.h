// What a host hands to the library.
#pragma once

#include <algorithm>
#include <memory>

#include <dorvale/dorvale.h>

#include "support/rigid.h"

namespace dorvale::test {

inline std::unique_ptr<Ank_Line> line(const Vec& start, const Vec& end) {
    auto made = std::make_unique<Ank_Line>();
    made->SetStartPoint(start.point32());
    made->SetEndPoint(end.point32());
    return made;
}

/// A circular arc in the XY plane of a frame, about its origin: counter-clockwise about the frame's
/// Z axis between two angles in radians.
inline std::unique_ptr<Ank_Ellipse> arc(const Rigid& frame, double radius, double from, double to) {
    const auto at = [&](double angle) {
        return frame.point({radius * std::cos(angle), radius * std::sin(angle), 0.0}).point32();
    };
    auto made = std::make_unique<Ank_Ellipse>();
    made->SetCenterPoint(frame.origin.point32());
    made->SetNormal(frame.axes[2].direction32());
    made->SetRadius(static_cast<float>(radius), static_cast<float>(radius));
    made->SetCoordiantePnt(at(from), at(to));
    made->SetParameter(static_cast<float>(from), static_cast<float>(to));
    return made;
}

inline std::unique_ptr<Ank_Ellipse> circle(const Rigid& frame, double radius) {
    return arc(frame, radius, 0.0, 2.0 * std::numbers::pi);
}

inline _ank_locate locate(const Vec& point, const ViewMatrix& view = Rigid{}.view()) {
    _ank_locate record{{point.x, point.y, point.z}, {}};
    std::copy(view.begin(), view.end(), record.viewMatrix);
    return record;
}

} // namespace dorvale::test
