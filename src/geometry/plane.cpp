#include "geometry/plane.h"

#include "geometry/placement.h"

namespace dorvale {

View View::fromMatrix(const double* matrix) {
    if (matrix == nullptr) {
        return {};
    }
    return {{matrix[0], matrix[4], matrix[8]}, {matrix[2], matrix[6], matrix[10]}};
}

AnnotationPlane AnnotationPlane::ofSection(Vec3 normal, Vec3 origin, Vec3 xPoint) {
    const Vec3 unitOfNormal = orZero(unit(normal));
    const Vec3 xAxis = orZero(unit(xPoint - origin));
    const Vec3 inPlane = cross(xAxis, unitOfNormal);
    return {{origin, unitOfNormal, xAxis}, inPlane};
}

ANK_MTX32 AnnotationPlane::matrix32() const {
    const auto& [origin, x, y, z, shift] = frame_;
    const auto narrow = [](double element) { return static_cast<float>(element); };
    return dorvale::matrix32({narrow(x.x), narrow(x.y), narrow(x.z), 0.0F, narrow(y.x), narrow(y.y),
                              narrow(y.z), 0.0F, narrow(z.x), narrow(z.y), narrow(z.z), 0.0F,
                              narrow(origin.x), narrow(origin.y), narrow(origin.z), 1.0F});
}

Vec3 AnnotationPlane::placeAlongView(_ank_locate& locate) const {
    writeTo(locate.point, movedAlongView(locate, origin(), placementNormal_));
    return recordInPlane(locate);
}

Vec3 AnnotationPlane::place(_ank_locate& locate) const {
    const Vec3 located = movedAlongView(locate, origin(), placementNormal_);
    writeTo(locate.point, ProjPntToPlane(located, origin(), placementNormal_));
    return recordInPlane(locate);
}

Vec3 AnnotationPlane::recordInPlane(_ank_locate& locate) const {
    const Vec3 inPlane = toPlane(fromArray(locate.point));
    writeTo(locate.point, inPlane);
    return inPlane;
}

} // namespace dorvale
