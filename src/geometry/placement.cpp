#include "geometry/placement.h"

#include "geometry/transform.h"

namespace dorvale {

namespace {

/// Where a line meets a plane, unless it runs in the plane.
std::optional<Vec3> meetPlane(Vec3 point, Vec3 direction, Vec3 pointOfPlane, Vec3 normal,
                              Tolerances tolerances) {
    Coordinates out{};
    double reach = 0.0;
    if (CMathGeolib::zxli00(toArray(point).data(), toArray(direction).data(),
                            toArray(pointOfPlane).data(), toArray(normal).data(),
                            tolerances.distance, tolerances.angle, out.data(), &reach) != 0) {
        return std::nullopt;
    }
    return fromArray(out);
}

/// What the view's depth direction is in the model; zero for a singular matrix.
Vec3 viewingDirection(const double* viewMatrix) {
    constexpr Vec3 depth{0.0, 0.0, 1.0};
    return unit(transformedDirection(depth, inverseOf(matrixFrom(viewMatrix))));
}

} // namespace

Vec3 movedAlongView(const _ank_locate& locate, Vec3 origin, Vec3 unitNormal,
                    Tolerances tolerances) {
    const Vec3 point = fromArray(locate.point);
    return meetPlane(point, viewingDirection(locate.viewMatrix), origin, unitNormal, tolerances)
        .value_or(point);
}

Vec3 ProjPntToPlane(Vec3 point, Vec3 origin, Vec3 unitNormal) {
    return moved(point, unitNormal, dot(origin - point, unitNormal));
}

} // namespace dorvale

int CnvViewLocate(_ank_locate* locate, double* const origin, double* const xAxis,
                  double* const yAxis, double* const tolerances, _ank_locate* located) {
    using namespace dorvale;
    writeTo(located->point, movedAlongView(*locate, fromArray(origin),
                                           unitNormal(fromArray(xAxis), fromArray(yAxis)),
                                           {tolerances[0], tolerances[1]}));
    return 0;
}
