#include "geometry/plane.h"

#include <algorithm>

#include "geometry/placement.h"

namespace dorvale {

View View::fromMatrix(const double* matrix) {
    if (matrix == nullptr) {
        return {};
    }
    return {{matrix[0], matrix[4], matrix[8]}, {matrix[2], matrix[6], matrix[10]}};
}

AnnotationPlane::AnnotationPlane(Vec3 origin, Vec3 xAxis, Vec3 yAxis, Vec3 normal,
                                 Vec3 placementNormal)
    : origin_(origin), x_(xAxis), y_(yAxis), normal_(normal), placementNormal_(placementNormal),
      matrices_(frameMatrices(origin, normal, xAxis)) {}

AnnotationPlane::AnnotationPlane(Vec3 origin, Vec3 xAxis, Vec3 yAxis)
    : AnnotationPlane(origin, xAxis, yAxis, cross(xAxis, yAxis), orZero(unitNormal(xAxis, yAxis))) {
}

AnnotationPlane AnnotationPlane::ofSection(Vec3 normal, Vec3 origin, Vec3 xPoint) {
    const Vec3 unitOfNormal = orZero(unit(normal));
    const Vec3 xAxis = orZero(unit(xPoint - origin));
    const Vec3 inPlane = cross(xAxis, unitOfNormal);
    return {origin, xAxis, inPlane, unitOfNormal, orZero(unitNormal(xAxis, inPlane))};
}

ANK_MTX32 AnnotationPlane::matrix32() const {
    std::array<double, 16> elements{};
    writeTo(elements.data(), matrices_.toModel);
    std::array<float, 16> narrow{};
    std::transform(elements.begin(), elements.end(), narrow.begin(),
                   [](double element) { return static_cast<float>(element); });
    return dorvale::matrix32(narrow);
}

Vec3 AnnotationPlane::toPlane(Vec3 pointInModel) const {
    return transformed(pointInModel, matrices_.toLocal);
}

Vec3 AnnotationPlane::toModel(Vec3 pointInPlane) const {
    return transformed(pointInPlane, matrices_.toModel);
}

Vec3 AnnotationPlane::directionInModel(Vec3 directionInPlane) const {
    return toModel(directionInPlane) - toModel(Vec3{});
}

Vec3 AnnotationPlane::placeAlongView(_ank_locate& locate) const {
    writeTo(locate.point, movedAlongView(locate, origin_, placementNormal_));
    return recordInPlane(locate);
}

Vec3 AnnotationPlane::place(_ank_locate& locate) const {
    const Vec3 located = movedAlongView(locate, origin_, placementNormal_);
    writeTo(locate.point, ProjPntToPlane(located, origin_, placementNormal_));
    return recordInPlane(locate);
}

Vec3 AnnotationPlane::recordInPlane(_ank_locate& locate) const {
    const Vec3 inPlane = toPlane(fromArray(locate.point));
    writeTo(locate.point, inPlane);
    return inPlane;
}

} // namespace dorvale
