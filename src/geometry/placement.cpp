#include "geometry/placement.h"

#include "geometry/lines.h"
#include "geometry/matrix.h"

namespace dorvale {

namespace {

/// What the view's depth direction is in the model; zero for a singular matrix.
Vec3 viewingDirection(const double* viewMatrix) {
    constexpr Vec3 depth{0.0, 0.0, 1.0};
    const std::optional<Matrix> toModel = inverse(matrixFrom(viewMatrix));
    return toModel ? orZero(unit(transformed(depth, *toModel, 0.0))) : Vec3{};
}

} // namespace

Vec3 movedAlongView(const _ank_locate& locate, Vec3 origin, Vec3 unitNormal,
                    double angularTolerance) {
    const Line ray{fromArray(locate.point), viewingDirection(locate.viewMatrix)};
    const auto reach = reachOfPlane(ray, origin, unitNormal, angularTolerance);
    return reach ? ray.at(*reach) : ray.point;
}

} // namespace dorvale

int CnvViewLocate(_ank_locate* locate, double* const origin, double* const xAxis,
                  double* const yAxis, double* const tolerances, _ank_locate* located) {
    using namespace dorvale;
    writeTo(located->point,
            movedAlongView(*locate, fromArray(origin),
                           orZero(unitNormal(fromArray(xAxis), fromArray(yAxis))), tolerances[1]));
    return 0;
}
